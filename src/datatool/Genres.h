#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

#include "platform/sqlite.h"

/// The dictionary of genres and those that films use beside it.
class Genres final {
 public:
    explicit Genres(const sqlite::Database& database);

    /// Takes note of the genres of a film, as `Zanr` holds them.
    void use(const QString& genres);
    /// Genres used that the dictionary lacks, ignoring case.
    const QStringList& missing() const noexcept { return missing_; }
    /// Adds these to the dictionary.
    void addMissing() const;

 private:
    const sqlite::Database& database_;
    QSet<QString> known_;
    QSet<QString> seen_;  // as films have them
    QStringList missing_;
};
