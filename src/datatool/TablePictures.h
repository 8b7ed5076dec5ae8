#pragma once

#include <QString>

#include "film/mBlobDATA.h"
#include "platform/sqlite.h"

/// Stores the pictures that a table names in the picture file, as the editor does. The picture file is
/// attached to the catalogue's connection, so that one transaction covers both files.
class TablePictures final {
 public:
    /// @param file the picture file. @param base the folder that paths in the table are relative to.
    /// @param isDryRun to check the files only.
    /// @throws RuntimeError when the picture file is missing, damaged or not one of the program's own.
    TablePictures(const sqlite::Database& catalogue, const QString& file, const QString& base, bool isDryRun);

    /// @param isExported whether the file comes out of a picture file; it goes back as it is then.
    /// @return the key of the picture; 0 in a dry run.
    /// @throws BadLine when the file is missing, empty, too large for the database, no picture that the
    ///         program can show, or cannot be read.
    qint64 store(qint64 film, const QString& path, blob::Group group, bool isExported, qint64 line);

    qint64 stored() const noexcept { return stored_; }

    /// Replaces a key of a film by 0 unless it leads to a picture of this film and group: the table may come
    /// from another catalogue.
    void dropForeignKey(qint64 film, blob::Group group);
    qint64 dropped() const noexcept { return dropped_; }

 private:
    /// A picture's length and its bytes as `PicDat` holds them.
    struct Content {
        qint64 size = 0;
        QByteArray data;
    };
    Content read(const QString& path, bool isExported) const;

    const sqlite::Database& attached_;
    QString base_;
    bool isDryRun_;
    sqlite::Statement find_;
    sqlite::Statement insert_;
    sqlite::Statement update_;
    sqlite::Statement dropCover_;
    sqlite::Statement dropPreview_;
    qint64 stored_ = 0;
    qint64 dropped_ = 0;
};
