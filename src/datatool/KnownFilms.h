#pragma once

#include <QSet>
#include <QString>
#include <optional>

#include "platform/sqlite.h"

/// The films that a catalogue holds before others are added.
class KnownFilms final {
 public:
    explicit KnownFilms(const sqlite::Database& database);

    bool isEmpty() const noexcept { return titles_.isEmpty(); }
    /// By what a film is there already, in Czech: its title and year or its catalogue number, ignoring case;
    /// nothing if it is not. An empty title or number is like no other.
    std::optional<QString> find(const QString& title, const QString& year, const QString& number) const;

 private:
    QSet<QString> titles_;
    QSet<QString> numbers_;
};
