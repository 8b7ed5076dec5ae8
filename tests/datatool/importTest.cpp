// The old pair in tests/data is imported and compared with what is known of it value by value.

#include <QCryptographicHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "datatool/DataFiles.h"
#include "datatool/importFixture.h"

using namespace Qt::StringLiterals;

namespace {

class Import : public OldPair {
 protected:
    QString newFile(const QString& table) const {
        return at(table == u"tPicture"_s ? u"new/pictures.ddb"_s : u"new/data.ddb"_s);
    }
    /// The rows of a new table in the form of expected.json.
    QJsonArray rows(const QString& table) const {
        const auto result = [&](const QString& query) {
            return text(newFile(table), query.arg(table).toUtf8().constData());
        };
        const QString columns = result(
            u"SELECT group_concat(quote(name)||','||iif(type='BLOB','quote('||name||')',name)) "
            "FROM pragma_table_info('%1') WHERE name<>'P_ID'"_s);
        const QString all = result(u"SELECT json_group_array(json_object("_s + columns +
                                   u")) FROM (SELECT * FROM %1 ORDER BY rowid)"_s);
        QJsonArray rows = QJsonDocument::fromJson(all.toUtf8()).array();
        if (table == u"tPicture"_s) std::transform(rows.begin(), rows.end(), rows.begin(), &withoutBytes);
        return rows;
    }
    void expectTruth() const {
        const QJsonObject truth =
            QJsonDocument::fromJson(content(QStringLiteral(KALVERA_OLD_PAIR "/expected.json"))).object();
        ASSERT_EQ(truth.size(), 6);
        for (auto table = truth.begin(); table != truth.end(); ++table)
            EXPECT_TRUE(rows(table.key()) == table.value().toArray())
                << table.key().toStdString() << QJsonDocument(rows(table.key())).toJson().toStdString();
    }
    /// Imports, and expects these texts in the report, which is also stored.
    void expectReport(int exitCode, const QStringList& told) const {
        const Result result = runImport();
        EXPECT_EQ(result.exitCode, exitCode) << result.errors.toStdString();
        EXPECT_EQ(result.output.toUtf8(), content(u"new/import.txt"_s));
        for (const QString& each : told)
            EXPECT_TRUE(result.output.contains(each)) << each.toStdString() << result.output.toStdString();
    }

 private:
    /// A row of the pictures with what is known of the bytes in their place.
    static QJsonValue withoutBytes(const QJsonValue& picture) {
        QJsonObject row = picture.toObject();
        const QString quoted = row.take(u"PicDat"_s).toString();
        const QByteArray bytes = QByteArray::fromHex(quoted.toLatin1());
        const QByteArray sha =
            QCryptographicHash::hash(bytes.first(row[u"PicSize"_s].toInt()), QCryptographicHash::Sha256);
        const bool none = quoted == u"NULL"_s;
        row[u"PicDat_length"_s] = none ? QJsonValue() : QJsonValue(bytes.size());
        row[u"sha256"_s] = none ? QJsonValue() : QJsonValue(QString::fromLatin1(sha.toHex()));
        return row;
    }
};

}  // namespace

TEST_F(Import, EveryValueComesOverAndTheNewPairIsTheProgramsOwn) {
    expectReport(0, {u"Výpůjčky (tPujcky)              20          20          20           0           -"_s,
                     u"Filmy (tDVD)                    40          40          40           0          48"_s,
                     u"DVDID 8, 26, 44."_s, u"PicID 10 (film 7)"_s, u"\nVše souhlasí:"_s});
    expectTruth();
    EXPECT_EQ(names(u"new"_s), QStringList({u"data.ddb"_s, u"import.txt"_s, u"pictures.ddb"_s}));
    const char* indexes = "SELECT COUNT(*) FROM sqlite_master WHERE type='index' AND sql NOT NULL";
    EXPECT_EQ(dataFiles::openCatalogue(at(u"new"_s)).number(indexes), number(indexes));
    EXPECT_EQ(text(newFile(u"tDVD"_s), "PRAGMA integrity_check"), u"ok"_s);
    // New rows are numbered from above the highest old number.
    const std::pair<const char*, qint64> tables[] = {
        {"tDVD", 48}, {"tZanr", 9}, {"tOddeleni", 6}, {"tUser", 8}, {"tPicture", 15}};
    for (const auto& [table, next] : tables) {
        const sqlite::Database database(newFile(QString::fromUtf8(table)), sqlite::Database::Mode::readWrite);
        database.exec((QByteArray("INSERT INTO ") + table + " DEFAULT VALUES").constData());
        EXPECT_EQ(database.number("SELECT last_insert_rowid()"), next) << table;
    }
}

