#pragma once

#include <QString>
#include <QStringList>

#include "film/mBlobDATA.h"
#include "platform/sqlite.h"

/// Takes pictures out of the picture file into files of a folder.
class PictureFiles final {
 public:
    /// @param folder of the pair. @param target where the files go.
    /// @throws RuntimeError when the picture file cannot be opened or is not one of the program's own.
    PictureFiles(const QString& folder, const QString& target);

    /// Writes a picture of a film.
    /// @param id its key; 0 for none.
    /// @return the name of the file; "" if there is no picture.
    QString write(qint64 film, qint64 id, blob::Group group);

    qint64 written() const noexcept { return written_; }
    /// One line for each picture that is missing or damaged.
    const QStringList& missing() const noexcept { return missing_; }

 private:
    sqlite::Database database_;
    sqlite::Statement find_;
    QString target_;
    qint64 written_ = 0;
    QStringList missing_;
};
