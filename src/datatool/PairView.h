#pragma once

#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <functional>
#include <memory>
#include <vector>

#include "platform/sqlite.h"

/// The pair of a folder, opened for reading alone. A file that its last writer left within a transaction, or
/// that another program switched to a write-ahead log, is read as a private copy, in which the transaction is
/// rolled back or the log played in.
class PairView final {
 public:
    /// One of the two files.
    struct File {
        QString path;
        QString read;   // the file itself or its copy
        QString fault;  // why it cannot be opened at all, in Czech
        // Why the program would not open it though all can be read, in Czech.
        QString condition = {};
        std::unique_ptr<QTemporaryDir> copy = nullptr;
        std::unique_ptr<sqlite::Database> database = nullptr;  // null for such a file

        QString name() const;
        /// Runs `work` on the open file. @throws RuntimeError what `work` throws, with the path.
        void use(const std::function<void(const sqlite::Database&)>& work) const;
    };
    /// What becomes of a file that the engine does not take for a sound database: it is refused, or told by
    /// `File::fault`, as is one that is missing with `told`.
    enum class Unreadable { refused, damageTold, told };

    /// @throws RuntimeError when `folder` is none, and for files refused as above. Files of a newer format,
    /// of
    ///         the old program, with another password, without permission to read and links that lead nowhere
    ///         are always refused. Damage behind the first page shows later.
    explicit PairView(const QString& folder, Unreadable unreadable = Unreadable::refused);

    const sqlite::Database& catalogue() const { return *files_[0].database; }
    const sqlite::Database& pictures() const { return *files_[1].database; }

    /// The catalogue and the pictures.
    const std::vector<File>& files() const noexcept { return files_; }

    /// Runs `work` on the catalogue and then on the pictures as far as they are open, with the name of the
    /// file in the folder.
    /// @throws RuntimeError what `work` throws, with the path of the file.
    void forEach(const std::function<void(const sqlite::Database&, const QString& name)>& work) const;

    /// Runs `work` once on the catalogue, with the pictures as schema `pictures`. Throws as above.
    void onBoth(const std::function<void(const sqlite::Database&)>& work) const;

    /// What the user should know of how the files were read, in Czech.
    const QStringList& notes() const noexcept { return notes_; }

 private:
    void add(const QString& path);
    void open(File& file);
    void openCopy(File& file, QStringView ending);
    void openWithLog(File& file, const QByteArray& header);

    Unreadable unreadable_;
    bool isHalf_;
    std::vector<File> files_;
    QStringList notes_;
};