TEST_F(Import, PasswordCaseOfFileNamesAndEnvironmentMakeNoDifference) {
    // The field of the password in the header, as it is with one.
    const QByteArray none = QByteArray::fromHex("796fec37a2d09cfa39ca28e6ec228a60ab007b36");
    const QByteArray set = QByteArray::fromHex("286f8937eed0f2fa7bca50e6ba22e160ff000936");
    patch(u"old/data.ddb"_s, none, set);
    patch(u"old/pictures.ddb"_s, none, set);
    ASSERT_TRUE(QFile::rename(at(u"old/data.ddb"_s), at(u"old/DATA.DDB"_s)));
    environment.insert(u"MDBICONV"_s, u"CP1252"_s);
    expectReport(0, {});
    expectTruth();
}

TEST_F(Import, TextThatTheExportSpoilsComesOverWhole) {
    // A title of seven letters: one outside the first 65,536 characters, and a NUL.
    patch(u"old/data.ddb"_s, utf16(u"Солярис"),
          utf16(u"С\U0001F3AC\u0001\"ис").replace(utf16(u"\u0001"), utf16({u"\0", 1})));
    expectReport(0, {});
    EXPECT_EQ(text(newFile(u"tDVD"_s), "SELECT PuvJm FROM tDVD WHERE DVDID=32"),
              u"С\U0001F3AC"_s + QChar(0) + u"\"ис"_s);
}

TEST_F(Import, RowThatCannotBeImportedIsNamedAndTheRestComesOver) {
    patch(u"old/pictures.ddb"_s, QByteArray::fromHex("eb0f0000"), QByteArray::fromHex("ea0f0000"));
    expectReport(3, {u"12          12          11           1"_s, u"POZOR, nesouhlasí to"_s, u"celkem 1."_s,
                     u"- Obrázky, PicID 14: podle PicSize 4074 má mít 4075 bajtů dat a má jich 4076."_s});
    EXPECT_EQ(rows(u"tPicture"_s).size(), 11);
}

TEST_F(Import, ExportedFilmsAreLoadedBack) {
    ASSERT_EQ(runImport().exitCode, 0);
    const QJsonArray films = rows(u"tDVD"_s);
    const QStringList exported{u"export"_s, at(u"new"_s), at(u"films.csv"_s)};
    EXPECT_EQ(run(exported).exitCode, 0);
    EXPECT_EQ(run(exported).exitCode, 1);
    sql(newFile(u"tDVD"_s), "DELETE FROM tDVD");
    EXPECT_EQ(run({u"load"_s, at(u"new"_s), at(u"films.csv"_s)}).exitCode, 0);
    EXPECT_EQ(rows(u"tDVD"_s), films);
    // A fresh catalogue has other departments: the names count there.
    EXPECT_EQ(run({u"load"_s, at(u"data"_s), at(u"films.csv"_s)}).exitCode, 0);
    const char* departments =
        "SELECT group_concat(DVDID||IFNULL(OdJm,Oddel_ID)) FROM (SELECT * FROM tDVD LEFT JOIN tOddeleni ON "
        "ODID=Oddel_ID ORDER BY DVDID)";
    EXPECT_EQ(text(departments), text(newFile(u"tDVD"_s), departments));
}
