#pragma once

#include <QString>

#include "film/mBlobDATA.h"
#include "platform/sqlite.h"

/// Stores the pictures that a table names in the picture file, as the editor does. The picture file is
/// attached to the catalogue's connection, so that one transaction covers both files.
class TablePictures final {
 public:
    /// Opens the picture file of the pair in `folder`.
    /// @throws RuntimeError when it is missing, damaged or not one of the program's own files.
    static sqlite::Database open(const QString& folder);

    /// @param folder of the pair. @param base the folder that paths in the table are relative to.
    /// @param isDryRun to check the files only.
    /// @throws RuntimeError as `open` does.
    TablePictures(const sqlite::Database& catalogue, const QString& folder, const QString& base,
                  bool isDryRun);

    /// @return the key of the picture; 0 in a dry run.
    /// @throws BadLine when the file is missing, empty or cannot be read.
    qint64 store(qint64 film, const QString& path, blob::Group group, qint64 line);

    qint64 stored() const noexcept { return stored_; }

 private:
    const sqlite::Database& attached_;
    QString base_;
    bool isDryRun_;
    sqlite::Statement find_;
    sqlite::Statement insert_;
    sqlite::Statement update_;
    qint64 stored_ = 0;
};
