#include "datatool/foreignValue.h"

#include <QRegularExpression>
#include <algorithm>

#include "datatool/foldedText.h"
#include "film/mFilm.h"

using namespace Qt::StringLiterals;

namespace {

/// The parts that are not blank.
QStringList partsOf(const QString& value, const QRegularExpression& separators) {
    QStringList parts;
    for (const QString& part : value.split(separators)) {
        if (!part.trimmed().isEmpty()) parts += part.trimmed();
    }
    return parts;
}

/// From "Name:Role|Name:Role", "Name::Role;Name::Role" or plain names.
QString namesOf(const QString& cast) {
    static const QRegularExpression bar(u"\\|"_s);
    static const QRegularExpression semicolon(u";"_s);
    QStringList names = partsOf(cast, cast.contains(u'|') ? bar : semicolon);
    for (QString& name : names) {
        if (!name.contains(u',')) name = name.section(u':', 0, 0).trimmed();
    }
    names.removeAll(QString());
    return names.join(u", "_s);
}

}  // namespace

QString foreignValue::forColumn(const QString& column, const QString& value) {
    if (column == u"Herci"_s) return namesOf(value);
    if (column == u"Zanr"_s || column == u"Stat"_s || column == u"Rezie"_s) {
        static const QRegularExpression separators(u"[;|]|\\s/\\s"_s);
        return partsOf(value, separators).join(u", "_s);
    }
    if (column == u"Obsah"_s || column == u"Poznamka"_s) {
        static const QRegularExpression lineBreak(u"<br ?/?>"_s, QRegularExpression::CaseInsensitiveOption);
        return QString(value).replace(lineBreak, u"\r\n"_s);
    }
    if (column == u"Delka"_s && value.contains(u"min"_s)) {
        const QString minutes = film::cleanLength(value);
        return minutes == u"0"_s ? value : minutes;  // hours and minutes stay as they are
    }
    return value;
}

std::optional<int> foreignValue::language(const QString& words) {
    static const QRegularExpression czech(u"^(ces[kt]|czech|(cz|cs|cze|ces)\\b)|\\b(cz|cs|czech)$"_s);
    static const QRegularExpression separators(u"[;,/|]"_s);
    std::optional<int> found;
    for (const QString& each : partsOf(words, separators)) {
        const QString word = foldedText(each);
        if (word == u"neuvedeno"_s) found = std::min(found.value_or(2), 2);
        if (word.contains(czech)) found = std::min(found.value_or(2), word.contains(u"titul"_s) ? 1 : 0);
    }
    return found;
}
