#include "datatool/Genres.h"

Genres::Genres(const sqlite::Database& database) : database_(database) {
    const sqlite::Statement names(database, "SELECT ZNAME FROM tZanr");
    while (names.step())
        known_ += names.text(0).trimmed().toCaseFolded();
}

void Genres::use(const QString& genres) {
    if (seen_.contains(genres)) return;
    seen_ += genres;
    for (const QString& part : genres.split(u',')) {
        const QString genre = part.trimmed();
        const QString folded = genre.toCaseFolded();
        if (genre.isEmpty() || known_.contains(folded)) continue;
        known_ += folded;
        missing_ += genre;
    }
}

void Genres::addMissing() const {
    const sqlite::Statement insert(database_, "INSERT INTO tZanr (ZNAME) VALUES (?)");
    for (const QString& genre : missing_) {
        insert.bind(1, genre);
        insert.step();
        insert.reset();
    }
}
