#include "platform/ado.h"

#include <QElapsedTimer>

#include "core/mDatabase.h"
#include "support/TemporaryProgram.h"

using namespace Qt::StringLiterals;

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

    /// The values of one column, over all rows from the current one on.
    QStringList column(QStringView name) {
        QStringList values;
        for (; !rows.Eof(); rows.MoveNext()) {
            const DbValue value = rows.Fields(name).Value();
            values += value.isNull() ? u"Null"_s : value.toText();
        }
        return values;
    }

    ado::Recordset rows;
};

const QString openLoans =
    u"SELECT tDVD.DVDID, tPujcky.P_UID, tPujcky.P_DVDID, tPujcky.PDatPujcky,tPujcky.PDatVraceni, tUser.USID, "
    "tUser.USNAME FROM tUser INNER JOIN (tDVD INNER JOIN tPujcky ON tDVD.DVDID = tPujcky.P_DVDID) ON "
    "tUser.USID = tPujcky.P_UID WHERE (((tPujcky.PDatVraceni) Is Null))"_s;

}  // namespace

TEST_F(RecordsetTest, AQueryGivesItsRowsWhateverTheLetterCaseOfItsNames) {
    const std::tuple<QString, QStringView, QStringList> cases[] = {
        {u"SELECT * from tDVD Order by CZJM"_s, u"czjm", {u"Cesta"_s, u"Čáp"_s, u"chata"_s, u"Žena"_s}},
        {u"SELECT * from tDVD Order by KatCisl"_s, u"KATCISL", {u"Null"_s, u"10"_s, u"12a"_s, u"9"_s}},
        {u"SELECT * from tDVD WHERE DVDID=0"_s, u"CZJm", {}},
        {openLoans + u';', u"USNAME", {u"Novák"_s, u"Dvořák"_s}},
        {openLoans + u" and tDVD.DVDID=4;"_s, u"pdatpujcky", {u"04.02.2026 9:01:02"_s}}};
    for (const auto& [query, name, values] : cases) {
        SCOPED_TRACE(query.toStdString());
        open(query);
        EXPECT_EQ(rows.RecordCount(), values.size());
        EXPECT_EQ(column(name), values);
        EXPECT_EQ(rows.RecordCount(), values.size());
        rows.Close();
    }
}

TEST_F(RecordsetTest, AnUpdateThroughTheBracketedJoinClosesOnlyTheCurrentLoan) {
    sql("INSERT INTO tPujcky (P_ID, P_UID, P_DVDID, PDatPujcky) VALUES (5, 12, 2, '2026-02-06 10:00:00')");
    open(openLoans + u" and tDVD.DVDID=2;"_s);
    ASSERT_EQ(rows.RecordCount(), 2);
    rows.Fields(u"PDATVRACENI").setValue(QDateTime(QDate(2026, 3, 9), QTime(8, 5, 3)));
    rows.Update();
    EXPECT_EQ(rows.Fields(u"USNAME").Value(), DbValue(u"Novák"_s));
    rows.Close();
    EXPECT_EQ(text("SELECT group_concat(P_ID || ':' || ifnull(PDatVraceni, '-'), ' ') FROM tPujcky"),
              u"1:2026-01-05 08:00:00 2:2026-03-09 08:05:03 3:- 4:- 5:-"_s);
    open(openLoans);
    EXPECT_EQ(failureOf([this] { rows.AddNew(); }), errors::operationNotAllowed);
    EXPECT_EQ(failureOf([this] { rows.Delete(1); }), errors::operationNotAllowed);
}

TEST_F(RecordsetTest, ANewRowIsStoredInSeveralStepsAndGivesItsKeyAfterTheFirst) {
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
    rows.Update();
    EXPECT_EQ(rows.Fields(u"KatCisl").Value(), DbValue(u"5"_s));
    EXPECT_EQ(rows.RecordCount(), 1);
    rows.MoveNext();
    EXPECT_TRUE(rows.Eof());
    EXPECT_EQ(text("SELECT CZJm || DiskPocet || KatCisl FROM tDVD WHERE DVDID=5"),
              u"Ž\"x'; DROP TABLE tDVD25"_s);
}

