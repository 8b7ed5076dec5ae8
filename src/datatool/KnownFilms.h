#pragma once

#include <QHash>
#include <QString>
#include <optional>

#include "platform/sqlite.h"

/// The films that a catalogue holds and those that are added to it from a table, to find those that are there
/// twice. Of texts only hashes of 64 bits are kept, by a seed of their own in each run: a hundred thousand
/// different films meet in one with a probability of 1 to 3,000,000,000.
class KnownFilms final {
 public:
    /// What a film is known by; empty texts and the key 0 are like no other's.
    struct Film {
        Film(const QString& title, const QString& year, const QString& number, qint64 key);
        void setNumber(const QString& number);

        QString title;
        QString year;
        QString number;  // in the catalogue
        qint64 key;
        // Hashes of what is compared; 0 for nothing.
        size_t titleHash;  // with the year
        size_t numberHash;
    };

    /// @param more how many films of the table there may be.
    KnownFilms(const sqlite::Database& database, qsizetype more);

    /// Takes note of a film of the table.
    void add(const Film& film, qint64 line);

    /// A film that is like another one.
    struct Match {
        QString reason;   // in Czech
        qint64 line = 0;  // of the other one in the table; 0 when it was in the catalogue before
    };
    /// The first film with the same title and year, the same number or the same key, ignoring case.
    std::optional<Match> find(const Film& film) const;
    /// The line of the film with a key, 0 as above; nothing if no film has it.
    std::optional<qint64> lineOf(qint64 key) const;

 private:
    QHash<size_t, qint64> titles_;
    QHash<size_t, qint64> numbers_;
    QHash<qint64, qint64> keys_;
};
