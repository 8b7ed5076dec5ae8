#include "platform/ado.h"

#include <QElapsedTimer>

#include "core/mDatabase.h"
#include "support/TemporaryProgram.h"

namespace {

class RecordsetTest : public TemporaryProgram {
 protected:
    void SetUp() override {
        sql("INSERT INTO tDVD (DVDID, KatCisl, CZJm, Jazyk) VALUES"
            " (1, '10', 'Žena', 0), (2, '9', 'Cesta', 1), (3, NULL, 'chata', 2), (4, '12a', 'Čáp', 0);"
            "INSERT INTO tUser (USID, USNAME) VALUES (7, 'Novák'), (12, 'Dvořák');"
            "INSERT INTO tPujcky (P_ID, P_UID, P_DVDID, PDatPujcky, PDatVraceni) VALUES"
            " (1, 7, 1, '2026-01-02 10:20:30', '2026-01-05 08:00:00'),"
            " (2, 7, 2, '2026-02-03 00:00:00', NULL), (3, 12, 4, '2026-02-04 09:01:02', NULL),"
            " (4, 99, 3, '2026-02-05 09:01:02', NULL);");
    }

    void open(const QString& query) { rows.Open(query, connection()); }

    void append(const QByteArray& bytes, qsizetype piece) const {
        for (qsizetype at = 0; at < bytes.size(); at += piece)
            rows.Fields(u"PicDat").AppendChunk(bytes.mid(at, piece));
    }
    QByteArray take(qint64 piece) const {
        QByteArray bytes;
        for (QByteArray chunk = "first"; !chunk.isEmpty();)
            bytes += chunk = rows.Fields(u"picdat").GetChunk(piece);
        return bytes;
    }

    ado::Recordset rows;
};

}  // namespace

TEST_F(RecordsetTest, NewRowIsStoredInStepsUnderAKeyNeverGivenBefore) {
    open(u"SELECT * FROM tDVD WHERE DVDID=4;"_s);
    EXPECT_EQ(failureOf([this] { rows.Delete(3); }), errors::invalidCall);
    rows.Delete(1);
    rows.Update();  // nothing is set: nothing happens
    EXPECT_EQ(failureOf([this] { rows.Fields(u"CZJm").Value(); }), errors::rowGone);
    EXPECT_EQ(number("SELECT count(*) FROM tPujcky WHERE P_DVDID=4"), 1);
    rows.Close();
    open(u"SELECT * from tDVD WHERE DVDID=0"_s);
    EXPECT_EQ(failureOf([this] { rows.Update(); }), errors::noCurrentRecord);
    rows.AddNew();
    EXPECT_FALSE(rows.Eof());
    EXPECT_EQ(rows.RecordCount(), 0);
    EXPECT_TRUE(rows.Fields(u"DVDID").Value().isNull());
    rows.Update();
    EXPECT_EQ(rows.Fields(u"DVDID").Value(), DbValue(5));
    EXPECT_EQ(number("SELECT count(*) FROM tDVD WHERE DVDID=5 AND CZJm IS NULL AND Jazyk IS NULL"), 1);
    rows.Fields(u"czjm").setValue(u"Ž\"x'; DROP TABLE tDVD"_s);
    rows.Fields(u"DiskPocet").setValue(u"2"_s);
    EXPECT_EQ(rows.Fields(u"CZJM").Value(), DbValue(u"Ž\"x'; DROP TABLE tDVD"_s));
    rows.Update();
    rows.Fields(u"KatCisl").setValue(5);
    rows.Update();
    EXPECT_EQ(rows.RecordCount(), 1);
    rows.MoveNext();
    EXPECT_TRUE(rows.Eof());
    EXPECT_EQ(text("SELECT CZJm || DiskPocet || KatCisl FROM tDVD WHERE DVDID=5"),
              u"Ž\"x'; DROP TABLE tDVD25"_s);
}

TEST_F(RecordsetTest, AddedRowsFollowTheOthersAndAreMetOnce) {
    open(u"SELECT * from tPujcky"_s);
    for (int added = 0; added < 2; ++added) {
        rows.AddNew();
        rows.Fields(u"P_UID").setValue(100 + added);
        rows.Update();
    }
    EXPECT_EQ(rows.Fields(u"P_UID").Value(), DbValue(101));
    EXPECT_EQ(rows.RecordCount(), 6);
    rows.AddNew();
    rows.Fields(u"P_UID").setValue(102);
    rows.MoveNext();  // stores what is set, and the added row is the last one
    EXPECT_TRUE(rows.Eof());
    EXPECT_EQ(number("SELECT count(*) FROM tPujcky WHERE P_UID>=100"), 3);
}

