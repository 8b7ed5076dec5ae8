#pragma once

#include <QString>
#include <memory>
#include <vector>

#include "datatool/NewFolder.h"
#include "platform/sqlite.h"

/// A pair of data files being created, under temporary names until they are complete. Unless `keep` succeeds,
/// they are removed with the object, and so are the folders created for them.
class NewPair final {
 public:
    /// Creates both files with empty tables, readable by the owner only, and `folder` if it is missing.
    /// @param report name of a text file to be kept beside them; "" for none.
    /// @throws RuntimeError when one of the files already exists or they cannot be written.
    explicit NewPair(const QString& folder, const QString& report = {});
    ~NewPair();
    NewPair(const NewPair&) = delete;
    NewPair& operator=(const NewPair&) = delete;

    const sqlite::Database& catalogue() const { return *files_[0].database; }
    const sqlite::Database& pictures() const { return *files_[1].database; }

    /// Syncs all files and renames them into place: all of them or, on failure, none.
    /// @param report content of the text file.
    /// @throws RuntimeError when they cannot be written.
    void keep(const QString& report = {});

 private:
    struct File {
        QString path;
        QString made;  // temporary path
        std::unique_ptr<sqlite::Database> database;
    };
    void discard();

    NewFolder folder_;
    std::vector<File> files_;
};
