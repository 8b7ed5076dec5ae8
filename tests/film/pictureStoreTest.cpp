#include <QDir>
#include <QFile>

#include "core/mDatabase.h"
#include "film/mBlobDATA.h"
#include "film/mObrazky.h"
#include "support/TemporaryProgram.h"

namespace {

class PictureStoreTest : public TemporaryProgram {
 protected:
    QString pictureFile(qsizetype length, const QString& name = u"a.jpg"_s) const {
        write(name, noise(length));
        return at(name);
    }
    QString data(const QString& name) const { return at(u"data/"_s + name); }
    QString select(const QByteArray& columns, qint32 id) const {
        return text(pictures(), "SELECT " + columns + " FROM tPicture WHERE PicID=" + QByteArray::number(id));
    }
    QByteArray stored(qint32 id) const { return QByteArray::fromHex(select("hex(PicDat)", id).toLatin1()); }
    QString row(qint32 id) const {
        return select("PicDVDID || PicSkup || PicTyp || ':' || ifnull(PicSize, '-')", id);
    }
    QString rows() const { return text(pictures(), "SELECT count(*) FROM tPicture"); }
};

}  // namespace

TEST_F(PictureStoreTest, APictureOfAnyLengthComesOutWhole) {
    qint32 film = 0;
    for (const qsizetype length : {1, 70000, 99999, 100000, 100001, 200000, 250000, 1234567}) {
        SCOPED_TRACE(length);
        const QString path = pictureFile(length);
        const QByteArray picture = content(path);
        const qint32 cover = UlozObal(++film, path);
        const qint32 preview = UlozNahled(film, path);
        // Each piece has a byte too many, and the last one keeps what the piece before it left there.
        const qsizetype blocks = length / 100000;
        EXPECT_EQ(stored(cover), picture + (blocks < 2 ? QByteArray(blocks + 1, '\0')
                                                       : picture.mid(length - 100001, blocks + 1)));
        EXPECT_EQ(stored(preview), stored(cover));
        EXPECT_EQ(row(cover) + u' ' + row(preview), u"%1Ojpg:%2 %1Njpg:%2"_s.arg(film).arg(length));
        EXPECT_EQ(ZobrazObal(cover) + ZobrazNahled(preview), data(u"obal.jpg"_s) + data(u"nahled.jpg"_s));
        EXPECT_EQ(content(data(u"obal.jpg"_s)), picture);
        EXPECT_EQ(content(data(u"nahled.jpg"_s)), picture);
    }
    EXPECT_EQ(QFile::permissions(data(u"obal.jpg"_s)) & (QFile::ReadGroup | QFile::ReadOther),
              QFile::Permissions());
}

TEST_F(PictureStoreTest, AFilmKeepsItsRows) {
    const qint32 cover = UlozObal(7, pictureFile(250000, u"xy"_s));
    EXPECT_EQ(row(cover), u"7O/xy:250000"_s);
    const qint32 preview = UlozNahled(7, pictureFile(10, u"a.jpeg"_s));
    EXPECT_EQ(ZobrazNahled(preview), data(u"nahled.peg"_s));
    const qint32 other = UlozObal(8, pictureFile(20));
    EXPECT_EQ(UlozObal(7, pictureFile(150000, u"b.PNG"_s)), cover);
    EXPECT_EQ(UlozNahled(7, pictureFile(300000)), preview);
    EXPECT_EQ(row(cover) + row(other), u"7OPNG:1500008Ojpg:20"_s);
    EXPECT_EQ(rows(), u"3"_s);
    EXPECT_EQ(stored(cover).size(), 150002);
    // The label keeps the letter case of the type, the file name does not; the label still finds the file.
    EXPECT_EQ(ZobrazObal(cover), data(u"obal.PNG"_s));
    EXPECT_EQ(content(data(u"obal.png"_s)), content(u"b.PNG"_s));
    EXPECT_EQ(UlozObal(7, data(u"obal.PNG"_s)), cover);
    EXPECT_EQ(stored(cover).first(150000), content(u"b.PNG"_s));
}