TEST_F(RecordsetTest, RowsAreFixedWhenTheRecordsetIsOpened) {
    open(u"SELECT * from tDVD Order by DVDID"_s);
    ASSERT_EQ(rows.RecordCount(), 4);
    sql("DELETE FROM tDVD WHERE DVDID=2; INSERT INTO tDVD (CZJm) VALUES ('Pozdě')");
    EXPECT_EQ(rows.RecordCount(), 4);
    rows.MoveNext();
    EXPECT_EQ(failureOf([this] { rows.Fields(u"CZJm").Value(); }), errors::rowGone);
    rows.Fields(u"CZJm").setValue(u"Zmizelá"_s);
    EXPECT_EQ(failureOf([this] { rows.Update(); }), errors::rowGone);
}

TEST_F(RecordsetTest, ColumnRefusesWhatItCannotHoldAndKeepsItsValue) {
    open(
        u"SELECT tDVD.DVDID, tPujcky.P_UID, tPujcky.P_DVDID, tPujcky.PDatPujcky,tPujcky.PDatVraceni, "
        "tUser.USID, tUser.USNAME FROM tUser INNER JOIN (tDVD INNER JOIN tPujcky ON tDVD.DVDID = "
        "tPujcky.P_DVDID) ON tUser.USID = tPujcky.P_UID WHERE (((tPujcky.PDatVraceni) Is Null)) and "
        "tDVD.DVDID=2"_s);
    EXPECT_EQ(rows.RecordCount(), 1);
    EXPECT_EQ(failureOf([this] { rows.AddNew(); }), errors::operationNotAllowed);
    EXPECT_EQ(failureOf([this] { rows.Delete(1); }), errors::operationNotAllowed);
    const std::tuple<QStringView, DbValue, qint32> cases[] = {
        {u"P_UID", u"dva"_s, errors::typeMismatch},
        {u"P_UID", u""_s, errors::typeMismatch},
        {u"P_UID", u"3000000000"_s, errors::overflow},
        {u"P_UID", qint64{1} << 40, errors::overflow},
        {u"P_UID", QByteArray("1"), errors::typeMismatch},
        {u"USNAME", QByteArray("1"), errors::typeMismatch},
        {u"PDatPujcky", u"zítra"_s, errors::typeMismatch},
        {u"PDatPujcky", 20260309, errors::typeMismatch},
        {u"PDatPujcky", QDateTime(), errors::typeMismatch},
        {u"DVDID", 77, errors::operationNotAllowed},
        {u"NeniTu", 1, errors::itemNotFound}};
    for (const auto& [column, value, failure] : cases) {
        SCOPED_TRACE(column.toString().toStdString());
        EXPECT_EQ(failureOf([&, column = column, value = value] { rows.Fields(column).setValue(value); }),
                  failure);
    }
    EXPECT_EQ(failureOf([this] { rows.Fields(u"USNAME").AppendChunk("x"); }), errors::typeMismatch);
    rows.Fields(u"USNAME").setValue(DbValue());
    rows.Fields(u"PDatPujcky").setValue(u"29.03.2026 2:30:00"_s);
    rows.Fields(u"PDatVraceni").setValue(QDateTime(QDate(2026, 12, 31), QTime(23, 59, 59, 999)));
    rows.Update();
    EXPECT_EQ(rows.Fields(u"pdatpujcky").Value().toText(), u"29.03.2026 2:30:00"_s);
    EXPECT_EQ(text("SELECT P_UID || ' ' || PDatPujcky || PDatVraceni || ifnull(USNAME, '-') FROM tPujcky "
                   "JOIN tUser ON USID=P_UID WHERE P_ID=2"),
              u"7 2026-03-29 02:30:002026-12-31 23:59:59-"_s);
}

TEST_F(RecordsetTest, CountingInTheMiddleOfAWalkLosesNeitherRowsNorChanges) {
    open(u"SELECT * from tDVD Order by CZJM"_s);
    rows.MoveNext();
    rows.Fields(u"CZJm").setValue(u"Žžž"_s);  // moves behind all others in the running query's order
    rows.Update();
    EXPECT_EQ(rows.RecordCount(), 4);
    EXPECT_EQ(rows.Fields(u"CZJm").Value(), DbValue(u"Žžž"_s));
    for (const int following : {3, 1}) {
        rows.MoveNext();
        EXPECT_EQ(rows.Fields(u"DVDID").Value(), DbValue(following));
    }
    rows.MoveNext();
    EXPECT_TRUE(rows.Eof());
}

