#pragma once

#include <QString>
#include <QStringList>
#include <optional>

#include "platform/sqlite.h"

/// The departments of a catalogue by name.
class Departments final {
 public:
    explicit Departments(const sqlite::Database& database);

    /// The key of the department with that name, letter case ignored. One that is not there is made.
    /// @param wish the key to be preferred where several departments have the name, and to be given to a new
    /// one when
    ///        it is free.
    qint64 keyOf(const QString& name, std::optional<qint64> wish);

    /// Names of those that were made.
    const QStringList& made() const noexcept { return made_; }

 private:
    qint64 make(const QString& name, std::optional<qint64> wish);

    sqlite::Statement find_;
    sqlite::Statement taken_;
    sqlite::Statement insert_;
    QStringList made_;
};
