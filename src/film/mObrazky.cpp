#include "film/mObrazky.h"

#include <QFile>

#include "core/CatalogueQuery.h"
#include "core/mDatabase.h"
#include "film/mBlobDATA.h"
#include "platform/Outside.h"
#include "platform/paths.h"
#include "platform/text.h"

using namespace Qt::StringLiterals;
using blob::Group;

namespace {

const QStringView data = u"PicDat";
const QStringView size = u"PicSize";

void openRows(ado::Recordset& rows, ado::Connection& connection, const QString& sql) {
    rows.Open(sql, connection, 1, 2, -1);
}

QString pictureOfFilm(qint32 film, Group group) {
    return u"SELECT * from tPicture where PicDVDID="_s + QString::number(film) + u" and PICSKUP='"_s +
           blob::letter(group) + u'\'';
}

void setType(const ado::Recordset& rows, const QString& path) {
    rows.Fields(u"PicTyp").setValue(path.right(3));
}

void setGroup(const ado::Recordset& rows, Group group) {
    rows.Fields(u"PicSkup").setValue(blob::letter(group));
}

void setFilm(const ado::Recordset& rows, qint32 film) {
    rows.Fields(u"PicDVDID").setValue(film);
}

qint32 keyOf(const ado::Recordset& rows) {
    return rows.Fields(u"PicID").Value().toLong();
}

QString typeOf(const ado::Recordset& rows) {
    return rows.Fields(u"PicTyp").Value().toText();
}

/// Shows a pending failure and leaves it pending, so that each following check shows it again.
void check() {
    if (Err.pending()) MsgBox(Err.Description());
}

QString show(qint32 id, Group group) {
    ado::Connection connection;
    ado::Recordset rows;
    skipFailure([&] { openPictureFile(connection); });
    const bool opened = skipFailure(
        [&] { openRows(rows, connection, u"SELECT * FROM tPicture where PicID="_s + QString::number(id)); });
    if (!opened) MsgBox(Err.Description());
    QString caption;
    const bool out =
        skipFailure([&] { blob::BlobDoSouboru(rows, {}, data, size, text::lowerCase(typeOf(rows)), group); });
    const QString name = group == Group::cover ? u"\\data\\obal."_s : u"\\data\\nahled."_s;
    skipFailure([&] { caption = paths::inProgramFolder(name + typeOf(rows)); });
    // A file that could not be replaced is another film's picture and must not become this one's.
    if (!out && QFile::exists(paths::ignoringCase(caption))) caption.clear();
    return caption;
}

}  // namespace

void openPictureFile(ado::Connection& connection) {
    QString path = paths::inProgramFolder(u"\\data\\pictures.ddb");
    path.remove(QChar::Null);
    connection.Open(connectionString(path), {}, {}, -1);
}

qint32 UlozObal(qint32 film, const QString& path) {
    Err.Clear();
    ado::Connection connection;
    ado::Recordset rows;
    skipFailure([&] { openPictureFile(connection); });
    check();
    Err.Clear();
    skipFailure([&] { openRows(rows, connection, pictureOfFilm(film, Group::cover)); });
    check();
    if (atEnd(rows)) {
        skipFailure([&] { rows.AddNew(); });
        check();
    }
    skipFailure([&] { blob::SouborDoBlob(rows, path, data, size, Group::cover); });
    check();
    skipFailure([&] { setType(rows, path); });
    skipFailure([&] { setGroup(rows, Group::cover); });
    skipFailure([&] { setFilm(rows, film); });
    skipFailure([&] { rows.Update(); });
    qint32 id = 0;
    skipFailure([&] { id = keyOf(rows); });
    return id;
}

qint32 UlozNahled(qint32 film, const QString& path) {
    ado::Connection connection;
    ado::Recordset rows;
    openPictureFile(connection);
    openRows(rows, connection, pictureOfFilm(film, Group::preview));
    if (rows.Eof()) rows.AddNew();
    blob::SouborDoBlob(rows, path, data, size, Group::preview);
    setType(rows, path);
    setGroup(rows, Group::preview);
    setFilm(rows, film);
    rows.Update();
    return keyOf(rows);
}

QString ZobrazObal(qint32 id) {
    return show(id, Group::cover);
}

QString ZobrazNahled(qint32 id) {
    return show(id, Group::preview);
}