TEST_F(RecordsetTest, AFilmAddedAfterADeletedOneNeverGetsItsKey) {
    open(u"SELECT * FROM tDVD WHERE DVDID=4;"_s);
    EXPECT_EQ(failureOf([this] { rows.Delete(3); }), errors::invalidCall);
    rows.Delete(1);
    rows.Update();  // nothing is set: nothing happens
    EXPECT_EQ(failureOf([this] { rows.Fields(u"CZJm").Value(); }), errors::rowGone);
    rows.AddNew();
    rows.Fields(u"CZJm").setValue(u"Nový"_s);
    rows.Update();
    EXPECT_EQ(rows.Fields(u"DVDID").Value(), DbValue(5));
    EXPECT_EQ(number("SELECT count(*) FROM tPujcky WHERE P_DVDID=4"), 1);
}

TEST_F(RecordsetTest, AppendedRowsFollowTheOthersAndAreMetOnce) {
    open(u"SELECT * from tPujcky"_s);
    for (int added = 0; added < 2; ++added) {
        rows.AddNew();
        rows.Fields(u"P_UID").setValue(100 + added);
        rows.Update();
    }
    EXPECT_EQ(rows.Fields(u"P_UID").Value(), DbValue(101));
    EXPECT_EQ(rows.RecordCount(), 6);
    rows.Close();
    open(u"SELECT * from tPujcky"_s);
    rows.AddNew();
    rows.Fields(u"P_UID").setValue(102);
    rows.MoveNext();  // stores what is set, and the added row is the last one
    EXPECT_TRUE(rows.Eof());
    EXPECT_EQ(number("SELECT count(*) FROM tPujcky WHERE P_UID>=100"), 3);
}

TEST_F(RecordsetTest, TheRowsAreFixedWhenTheRecordsetIsOpened) {
    open(u"SELECT * from tDVD Order by DVDID"_s);
    ASSERT_EQ(rows.RecordCount(), 4);
    sql("DELETE FROM tDVD WHERE DVDID=2; UPDATE tDVD SET CZJm='Jiná' WHERE DVDID=3;"
        "INSERT INTO tDVD (CZJm) VALUES ('Pozdě')");
    EXPECT_EQ(rows.RecordCount(), 4);
    rows.MoveNext();
    EXPECT_EQ(failureOf([this] { rows.Fields(u"CZJm").Value(); }), errors::rowGone);
    rows.Fields(u"CZJm").setValue(u"Zmizelá"_s);
    EXPECT_EQ(failureOf([this] { rows.Update(); }), errors::rowGone);
    rows.Fields(u"CZJm").setValue(u"Zmizelá"_s);
    EXPECT_EQ(failureOf([this] { rows.MoveNext(); }), errors::rowGone);
    EXPECT_EQ(number("SELECT count(*) FROM tDVD WHERE CZJm='Zmizelá'"), 0);
}

TEST_F(RecordsetTest, AColumnRefusesWhatItCannotHoldAndKeepsItsValue) {
    open(u"SELECT * from tDVD WHERE DVDID =2"_s);
    const std::tuple<QStringView, DbValue, qint32> cases[] = {
        {u"DiskPocet", u"dva"_s, errors::typeMismatch},    {u"DiskPocet", u""_s, errors::typeMismatch},
        {u"DiskPocet", u"3000000000"_s, errors::overflow}, {u"Jazyk", qint64{1} << 40, errors::overflow},
        {u"Jazyk", QByteArray("1"), errors::typeMismatch}, {u"CZJm", QByteArray("1"), errors::typeMismatch},
        {u"DVDID", 77, errors::operationNotAllowed},       {u"NeniTu", 1, errors::itemNotFound}};
    for (const auto& [column, value, failure] : cases) {
        SCOPED_TRACE(column.toString().toStdString());
        EXPECT_EQ(failureOf([&, column = column, value = value] { rows.Fields(column).setValue(value); }),
                  failure);
    }
    EXPECT_EQ(failureOf([this] { rows.Fields(u"CZJm").AppendChunk("x"); }), errors::typeMismatch);
    rows.Fields(u"Zanr").setValue(DbValue());
    rows.Update();
    EXPECT_EQ(text("SELECT CZJm || Jazyk || KatCisl || ifnull(Zanr, '-') FROM tDVD WHERE DVDID=2"),
              u"Cesta19-"_s);
}

