#include "film/mFilm.h"

#include <algorithm>

#include "platform/errors.h"
#include "platform/index.h"
#include "platform/text.h"

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype lengthLeftAlone = 3;
constexpr qsizetype longestDirector = 35;
constexpr qsizetype longestCountry = 24;
constexpr qsizetype genresLeftAlone = 3;

}  // namespace

QString film::ZapisChk(const std::vector<BoxValue>& boxes) {
    QStringList tokens;
    for (const BoxValue box : boxes)
        tokens += box == 1 ? u"A"_s : u"N"_s;
    return tokens.join(u'|');
}

void film::NactiChk(std::vector<BoxValue>& boxes, const QString& tokens) {
    const QStringList parts = text::split(tokens, u'|');
    const int known = std::min(countOf(boxes), countOf(parts));
    for (int box = 0; box < known; ++box)
        elementAt(boxes, box) = parts[box] == u"A" ? 1 : 0;
}

qint32 film::VratJazyk(const std::vector<bool>& options) {
    qint32 jazyk = 0;
    for (int option = 0; option < countOf(options); ++option) {
        if (elementAt(options, option)) jazyk = option;
    }
    return jazyk;
}

int film::NastavJazyk(qint32 jazyk, int options) {
    if (jazyk < 0 || jazyk >= options) throw RuntimeError(errors::noSuchControl);
    return jazyk;
}

QString film::cleanLength(const QString& length) {
    if (length.size() <= lengthLeftAlone) return length;
    QString rest = length;
    rest.remove(u' ').remove(u"min"_s).remove(u'.');
    return text::isNumeric(rest) ? rest : u"0"_s;
}

QString film::storedDirector(const QString& director) {
    return text::cut(director, longestDirector);
}

QString film::genreText(const QStringList& chosen) {
    QString text;
    for (const QString& genre : chosen)
        text += u", "_s + genre;
    return text.size() > genresLeftAlone ? text.mid(2) : text;
}

QString film::shortCountry(const QString& country) {
    if (country.size() <= longestCountry) return country;
    QString shorter = country;
    shorter.replace(u"Spojené království"_s, u"Eng"_s);
    return shorter.size() > longestCountry ? text::cut(shorter, longestCountry - 1) : shorter;
}
