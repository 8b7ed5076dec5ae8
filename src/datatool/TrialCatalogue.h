#pragma once

#include <QString>
#include <QTemporaryDir>
#include <optional>

#include "datatool/PairView.h"

/// A private copy of a catalogue in which work can be tried out. The pair itself is only read, so that it may
/// be read-only.
class TrialCatalogue final {
 public:
    /// @throws RuntimeError when the catalogue cannot be read or the copy cannot be written.
    explicit TrialCatalogue(const QString& folder);

    const sqlite::Database& database() const { return *copy_; }
    /// The path of the picture file that belongs to it, as it can be read.
    QString pictures() const { return pair_.files().back().read; }

 private:
    PairView pair_;
    QTemporaryDir folder_;
    std::optional<sqlite::Database> copy_;
};
