#include "datatool/KnownFilms.h"

using namespace Qt::StringLiterals;

namespace {

QString folded(const QString& text) {
    return text.trimmed().toCaseFolded();
}

QString titleKey(const QString& title, const QString& year) {
    return folded(title) + u'\n' + folded(year);
}

}  // namespace

KnownFilms::KnownFilms(const sqlite::Database& database) {
    const sqlite::Statement films(database, "SELECT CZJm, Rok, KatCisl FROM tDVD");
    while (films.step()) {
        titles_ += titleKey(films.text(0), films.text(1));
        numbers_ += folded(films.text(2));
    }
}

std::optional<QString> KnownFilms::find(const QString& title, const QString& year,
                                        const QString& number) const {
    if (!folded(title).isEmpty() && titles_.contains(titleKey(title, year))) return u"stejný název a rok"_s;
    if (!folded(number).isEmpty() && numbers_.contains(folded(number)))
        return u"stejné katalogové číslo %1"_s.arg(number);
    return std::nullopt;
}
