#include "printing/officeOutput.h"

#include "platform/errors.h"

using namespace Qt::StringLiterals;
using office::Object;
using office::Value;

namespace {

constexpr qint32 headingSize = 14;  // points
constexpr qint32 textSize = 8;
constexpr QChar lineBreak(11);  // ends a line within a paragraph

office::LateBound& existing(const Object& object) {
    if (object == nullptr) throw RuntimeError(errors::objectNotSet);
    return *object;
}

Object child(const Object& parent, const QString& name) {
    const Value value = existing(parent).get(name);
    const Object* object = std::get_if<Object>(&value);
    if (object == nullptr) throw RuntimeError(errors::typeMismatch);
    return *object;
}

}  // namespace

void office::PrintDataExcel(const Object& List, qint32 Radek, const QString& A, const QString& B,
                            const QString& C, const QString& D) {
    const auto write = [&](QChar column, const QString& text) {
        existing(List).put(u"Range"_s, {.byPosition = {QString(column + QString::number(Radek))}}, text);
    };
    write(u'A', A);
    write(u'B', B);
    write(u'C', C);
    write(u'D', D);
}

void office::PrintDataWord(const Object& Dokument, const QString& Nadpis, const QString& Text,
                           const QString& Podnadpis) {
    const auto selection = [&Dokument] { return child(child(Dokument, u"ActiveWindow"_s), u"Selection"_s); };
    const auto setFont = [&](const QString& property, const Value& value) {
        skipFailure([&] { existing(child(selection(), u"Font"_s)).put(property, {}, value); });
    };
    const auto call = [&](const QString& method, const Arguments& arguments) {
        skipFailure([&] { existing(selection()).call(method, arguments); });
    };
    const Value notBold;  // an empty value is no bold
    setFont(u"Bold"_s, notBold);
    setFont(u"Size"_s, headingSize);
    call(u"TypeText"_s, {.byName = {{u"Text"_s, QString(Nadpis + u"        "_s)}}});
    setFont(u"Bold"_s, notBold);
    setFont(u"Size"_s, textSize);
    call(u"TypeText"_s, {.byPosition = {QString(Podnadpis + lineBreak)}});
    setFont(u"Size"_s, textSize);
    call(u"TypeText"_s, {.byName = {{u"Text"_s, Text}}});
    call(u"TypeParagraph"_s, {});
    call(u"TypeParagraph"_s, {});
}