TEST_F(RecordsetTest, ADateColumnTakesMomentsAndShownDates) {
    open(u"SELECT * from tPujcky WHERE P_DVDID=2"_s);
    EXPECT_EQ(failureOf([this] { rows.Fields(u"PDatPujcky").setValue(u"zítra"_s); }), errors::typeMismatch);
    EXPECT_EQ(failureOf([this] { rows.Fields(u"PDatPujcky").setValue(20260309); }), errors::typeMismatch);
    EXPECT_EQ(failureOf([this] { rows.Fields(u"PDatPujcky").setValue(QDateTime()); }), errors::typeMismatch);
    rows.Fields(u"PDatPujcky").setValue(u"29.03.2026 2:30:00"_s);
    rows.Fields(u"PDatVraceni").setValue(QDateTime(QDate(2026, 12, 31), QTime(23, 59, 59, 999)));
    rows.Update();
    EXPECT_EQ(rows.Fields(u"pdatpujcky").Value().toText(), u"29.03.2026 2:30:00"_s);
    EXPECT_EQ(text("SELECT PDatPujcky || PDatVraceni FROM tPujcky WHERE P_ID=2"),
              u"2026-03-29 02:30:002026-12-31 23:59:59"_s);
}

TEST_F(RecordsetTest, CountingInTheMiddleOfAWalkLosesNeitherRowsNorChanges) {
    open(u"SELECT * from tDVD Order by CZJM"_s);
    rows.MoveNext();
    rows.Fields(u"CZJm").setValue(u"Žžž"_s);  // moves behind all others in the running query's order
    rows.Update();
    EXPECT_EQ(rows.RecordCount(), 4);
    EXPECT_EQ(rows.Fields(u"CZJm").Value(), DbValue(u"Žžž"_s));
    rows.MoveNext();
    EXPECT_EQ(column(u"DVDID"), QStringList({u"3"_s, u"1"_s}));
    rows.Close();
    open(u"SELECT * from tDVD Order by CZJM"_s);
    for (int met = 0; !rows.Eof(); ++met, rows.MoveNext()) {
        ASSERT_LT(met, 4);
        rows.Fields(u"CZJm").setValue(QString(u"Ž"_s + rows.Fields(u"CZJm").Value().toText()));
        rows.Update();
    }
    EXPECT_EQ(rows.RecordCount(), 4);
}

TEST_F(RecordsetTest, ARecordsetOutlivesTheConnectionThatAnotherOperationReplaced) {
    OpenDB();
    OpenRS(u"SELECT * from tDVD Order by CZJM"_s, false);
    const std::shared_ptr<ado::Recordset> outer = RsDB;
    outer->MoveNext();
    OpenDB();
    OpenRS(u"SELECT * from tDVD WHERE DVDID=1"_s, false);
    RsDB->Fields(u"Zanr").setValue(u"Jiný"_s);
    outer->MoveNext();
    EXPECT_EQ(outer->Fields(u"CZJm").Value(), DbValue(u"chata"_s));
    CloseRS();
    CloseDB();
    outer->MoveNext();
    outer->MoveNext();
    EXPECT_TRUE(outer->Eof());
}

