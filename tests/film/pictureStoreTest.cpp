#include <QDir>
#include <QFile>

#include "core/mDatabase.h"
#include "film/mBlobDATA.h"
#include "film/mObrazky.h"
#include "support/TemporaryProgram.h"

using namespace Qt::StringLiterals;

namespace {

class PictureStoreTest : public TemporaryProgram {
 protected:
    QString pictureFile(qsizetype length, const QString& name = u"a.jpg"_s) const {
        write(name, noise(length));
        return at(name);
    }

    QString data(const QString& name) const { return at(u"data/"_s + name); }

    QByteArray stored(qint32 id) const {
        const sqlite::Database database(pictures(), sqlite::Database::Mode::readWrite);
        const sqlite::Statement row(database, "SELECT PicDat FROM tPicture WHERE PicID=?1");
        row.bind(1, qint64{id});
        if (!row.step() || row.isNull(0)) return "no data";
        return {static_cast<const char*>(sqlite3_column_blob(row.handle(), 0)),
                sqlite3_column_bytes(row.handle(), 0)};
    }

    QString row(qint32 id) const {
        return text(pictures(),
                    ("SELECT PicDVDID || PicSkup || PicTyp || ':' || ifnull(PicSize, '-') FROM tPicture"
                     " WHERE PicID=" +
                     QByteArray::number(id))
                        .constData());
    }
    QString rows() const { return text(pictures(), "SELECT count(*) FROM tPicture"); }
};

/// What stands behind the picture in its column, by where the last piece was read.
QByteArray tail(const QByteArray& picture) {
    const qsizetype blocks = picture.size() / 100000;
    const qsizetype rest = picture.size() % 100000;
    if (blocks < 2) return QByteArray(blocks + 1, '\0');
    const qsizetype lastButOne = rest + 1 + (blocks - 2) * 100001;
    return picture.mid(lastButOne + 100001 - (blocks + 1), blocks + 1);
}

}  // namespace

TEST_F(PictureStoreTest, PicturesOfAnyLengthKeepTheirLayoutAndComeOutWhole) {
    qint32 film = 0;
    for (const qsizetype length : {1, 70000, 99999, 100000, 100001, 200000, 250000, 1234567}) {
        SCOPED_TRACE(length);
        const QString path = pictureFile(length);
        const QByteArray picture = content(path);
        const qint32 cover = UlozObal(++film, path);
        const qint32 preview = UlozNahled(film, path);
        EXPECT_EQ(stored(cover), picture + tail(picture));
        EXPECT_EQ(stored(preview), stored(cover));
        EXPECT_EQ(row(cover), u"%1Ojpg:%2"_s.arg(film).arg(length));
        EXPECT_EQ(row(preview), u"%1Njpg:%2"_s.arg(film).arg(length));
        EXPECT_EQ(ZobrazObal(cover), data(u"obal.jpg"_s));
        EXPECT_EQ(ZobrazNahled(preview), data(u"nahled.jpg"_s));
        EXPECT_EQ(content(data(u"obal.jpg"_s)), picture);
        EXPECT_EQ(content(data(u"nahled.jpg"_s)), picture);
    }
    EXPECT_EQ(QFile::permissions(data(u"obal.jpg"_s)) & (QFile::ReadGroup | QFile::ReadOther),
              QFile::Permissions());
    EXPECT_TRUE(outside.boxes.isEmpty());
}

TEST_F(PictureStoreTest, AFilmKeepsTheRowsOfItsPictures) {
    const qint32 cover = UlozObal(7, pictureFile(250000));
    const qint32 preview = UlozNahled(7, pictureFile(10));
    const qint32 other = UlozObal(8, pictureFile(20));
    EXPECT_EQ(UlozObal(7, pictureFile(150000, u"b.PNG"_s)), cover);
    EXPECT_EQ(UlozNahled(7, pictureFile(300000)), preview);
    EXPECT_EQ(row(cover), u"7OPNG:150000"_s);
    EXPECT_EQ(row(other), u"8Ojpg:20"_s);
    EXPECT_EQ(rows(), u"3"_s);
    EXPECT_EQ(stored(cover).size(), 150002);
    // The caption names the type as it is stored, the file has it in lower case.
    EXPECT_EQ(ZobrazObal(cover), data(u"obal.PNG"_s));
    EXPECT_EQ(content(data(u"obal.png"_s)), content(u"b.PNG"_s));
    // And such a caption finds the file again when the film is saved.
    EXPECT_EQ(UlozObal(7, data(u"obal.PNG"_s)), cover);
    EXPECT_EQ(stored(cover).first(150000), content(u"b.PNG"_s));
}

TEST_F(PictureStoreTest, TheTypeIsWhateverTheLastThreeCharactersAre) {
    EXPECT_EQ(row(UlozObal(1, pictureFile(5, u"a.jpeg"_s))), u"1Opeg:5"_s);
    EXPECT_EQ(ZobrazObal(1), data(u"obal.peg"_s));
    EXPECT_EQ(row(UlozObal(2, pictureFile(5, u"xy"_s))), u"2O/xy:5"_s);
}

