// The old pair in tests/data is imported and compared with what is known of it value by value. Damaged files,
// failing programs and a full disk end an import, which says so and leaves nothing behind.

#include <signal.h>
#include <sys/resource.h>

#include <QCryptographicHash>
#include <QDirIterator>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStandardPaths>
#include <QTest>

#include "datatool/DataFiles.h"
#include "datatool/Importer.h"
#include "datatool/importFixture.h"

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

class ImportFaults : public OldPair {
 protected:
    /// Everything in the test's folder: names, times and bytes.
    QString state() const {
        QStringList all;
        for (QDirIterator each(folder(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
             each.hasNext();)
            all += each.next() + each.fileInfo().lastModified().toString(Qt::ISODateWithMs) +
                   QString::fromLatin1(content(each.filePath()));
        all.sort();
        return all.join(u'\n') + names(u""_s).join(u'/');
    }
    void expectRefused(const QString& told, const QString& target = QStringLiteral("new"),
                       const std::function<void()>& inChild = {}) const {
        const QString before = state();
        const Result result = run({u"import"_s, at(u"old"_s), at(target)}, inChild);
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_TRUE(result.errors.contains(u"Chyba: "_s) && result.errors.contains(told))
            << told.toStdString() << result.errors.toStdString();
        EXPECT_TRUE(state() == before) << told.toStdString() << names(u""_s).join(u' ').toStdString();
    }
    /// Puts a script in place of one of mdbtools' programs.
    void replaceProgram(const QString& name, const QByteArray& script) {
        QDir().mkpath(at(u"bin"_s));
        write(u"bin/"_s + name, "#!/bin/sh\n" + script);
        QFile::setPermissions(at(u"bin/"_s + name), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        environment.insert(u"PATH"_s, at(u"bin:"_s) + qEnvironmentVariable("PATH"));
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
    sql(newFile(u"tDVD"_s),
        "UPDATE tDVD SET PuvJm=char(65279,65279)||'x' WHERE DVDID=1;"
        "UPDATE tDVD SET Oddel_ID=77 WHERE DVDID=2; UPDATE tOddeleni SET OdJm='Stejné' WHERE ODID IN (1,4);"
        "UPDATE tOddeleni SET OdJm=NULL WHERE ODID=2; UPDATE tOddeleni SET OdJm='' WHERE ODID=3");
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
        "SELECT group_concat(DVDID||iif(ODID,quote(OdJm),Oddel_ID)) FROM (SELECT * FROM tDVD LEFT JOIN "
        "tOddeleni ON "
        "ODID=Oddel_ID ORDER BY DVDID)";
    EXPECT_EQ(text(departments), text(newFile(u"tDVD"_s), departments));
}

TEST_F(ImportFaults, FileThatCannotBeReadIsRefused) {
    const QString data = u"old/data.ddb"_s;
    const QString pictures = u"old/pictures.ddb"_s;
    const QByteArray films = content(data);
    const QByteArray images = content(pictures);
    const auto patched = [&](const QByteArray& from, const QByteArray& to) {
        return QByteArray(films).replace(from, to);
    };
    constexpr qsizetype page = 4096;
    const std::tuple<QString, QByteArray, QString> cases[] = {
        {data, "", u"soubor je prázdný"_s},
        {data, films.first(200000), u"useknutý"_s},
        {data, films.first(5 * page), u"poškozený"_s},
        {data, films.first(60 * page), u"poškozený"_s},
        {data, films.chopped(page), u"poškozený"_s},
        {pictures, images.first(180 * page), u"poškozený"_s},
        {data, patched("Standard Jet", "Stendard Jet"), u"není to databáze Jet"_s},
        {data, patched("Standard Jet DB\0\1"_ba, "Standard Jet DB\0\0"_ba), u"Jet 3 (Access 97)"_s},
        {data, patched("Standard Jet DB\0\1"_ba, "Standard Jet DB\0\2"_ba), u"novějším formátu"_s},
        {data, patched(utf16(u"tUser"), utf16(u"tUsel")), u"chybí v něm tabulka tUser"_s},
        {data, patched(utf16(u"USMAIL"), utf16(u"USMAIX")), u"chybí sloupec USMAIL"_s}};
    for (const auto& [path, bytes, told] : cases) {
        write(path, bytes);
        expectRefused(told);
        write(data, films);
        write(pictures, images);
    }
    QFile::remove(at(pictures));
    expectRefused(u"pictures.ddb nelze převést: soubor tam není"_s);
}

TEST_F(ImportFaults, ProgramThatFailsIsNotBelieved) {
    const std::tuple<QString, QByteArray, QString> cases[] = {
        {u"mdb-count"_s, "[ \"$2\" != tDVD ] || exec echo 41; PATH=${PATH#*:} exec mdb-count \"$@\"",
         u"Nesouhlasí to: tabulka tDVD má podle starého souboru 41 řádků a přečíst se jich dá 40."_s},
        {u"mdb-count"_s, "echo 39", u"Nesouhlasí to"_s},
        {u"mdb-count"_s, "kill -SEGV $$", u"Program mdb-count spadl"_s},
        {u"mdb-count"_s, "exec cat /dev/zero", u"píše bez konce"_s},
        {u"mdb-export"_s, "exit 1", u"Program mdb-export skončil s chybou 1"_s},
        {u"mdb-export"_s, "echo oops >&2", u"Program mdb-export si stěžuje"_s},
        {u"mdb-export"_s, "PATH=${PATH#*:} mdb-export \"$@\" | head -n 1",
         u"Dvě čtení téže tabulky se rozcházejí"_s},
        {u"mdb-export"_s, "printf 'DVDID,\"x'", u"Výpis tabulky ze starého souboru je neúplný"_s}};
    for (const auto& [name, script, told] : cases) {
        SCOPED_TRACE(script.toStdString());
        replaceProgram(name, script);
        expectRefused(told);
        QFile::remove(at(u"bin/"_s + name));
    }
    environment.insert(u"PATH"_s, at(u"bin"_s));
    expectRefused(u"balíček mdbtools"_s);
}

TEST_F(ImportFaults, ProgramThatHangsOrEatsMemoryIsEnded) {
    const QString bin = QFileInfo(QStandardPaths::findExecutable(u"mdb-tables"_s)).path();
    const QString ours = QFileInfo(QStringLiteral(KALVERA_DATA)).path();
    OldPrograms programs{bin + u"/mdb-tables"_s,
                         bin + u"/mdb-count"_s,
                         at(u"bin/mdb-export"_s),
                         ours + u"/kalvera-nulls"_s,
                         {}};
    const std::tuple<QByteArray, ProgramLimits, QString> cases[] = {
        {"exec tail -f /dev/null", {std::chrono::milliseconds(500)}, u"mdb-export pracuje příliš dlouho"_s},
        {"exec head -c 1000000000 /dev/zero | sort",
         {std::chrono::seconds(60), 64LL << 20},
         u"Program mdb-export"_s}};
    for (const auto& [script, limits, told] : cases) {
        replaceProgram(u"mdb-export"_s, script);
        programs.limits = limits;
        const QString description = descriptionOf([&] {
            importer::run(at(u"old"_s), at(u"new"_s), programs, [](const QString&, qint64, qint64) {});
        });
        EXPECT_TRUE(description.contains(told)) << description.toStdString();
        EXPECT_FALSE(QFile::exists(at(u"new"_s)));
    }
}

TEST_F(ImportFaults, TakenFolderAndFullDiskStayAsTheyAre) {
    QDir().mkpath(at(u"report"_s));
    write(u"report/import.txt"_s, "mine");
    expectRefused(u"Soubor již existuje a nebude přepsán"_s, u"report"_s);
    for (const QString& impossible : {u"old/data.ddb/new"_s, u"/proc/kalvera/new"_s})
        expectRefused(u"Složku nelze vytvořit"_s, impossible);
    for (const rlim_t bytes : {1000U, 60000U, 200000U, 600000U}) {
        expectRefused(u""_s, u"new/deep/folder"_s, [bytes] {
            const rlimit full{bytes, bytes};
            setrlimit(RLIMIT_FSIZE, &full);
        });
    }
}

TEST_F(ImportFaults, InterruptionLeavesNothing) {
    replaceProgram(
        u"mdb-export"_s,
        "case \"$*\" in *tDVD) echo $$ > \"$STARTED.part\"; mv \"$STARTED.part\" \"$STARTED\";; esac\n"
        "exec tail -f /dev/null");
    environment.insert(u"STARTED"_s, at(u"started"_s));
    for (const int request : {SIGINT, SIGTERM}) {
        QProcess program;
        program.setProcessEnvironment(environment);
        const QString before = state();
        program.start(QStringLiteral(KALVERA_DATA), {u"import"_s, at(u"old"_s), at(u"new"_s)});
        const auto isUnderWay = [this] {
            return QFile::exists(at(u"started"_s)) && QFile::exists(at(u"new/data.ddb.new"_s));
        };
        ASSERT_TRUE(QTest::qWaitFor(isUnderWay, 30000));
        const int child = content(u"started"_s).trimmed().toInt();
        kill(static_cast<pid_t>(program.processId()), request);
        ASSERT_TRUE(program.waitForFinished());
        EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(program.exitCode(), 1);
        EXPECT_TRUE(QString::fromUtf8(program.readAllStandardError()).contains(u"přerušena"_s));
        EXPECT_NE(kill(child, 0), 0);
        ASSERT_TRUE(QFile::remove(at(u"started"_s)));
        EXPECT_TRUE(state() == before);
    }
}
