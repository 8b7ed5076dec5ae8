#include "datatool/KnownFilms.h"

#include "datatool/shownText.h"

using namespace Qt::StringLiterals;

namespace {

/// The hash of a text as it is compared, without case; `empty` for one without letters.
size_t hashOf(const QString& text, size_t empty, size_t seed) {
    const QString trimmed = text.trimmed();
    return trimmed.isEmpty() ? empty : qHash(trimmed.toCaseFolded(), seed);
}

template <typename Key>
void note(QHash<Key, qint64>& lines, const Key& key, qint64 line) {
    if (key == Key()) return;
    const qsizetype before = lines.size();
    qint64& place = lines[key];
    if (lines.size() > before) place = line;
}

template <typename Key>
std::optional<qint64> lineIn(const QHash<Key, qint64>& lines, const Key& key) {
    if (key == Key()) return std::nullopt;
    const auto found = lines.constFind(key);
    return found == lines.cend() ? std::nullopt : std::optional(*found);
}

}  // namespace

KnownFilms::Film::Film(const QString& filmTitle, const QString& filmYear, const QString& filmNumber,
                       qint64 filmKey)
    : title(filmTitle), year(filmYear), key(filmKey), titleHash(hashOf(title, 0, QHashSeed::globalSeed())) {
    if (titleHash != 0) titleHash = hashOf(year, titleHash, titleHash);
    setNumber(filmNumber);
}

void KnownFilms::Film::setNumber(const QString& filmNumber) {
    number = filmNumber;
    numberHash = hashOf(number, 0, QHashSeed::globalSeed());
}

KnownFilms::KnownFilms(const sqlite::Database& database, qsizetype more) {
    const qsizetype all = database.number("SELECT COUNT(*) FROM tDVD") + more;
    titles_.reserve(all);
    numbers_.reserve(all);
    keys_.reserve(all);
    const sqlite::Statement films(database, "SELECT CZJm, Rok, KatCisl, DVDID FROM tDVD");
    while (films.step())
        add({films.text(0), films.text(1), films.text(2), films.number(3)}, 0);
}

void KnownFilms::add(const Film& film, qint64 line) {
    note(titles_, film.titleHash, line);
    note(numbers_, film.numberHash, line);
    note(keys_, film.key, line);
}

std::optional<KnownFilms::Match> KnownFilms::find(const Film& film) const {
    if (const auto line = lineIn(titles_, film.titleHash))
        return Match{film.year.trimmed().isEmpty() ? u"stejný název"_s : u"stejný název a rok"_s, *line};
    if (const auto line = lineIn(numbers_, film.numberHash))
        return Match{u"stejné katalogové číslo %1"_s.arg(shownText(film.number)), *line};
    if (const auto line = lineOf(film.key)) return Match{u"stejné DVDID %1"_s.arg(film.key), *line};
    return std::nullopt;
}

std::optional<qint64> KnownFilms::lineOf(qint64 key) const {
    return lineIn(keys_, key);
}