TEST_F(PictureStoreTest, AnUnreadableFileLeavesTheStoredDataAlone) {
    const QString missing = at(u"neni.png"_s);
    const QString empty = pictureFile(0, u"prazdny.jpg"_s);
    const qint32 cover = UlozObal(5, missing);
    EXPECT_EQ(failureOf([&] { UlozNahled(5, missing); }), errors::fileNotFound);
    EXPECT_EQ(rows(), u"1"_s);
    EXPECT_EQ(row(cover) + row(UlozNahled(3, empty)), u"5Opng:-3Njpg:-"_s);
    EXPECT_EQ(outside.told(), errors::description(errors::fileNotFound) + u"|0|\n"_s + empty +
                                  u" je poškozený nebo nebyl nalezen.|0|"_s);
    // A row without data removes the file of the picture shown before.
    pictureFile(9, u"data/obal.png"_s);
    EXPECT_EQ(ZobrazObal(cover), data(u"obal.png"_s));
    EXPECT_FALSE(QFile::exists(data(u"obal.png"_s)));

    UlozObal(5, pictureFile(1000));
    const QByteArray before = stored(cover);
    for (const QString& path : {missing, empty, QString()}) {
        EXPECT_EQ(UlozObal(5, path), cover);
        EXPECT_EQ(row(cover), u"5O%1:1000"_s.arg(path.right(3)));
        EXPECT_EQ(stored(cover), before);
    }
    EXPECT_EQ(std::exchange(outside.boxes, {}).size(), 2);  // nothing is said of no file
}

TEST_F(PictureStoreTest, AStoreThatCannotBeUsedIsReported) {
    const QString path = pictureFile(10);
    EXPECT_EQ(ZobrazObal(99), u""_s);  // no such row
    EXPECT_TRUE(Err.pending());
    refuse(pictures(), "tPicture", "1");
    EXPECT_EQ(UlozObal(1, path), 0);
    EXPECT_NE(failureOf([&] { UlozNahled(1, path); }), 0);
    EXPECT_EQ(rows(), u"0"_s);
    ASSERT_TRUE(QFile::remove(pictures()));
    EXPECT_EQ(UlozObal(1, path), 0);
    EXPECT_EQ(outside.told(),
              QStringList(4, u"Soubor databáze nelze otevřít.\n\n"_s + pictures() + u"|0|"_s).join(u'\n'));
    EXPECT_EQ(failureOf([&] { UlozNahled(1, path); }), errors::database);
    EXPECT_EQ(ZobrazObal(1) + ZobrazNahled(1), u""_s);
    EXPECT_EQ(std::exchange(outside.boxes, {}).size(), 2);
    EXPECT_FALSE(QFile::exists(pictures()));
}

TEST_F(PictureStoreTest, AFailedReadNeverShowsThePictureOfAnotherFilm) {
    const qint32 cover = UlozObal(1, pictureFile(500));
    // A folder in place of the file can be neither removed nor written.
    ASSERT_TRUE(QDir().mkpath(data(u"obal.jpg"_s)));
    EXPECT_EQ(ZobrazObal(cover), u""_s);
    ASSERT_TRUE(QDir().rmdir(data(u"obal.jpg"_s)));
    // Fewer bytes than the size column says are no picture.
    sql(pictures(), "UPDATE tPicture SET PicDat=NULL");
    EXPECT_EQ(ZobrazObal(cover), data(u"obal.jpg"_s));
    EXPECT_FALSE(QFile::exists(data(u"obal.jpg"_s)));
}

TEST_F(PictureStoreTest, APrintedCoverIsAnnouncedAsAPreview) {
    UlozObal(1, pictureFile(1000));
    ado::Connection opened;
    opened.Open(connectionString(pictures()));
    ado::Recordset rows;
    rows.Open(u"SELECT * FROM tPicture"_s, opened);
    EXPECT_EQ(blob::BlobDoTisku(rows, u"PicDat", u"PicSize", u"jpg"_s, 1, blob::Group::cover), u"n1.jpg"_s);
    EXPECT_EQ(content(data(u"o1.jpg"_s)), content(u"a.jpg"_s));
}
