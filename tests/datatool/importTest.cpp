// The old pair that lies in tests/data, taken over and compared with what is known of it value by value.

#include <QCryptographicHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "datatool/DataFiles.h"
#include "datatool/FilmExport.h"
#include "datatool/FilmLoader.h"
#include "datatool/importFixture.h"

using namespace Qt::StringLiterals;

namespace {

class Import : public OldPair {
 protected:
    QString newFile(const QString& table) const {
        return at(table == u"tPicture"_s ? u"new/pictures.ddb"_s : u"new/data.ddb"_s);
    }
    /// The rows of a table of the new pair in the form in which the truth about the old one is told.
    QJsonArray rows(const QString& table) const {
        const sqlite::Database database(newFile(table), sqlite::Database::Mode::readWrite);
        const sqlite::Statement all(database, "SELECT * FROM " + table.toUtf8() + " ORDER BY rowid");
        QJsonArray result;
        while (all.step()) {
            QJsonObject row;
            for (int column = 0; column < sqlite3_column_count(all.handle()); ++column)
                put(row, all, column);
            row.remove(u"P_ID"_s);
            result += row;
        }
        return result;
    }
    void expectTruth() const {
        const QJsonObject truth =
            QJsonDocument::fromJson(content(QStringLiteral(KALVERA_OLD_PAIR "/expected.json"))).object();
        ASSERT_EQ(truth.size(), 6);
        for (auto table = truth.begin(); table != truth.end(); ++table) {
            const QJsonArray expected = table.value().toArray();
            const QJsonArray found = rows(table.key());
            ASSERT_EQ(found.size(), expected.size()) << table.key().toStdString();
            for (qsizetype row = 0; row < found.size(); ++row) {
                EXPECT_EQ(found[row], expected[row])
                    << QJsonDocument(found[row].toObject()).toJson().toStdString()
                    << QJsonDocument(expected[row].toObject()).toJson().toStdString();
            }
        }
    }

 private:
    static void put(QJsonObject& row, const sqlite::Statement& all, int column) {
        const QString name = QString::fromUtf8(sqlite3_column_name(all.handle(), column));
        if (name == u"PicDat"_s) {
            const QByteArray bytes(static_cast<const char*>(sqlite3_column_blob(all.handle(), column)),
                                   sqlite3_column_bytes(all.handle(), column));
            const bool none = all.isNull(column);
            const auto picture = QByteArrayView(bytes).first(none ? 0 : all.number(column - 1));
            const QByteArray sha = QCryptographicHash::hash(picture, QCryptographicHash::Sha256).toHex();
            row[u"PicDat_length"_s] = none ? QJsonValue() : QJsonValue(bytes.size());
            row[u"sha256"_s] = none ? QJsonValue() : QJsonValue(QString::fromLatin1(sha));
            return;
        }
        const bool isNumber = sqlite3_column_type(all.handle(), column) == SQLITE_INTEGER;
        const QJsonValue value = isNumber             ? QJsonValue(all.number(column))
                                 : all.isNull(column) ? QJsonValue()
                                                      : QJsonValue(all.text(column));
        row[name] = value;
    }
};

}  // namespace

TEST_F(Import, EveryValueComesOverAndTheReportSaysSo) {
    const Result result = runImport();
    EXPECT_EQ(result.exitCode, 0) << result.errors.toStdString();
    expectTruth();
    EXPECT_EQ(result.output.toUtf8(), content(u"new/import.txt"_s));
    EXPECT_EQ(names(u"new"_s), QStringList({u"data.ddb"_s, u"import.txt"_s, u"pictures.ddb"_s}));
    for (const QString& told :
         {u"Výpůjčky (tPujcky)              20          20          20           0           -"_s,
          u"Filmy (tDVD)                    40          40          40           0          48"_s,
          u"DVDID 8, 26, 44."_s, u"PicID 10 (film 7)"_s, u"\nVše souhlasí:"_s}) {
        EXPECT_TRUE(result.output.contains(told)) << told.toStdString() << result.output.toStdString();
    }
}

TEST_F(Import, DatabasePasswordAndLetterCaseOfFileNamesMakeNoDifference) {
    // The field of the password in the header, as it is with one.
    const QByteArray none = QByteArray::fromHex("796fec37a2d09cfa39ca28e6ec228a60ab007b36");
    const QByteArray set = QByteArray::fromHex("286f8937eed0f2fa7bca50e6ba22e160ff000936");
    patch(u"old/data.ddb"_s, none, set);
    patch(u"old/pictures.ddb"_s, none, set);
    ASSERT_TRUE(QFile::rename(at(u"old/data.ddb"_s), at(u"old/DATA.DDB"_s)));
    environment.insert(u"MDBICONV"_s, u"CP1252"_s);
    const Result result = runImport();
    EXPECT_EQ(result.exitCode, 0) << result.errors.toStdString();
    expectTruth();
}

