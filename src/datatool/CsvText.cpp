#include "datatool/CsvText.h"

#include <QDir>
#include <QFile>
#include <QStringDecoder>
#include <algorithm>

#include "platform/codepage.h"
#include "platform/errors.h"

using namespace Qt::StringLiterals;

namespace {

constexpr QByteArrayView byteOrderMark = "\xEF\xBB\xBF";
constexpr auto nullField = u"\\N";

/// The length of the valid UTF-8 character at the beginning of `bytes`; 0 if there is none.
qsizetype characterLength(QByteArrayView bytes) {
    const auto lead = static_cast<unsigned char>(bytes.front());
    const qsizetype length = lead < 0x80       ? 1
                             : lead >> 5 == 6  ? 2
                             : lead >> 4 == 14 ? 3
                             : lead >> 3 == 30 ? 4
                                               : 0;
    if (length == 0 || length > bytes.size()) return 0;
    return bytes.first(length).isValidUtf8() ? length : 0;
}

struct Utf8Look {
    qsizetype characters = 0;  // valid ones of two or more bytes
    qsizetype faults = 0;      // bytes outside valid characters
    qsizetype firstFault = 0;

    explicit Utf8Look(QByteArrayView bytes) {
        for (qsizetype at = 0; at < bytes.size();) {
            const qsizetype length = characterLength(bytes.sliced(at));
            if (length == 0 && faults++ == 0) firstFault = at;
            if (length > 1) ++characters;
            at += std::max(length, qsizetype{1});
        }
    }

    /// In Windows-1250 such sequences occur only by accident (ÍŠ, ĚŽ).
    bool isMeant() const { return characters > faults; }
};

QChar separatorOf(QStringView text) {
    qsizetype commas = 0;
    qsizetype semicolons = 0;
    bool quoted = false;
    for (const QChar character : text) {
        if (character == u'"') quoted = !quoted;
        if (quoted) continue;
        if (character == u'\n' && commas + semicolons > 0) break;
        commas += character == u',' ? 1 : 0;
        semicolons += character == u';' ? 1 : 0;
    }
    return semicolons > commas ? u';' : u',';
}

/// True for `\N` behind at least `more` further backslashes and nothing else.
bool looksLikeNull(QStringView field, qsizetype more) {
    if (field.size() < 2 + more || !field.endsWith(nullField)) return false;
    return std::all_of(field.begin(), field.end() - 1, [](QChar character) { return character == u'\\'; });
}

}  // namespace

CsvText CsvText::read(const QString& path) {
    QFile file(path);
    if (!file.open(QFile::ReadOnly)) {
        throw RuntimeError(errors::fileNotFound,
                           u"Soubor nelze číst: %1"_s.arg(QDir::toNativeSeparators(path)));
    }
    const QByteArray bytes = file.readAll();
    CsvText result;
    if (bytes.isValidUtf8()) {
        QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
        result.text = decoder(bytes);
        result.encoding = u"UTF-8"_s;
    } else if (const Utf8Look look(bytes); bytes.startsWith(byteOrderMark) || look.isMeant()) {
        const auto line = bytes.first(look.firstFault).count('\n') + 1;
        throw RuntimeError(
            errors::invalidCall,
            u"Řádek %1: znak není správně v kódování UTF-8, v němž je zbytek souboru."_s.arg(line));
    } else {
        result.text = codepage::fromWindows1250(bytes);
        result.encoding = u"Windows-1250"_s;
    }
    result.separator = separatorOf(result.text);
    return result;
}

bool csvField::isNull(QStringView field) {
    return field == QStringView(nullField);
}

QString csvField::textOf(const QString& field) {
    return looksLikeNull(field, 1) ? field.sliced(1) : field;
}

QString csvField::ofText(const QString& text) {
    if (text.isNull()) return QString::fromUtf16(nullField);
    QString field = looksLikeNull(text, 0) ? u'\\' + text : text;
    return u'"' + field.replace(u'"', u"\"\""_s) + u'"';
}