TEST_F(RecordsetTest, AnIndexInTheOrderOfAnotherLibraryIsMadeAnew) {
    {
        // The same file under an order that knows no Czech, as another version of the library might have it.
        const sqlite::Database other(catalogue(), sqlite::Database::Mode::readWrite);
        sqlite3_create_collation_v2(
            other.handle(), "CZECH", SQLITE_UTF8, nullptr,
            [](void*, int leftLength, const void* left, int rightLength, const void* right) {
                return QByteArrayView(static_cast<const char*>(right), rightLength)
                    .compare(QByteArrayView(static_cast<const char*>(left), leftLength));
            },
            nullptr);
        other.exec(
            "REINDEX; WITH RECURSIVE n(i) AS (SELECT 10 UNION ALL SELECT i+1 FROM n WHERE i<300)"
            "INSERT INTO tDVD (DVDID, KatCisl, CZJm) SELECT i, i, char(65+i%26) || i FROM n");
    }
    for (const int film : {1, 57, 123, 200, 299}) {
        open(u"SELECT * from tDVD WHERE DVDID ="_s + QString::number(film));
        rows.Fields(u"CZJm").setValue(u"Změněný"_s);
        rows.Update();
        rows.Close();
    }
    open(u"SELECT * from tDVD WHERE DVDID=150"_s);
    rows.Delete(1);
    rows.Close();
    EXPECT_EQ(number("SELECT count(*) FROM tDVD WHERE CZJm='Změněný'"), 5);
    EXPECT_EQ(text("PRAGMA integrity_check"), u"ok"_s);
}

TEST_F(RecordsetTest, WhatIsNotOpenSaysSo) {
    EXPECT_EQ(failureOf([this] { rows.Eof(); }), errors::objectClosed);
    EXPECT_EQ(failureOf([this] { rows.Close(); }), errors::objectClosed);
    ado::Connection closed;
    EXPECT_EQ(failureOf([&] { closed.Close(); }), errors::objectClosed);
    EXPECT_EQ(failureOf([&] { rows.Open(u"SELECT * from tDVD"_s, closed); }), errors::objectClosed);
    for (const QString& query : {u"SELECT * from tNeni"_s, u"SELEKT"_s, u""_s, u"SELECT 1 FROM tDVD"_s,
                                 u"DELETE FROM tDVD"_s, u"SELECT * from tPujcky where P_UID=ab c"_s}) {
        SCOPED_TRACE(query.toStdString());
        EXPECT_EQ(failureOf([&] { open(query); }), errors::databaseSql);
        EXPECT_EQ(failureOf([this] { rows.Eof(); }), errors::databaseSql);
    }
    EXPECT_EQ(number("SELECT count(*) FROM tDVD"), 4);
    open(u"SELECT * from tDVD"_s);
    EXPECT_EQ(failureOf([this] { open(u"SELECT * from tDVD"_s); }), errors::objectOpen);
    const ado::Field title = rows.Fields(u"CZJm");
    connection().Close();
    EXPECT_EQ(failureOf([&] { title.Value(); }), errors::objectClosed);
    EXPECT_EQ(failureOf([this] { rows.MoveNext(); }), errors::objectClosed);
    EXPECT_FALSE(rows.isOpen());
    open(u"SELECT * from tDVD"_s);
    const ado::Field number = rows.Fields(u"KatCisl");
    rows.Close();
    EXPECT_EQ(failureOf([&] { number.Value(); }), errors::objectClosed);
    open(u"SELECT * from tDVD"_s);
    EXPECT_EQ(failureOf([&] { number.setValue(1); }), errors::objectClosed);
}

TEST_F(RecordsetTest, AChangeThatAnotherProgramHoldsUpIsKeptAndStoredLater) {
    open(u"SELECT * from tDVD WHERE DVDID =1"_s);
    EXPECT_EQ(rows.Fields(u"CZJm").Value(), DbValue(u"Žena"_s));
    rows.Fields(u"CZJm").setValue(u"Počkám"_s);
    {
        const sqlite::Database other(catalogue(), sqlite::Database::Mode::readWrite);
        const sqlite::Transaction writing(other);
        QElapsedTimer waiting;
        waiting.start();
        EXPECT_EQ(failureOf([this] { rows.Update(); }), errors::database);
        EXPECT_GE(waiting.elapsed(), 4000);
        EXPECT_EQ(rows.Fields(u"CZJm").Value(), DbValue(u"Počkám"_s));
    }
    rows.Update();
    EXPECT_EQ(text("SELECT CZJm FROM tDVD WHERE DVDID=1"), u"Počkám"_s);
}