TEST_F(Import, NewRowsGoOnAboveTheHighestOldNumber) {
    ASSERT_EQ(runImport().exitCode, 0);
    const std::pair<const char*, qint64> tables[] = {
        {"tDVD", 48}, {"tZanr", 9}, {"tOddeleni", 6}, {"tUser", 8}, {"tPicture", 15}};
    for (const auto& [table, next] : tables) {
        const sqlite::Database database(newFile(QString::fromUtf8(table)), sqlite::Database::Mode::readWrite);
        database.exec((QByteArray("INSERT INTO ") + table + " DEFAULT VALUES").constData());
        EXPECT_EQ(database.number("SELECT last_insert_rowid()"), next) << table;
    }
}

TEST_F(Import, NewPairIsTheProgramsOwnWithAllItsIndexes) {
    ASSERT_EQ(runImport().exitCode, 0);
    ado::Connection opened;
    const sqlite::Database database = dataFiles::openCatalogue(at(u"new"_s));
    const char* indexes = "SELECT COUNT(*) FROM sqlite_master WHERE type='index' AND sql NOT NULL";
    EXPECT_EQ(database.number(indexes), number(indexes));
    const sqlite::Statement check(database, "PRAGMA integrity_check");
    ASSERT_TRUE(check.step());
    EXPECT_EQ(check.text(0), u"ok"_s);
}

TEST_F(Import, TextThatTheExportSpoilsIsCarriedOverWhole) {
    // A title of seven letters: one outside the first 65,536 characters, and a NUL.
    patch(u"old/data.ddb"_s, utf16(u"Солярис"),
          utf16(u"С\U0001F3AC\u0001\"ис").replace(utf16(u"\u0001"), utf16({u"\0", 1})));
    const Result result = runImport();
    EXPECT_EQ(result.exitCode, 0) << result.errors.toStdString();
    const sqlite::Database database = dataFiles::openCatalogue(at(u"new"_s));
    const sqlite::Statement title(database, "SELECT PuvJm FROM tDVD WHERE DVDID=32");
    ASSERT_TRUE(title.step());
    EXPECT_EQ(title.text(0), u"С\U0001F3AC"_s + QChar(0) + u"\"ис"_s);
}

TEST_F(Import, RowThatCannotBeTakenOverIsNamedAndTheRestComesOver) {
    patch(u"old/pictures.ddb"_s, QByteArray::fromHex("eb0f0000"), QByteArray::fromHex("ea0f0000"));
    const Result result = runImport();
    EXPECT_EQ(result.exitCode, 3);
    for (const QString& told :
         {u"12          12          11           1"_s,
          u"- Obrázky, PicID 14: podle PicSize 4074 má mít 4075 bajtů dat a má jich 4076."_s,
          u"POZOR, nesouhlasí to"_s, u"celkem 1."_s}) {
        EXPECT_TRUE(result.output.contains(told)) << told.toStdString() << result.output.toStdString();
    }
    EXPECT_EQ(result.output.toUtf8(), content(u"new/import.txt"_s));
    EXPECT_EQ(rows(u"tPicture"_s).size(), 11);
}

TEST_F(Import, FilmsSurviveTheWayThroughATable) {
    ASSERT_EQ(runImport().exitCode, 0);
    const QJsonArray films = rows(u"tDVD"_s);
    ASSERT_EQ(run({u"export"_s, at(u"new"_s), at(u"films.csv"_s)}).exitCode, 0);
    EXPECT_EQ(run({u"export"_s, at(u"new"_s), at(u"films.csv"_s)}).exitCode, 1);
    sql(newFile(u"tDVD"_s), "DELETE FROM tDVD");
    EXPECT_EQ(run({u"load"_s, at(u"new"_s), at(u"films.csv"_s)}).exitCode, 0);
    EXPECT_EQ(rows(u"tDVD"_s), films);
    // A fresh catalogue has other departments: the names count there.
    const char* departments =
        "SELECT group_concat(DVDID||IFNULL(OdJm,Oddel_ID)) FROM (SELECT * FROM tDVD LEFT JOIN tOddeleni ON "
        "ODID=Oddel_ID ORDER BY DVDID)";
    EXPECT_EQ(run({u"load"_s, at(u"data"_s), at(u"films.csv"_s)}).exitCode, 0);
    const sqlite::Database moved = dataFiles::openCatalogue(at(u"new"_s));
    const sqlite::Statement before(moved, departments);
    ASSERT_TRUE(before.step());
    EXPECT_EQ(text(departments), before.text(0));
}