TEST_F(RecordsetTest, IndexInTheOrderOfAnotherLibraryIsRebuilt) {
    // As if another version of the library had an order in which all texts are equal.
    const sqlite::Database other(catalogue(), sqlite::Database::Mode::readWrite);
    const auto equal = [](void*, int, const void*, int, const void*) { return 0; };
    sqlite3_create_collation_v2(other.handle(), "CZECH", SQLITE_UTF8, nullptr, equal, nullptr);
    other.exec("REINDEX");
    open(u"SELECT * from tDVD WHERE DVDID=1"_s);
    rows.Fields(u"CZJm").setValue(u"Změněný"_s);
    rows.Update();
    rows.Close();
    EXPECT_EQ(text("SELECT CZJm FROM tDVD WHERE DVDID=1"), u"Změněný"_s);
    EXPECT_EQ(text("PRAGMA integrity_check"), u"ok"_s);
}

TEST_F(RecordsetTest, WhatIsNotOpenSaysSo) {
    EXPECT_EQ(failureOf([this] { rows.Close(); }), errors::objectClosed);
    ado::Connection closed;
    EXPECT_EQ(failureOf([&] { closed.Close(); }), errors::objectClosed);
    EXPECT_EQ(failureOf([&] { rows.Open(u"SELECT * from tDVD"_s, closed); }), errors::objectClosed);
    for (const QString& query :
         {u"SELECT * from tNeni"_s, u""_s, u"SELECT 1 FROM tDVD"_s, u"DELETE FROM tDVD"_s}) {
        EXPECT_EQ(failureOf([&] { open(query); }), errors::databaseSql) << query.toStdString();
        EXPECT_EQ(failureOf([this] { rows.Eof(); }), errors::databaseSql) << query.toStdString();
    }
    open(u"SELECT * from tDVD"_s);
    EXPECT_EQ(rows.RecordCount(), 4);
    EXPECT_EQ(failureOf([this] { open(u"SELECT * from tDVD"_s); }), errors::objectOpen);
    const ado::Field title = rows.Fields(u"CZJm");
    connection().Close();
    EXPECT_EQ(failureOf([&] { title.Value(); }), errors::objectClosed);
    EXPECT_EQ(failureOf([this] { rows.MoveNext(); }), errors::objectClosed);
    open(u"SELECT * from tDVD"_s);
    const ado::Field number = rows.Fields(u"KatCisl");
    rows.Close();
    open(u"SELECT * from tDVD"_s);
    EXPECT_EQ(failureOf([&] { number.setValue(1); }), errors::objectClosed);
}

TEST_F(RecordsetTest, WaitsForAnotherProgramAndKeepsAChangeThatIsHeldUp) {
    open(u"SELECT * from tDVD WHERE DVDID =1"_s);
    EXPECT_EQ(rows.RecordCount(), 1);
    EXPECT_EQ(rows.Fields(u"CZJm").Value(), DbValue(u"Žena"_s));
    rows.Fields(u"CZJm").setValue(u"Počkám"_s);
    const sqlite::Database other(catalogue(), sqlite::Database::Mode::readWrite);
    other.exec("BEGIN IMMEDIATE");
    QElapsedTimer waiting;
    waiting.start();
    EXPECT_EQ(failureOf([this] { rows.Update(); }), errors::database);
    EXPECT_GE(waiting.elapsed(), 4000);
    EXPECT_EQ(rows.Fields(u"CZJm").Value(), DbValue(u"Počkám"_s));
    other.exec("COMMIT");
    rows.Update();
    EXPECT_EQ(text("SELECT CZJm FROM tDVD WHERE DVDID=1"), u"Počkám"_s);
    rows.Close();
    other.exec("BEGIN EXCLUSIVE");
    ado::Connection second;
    EXPECT_EQ(failureOf([&] { second.Open(connectionString(catalogue())); }), errors::database);
}

TEST_F(RecordsetTest, PiecesOfAnyLengthAddUpAndTheFirstOneReplaces) {
    ado::Connection file;
    file.Open(connectionString(pictures()));
    rows.Open(u"SELECT * from tPicture"_s, file);
    rows.AddNew();
    for (const qsizetype piece : {1000, 65536, 100001}) {
        const QByteArray bytes = noise(250003);
        append(bytes, piece);
        EXPECT_EQ(rows.Fields(u"PicDat").Value(), DbValue(bytes));
        rows.Update();
        EXPECT_TRUE(rows.Fields(u"PicDat").GetChunk(0).isEmpty());
        EXPECT_TRUE(take(piece + 7) == bytes);
    }
    append("XY", 1);
    EXPECT_EQ(take(2), "");  // the stored value has been read to its end
    rows.Update();
    EXPECT_EQ(take(100), "XY");
    rows.Fields(u"PicDat").setValue(DbValue());
    rows.Update();
    EXPECT_TRUE(rows.Fields(u"PicDat").Value().isNull());
    EXPECT_EQ(take(100), "");
    rows.AddNew();
    append(noise(300000), 100000);
    rows.Close();
    EXPECT_EQ(text(pictures(), "SELECT count(*) FROM tPicture"), u"1"_s);
}
