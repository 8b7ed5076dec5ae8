#pragma once

#include <QString>
#include <QStringList>
#include <optional>

#include "platform/sqlite.h"

/// The departments of a catalogue by name.
class Departments final {
 public:
    explicit Departments(const sqlite::Database& database);

    /// The key of the department with that name, ignoring case; it is created if missing.
    /// @param name a null string stands for Null.
    /// @param wish the preferred key if several departments have the name, and the key of a new one if it is
    ///         free.
    qint64 keyOf(const QString& name, std::optional<qint64> wish);

    /// Names of the departments created.
    const QStringList& made() const noexcept { return made_; }

 private:
    qint64 make(const QString& name, std::optional<qint64> wish);

    sqlite::Statement find_;
    sqlite::Statement taken_;
    sqlite::Statement insert_;
    QStringList made_;
};
