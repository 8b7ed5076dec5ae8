#pragma once

#include <QString>
#include <QStringList>
#include <memory>
#include <optional>
#include <vector>

#include "platform/sqlite.h"

/// A pair of data files under construction. Its files have other names until they are whole. Unless it was
/// kept, they go away with the object, and so do the folders that were made for them.
class NewPair final {
 public:
    /// Makes `folder` when it is missing and in it both files with their tables and without a row, readable
    /// for the owner only.
    /// @param report name of a text file that is to be kept beside them; "" for none.
    /// @throws RuntimeError when one of the files is there already, or when they cannot be written.
    explicit NewPair(const QString& folder, const QString& report = {});
    ~NewPair();
    NewPair(const NewPair&) = delete;
    NewPair& operator=(const NewPair&) = delete;

    const sqlite::Database& catalogue() const { return *files_[0].database; }
    const sqlite::Database& pictures() const { return *files_[1].database; }

    /// Brings all files to disk and gives them their names: all of them or, on a failure, none.
    /// @param report content of the text file.
    /// @throws RuntimeError when they cannot be written.
    void keep(const QString& report = {});

 private:
    struct File {
        QString path;
        QString made;  // its path while it is being built
        std::unique_ptr<sqlite::Database> database;
    };
    class Folder {
     public:
        explicit Folder(const QString& path);
        ~Folder();
        Folder(const Folder&) = delete;
        Folder& operator=(const Folder&) = delete;
        void keep() { made_.clear(); }

     private:
        QStringList made_;  // the innermost first
    };

    void discard();

    Folder folder_;
    std::vector<File> files_;
};
