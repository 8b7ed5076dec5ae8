#pragma once

#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <functional>
#include <memory>
#include <vector>

#include "platform/sqlite.h"

/// The pair of a folder, opened for reading alone. A file that its last writer left within a transaction is
/// read as a private copy, in which the transaction is rolled back.
class PairView final {
 public:
    /// @throws RuntimeError when a file is missing, cannot be read or is not one of the program's own. Damage
    ///         behind the header shows later.
    explicit PairView(const QString& folder);

    const sqlite::Database& catalogue() const { return *files_[0].database; }
    const sqlite::Database& pictures() const { return *files_[1].database; }

    /// Runs `work` on the catalogue and then on the pictures, with the name of the file in the folder.
    /// @throws RuntimeError what `work` throws, with the path of the file.
    void forEach(const std::function<void(const sqlite::Database&, const QString& name)>& work) const;

    /// Runs `work` once on the catalogue, with the pictures as schema `pictures`. Throws as above.
    void onBoth(const std::function<void(const sqlite::Database&)>& work) const;

    /// What the user should know of how the files were read, in Czech.
    const QStringList& notes() const noexcept { return notes_; }

 private:
    struct File {
        QString path;
        QString read;  // the file itself or its copy
        std::unique_ptr<QTemporaryDir> copy;
        std::unique_ptr<sqlite::Database> database;
    };

    void open(const QString& path);

    std::vector<File> files_;
    QStringList notes_;
};