TEST_F(PictureStoreTest, ACoverThatCannotBeReadIsToldAndThePreviewStopsInSilence) {
    const QString missing = at(u"neni.jpg"_s);
    const qint32 cover = UlozObal(5, missing);
    EXPECT_EQ(row(cover), u"5Ojpg:-"_s);
    EXPECT_EQ(stored(cover), "no data");
    EXPECT_EQ(outside.told(), errors::description(errors::fileNotFound) + u"|0|"_s);
    EXPECT_EQ(failureOf([&] { UlozNahled(5, missing); }), errors::fileNotFound);
    EXPECT_EQ(rows(), u"1"_s);

    // A row that has a picture keeps it.
    const QString path = pictureFile(1000);
    ASSERT_EQ(UlozObal(5, path), cover);
    const QByteArray before = stored(cover);
    EXPECT_EQ(UlozObal(5, at(u"neni.png"_s)), cover);
    EXPECT_EQ(stored(cover), before);
    EXPECT_EQ(row(cover), u"5Opng:1000"_s);
}

TEST_F(PictureStoreTest, AnEmptyFileIsToldAndLeavesTheDataAsTheyWere) {
    const QString empty = pictureFile(0, u"prazdny.jpg"_s);
    const QString told = empty + u" je poškozený nebo nebyl nalezen.|0|"_s;
    EXPECT_EQ(row(UlozObal(3, empty)), u"3Ojpg:-"_s);
    EXPECT_EQ(row(UlozNahled(3, empty)), u"3Njpg:-"_s);
    EXPECT_EQ(outside.told(), told + u'\n' + told);
    // Taking such a row out leaves no file behind, not even an older one.
    pictureFile(9, u"data/obal.jpg"_s);
    EXPECT_EQ(ZobrazObal(1), data(u"obal.jpg"_s));
    EXPECT_FALSE(QFile::exists(data(u"obal.jpg"_s)));
    EXPECT_EQ(UlozObal(3, QString()), 1);  // no path: the row is stored, the data stay
}

TEST_F(PictureStoreTest, AMissingPictureFileIsToldAtEveryCheckOfTheCoverOnly) {
    const QString path = pictureFile(10);
    ASSERT_TRUE(QFile::remove(pictures()));
    EXPECT_EQ(UlozObal(1, path), 0);
    EXPECT_EQ(outside.told(), QStringList(4, u"Soubor databáze nelze otevřít.|0|"_s).join(u'\n'));
    EXPECT_EQ(failureOf([&] { UlozNahled(1, path); }), errors::database);
    EXPECT_TRUE(outside.boxes.isEmpty());
    EXPECT_EQ(ZobrazObal(1) + ZobrazNahled(1), u""_s);
    EXPECT_EQ(outside.boxes.size(), 2);
    EXPECT_FALSE(QFile::exists(pictures()));
}

TEST_F(PictureStoreTest, APictureThatCannotBeTakenOutNeverLeavesAnotherFilmsInItsPlace) {
    const qint32 cover = UlozObal(1, pictureFile(500));
    // A folder in the place of the file: it can be neither removed nor written.
    ASSERT_TRUE(QDir().mkpath(data(u"obal.jpg"_s)));
    EXPECT_EQ(ZobrazObal(cover), u""_s);
    ASSERT_TRUE(QDir().rmdir(data(u"obal.jpg"_s)));
    // Data that end before their size does: what is left of them is no picture.
    sql(pictures(), "UPDATE tPicture SET PicDat=NULL");
    EXPECT_EQ(ZobrazObal(cover), data(u"obal.jpg"_s));
    EXPECT_FALSE(QFile::exists(data(u"obal.jpg"_s)));
}

TEST_F(PictureStoreTest, AKeyWithoutARowShowsNothingAndSaysNothing) {
    EXPECT_EQ(ZobrazObal(99), u""_s);
    EXPECT_TRUE(outside.boxes.isEmpty());
    EXPECT_TRUE(Err.pending());
}

TEST_F(PictureStoreTest, PicturesForPrintingAreNamedAfterTheirKey) {
    const qint32 preview = UlozNahled(1, pictureFile(100000));
    ado::Connection opened;
    opened.Open(connectionString(pictures()));
    ado::Recordset rows;
    rows.Open(u"SELECT * FROM tPicture where PicID="_s + QString::number(preview), opened);
    EXPECT_EQ(blob::BlobDoTisku(rows, u"PicDat", u"PicSize", u"jpg"_s, preview, blob::Group::preview),
              u"n1.jpg"_s);
    EXPECT_EQ(content(data(u"n1.jpg"_s)), content(u"a.jpg"_s));
    // The second reading of a row has to begin anew: pieces go on from where the last one ended.
    rows.Close();
    rows.Open(u"SELECT * FROM tPicture where PicID="_s + QString::number(preview), opened);
    EXPECT_EQ(blob::BlobDoTisku(rows, u"PicDat", u"PicSize", u"jpg"_s, preview, blob::Group::cover),
              u"n1.jpg"_s);
    EXPECT_TRUE(QFile::exists(data(u"o1.jpg"_s)));
}

TEST_F(PictureStoreTest, AFullPictureFileLosesNothingOfOtherFilms) {
    const qint32 first = UlozObal(1, pictureFile(50000));
    const QByteArray before = stored(first);
    const QString big = pictureFile(3000000);
    sql(pictures(),
        "CREATE TRIGGER voll BEFORE UPDATE ON tPicture WHEN new.PicDVDID=2 BEGIN SELECT RAISE(FAIL, 'full'); "
        "END;"
        "CREATE TRIGGER vollNeu BEFORE INSERT ON tPicture WHEN new.PicDVDID=2 BEGIN SELECT RAISE(FAIL, "
        "'full'); END");
    EXPECT_EQ(UlozObal(2, big), 0);
    EXPECT_NE(failureOf([&] { UlozNahled(2, big); }), 0);
    EXPECT_EQ(rows(), u"1"_s);
    EXPECT_EQ(stored(first), before);
}
