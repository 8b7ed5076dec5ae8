#include <QRandomGenerator>
#include <filesystem>

#include "core/pairReplacement.h"
#include "datatool/Backup.h"
#include "datatool/Check.h"
#include "datatool/Repair.h"
#include "datatool/Restore.h"
#include "datatool/importFixture.h"
#include "platform/FolderLock.h"

using namespace Qt::StringLiterals;

namespace {

const QDateTime now(QDate(2026, 11, 25), QTime(18, 30));
const auto silent = [](const QString&) {};

class Care : public OldPair {
 protected:
    Care() { fill(u"data"_s, 5); }

    /// Films with a cover each, of which none is wrong.
    void fill(const QString& folder, int films) const {
        const QByteArray numbers =
            "WITH n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<" + QByteArray::number(films) + ") ";
        sql(at(folder + u"/data.ddb"_s),
            (numbers +
             "INSERT INTO tDVD (KatCisl, CZJm, Jazyk, Obal_ID, Nahled_ID, Obsah) SELECT i, "
             "'Film ' || i, 1, i, 0, hex(zeroblob(200)) FROM n; INSERT INTO tUser (USNAME, USREGNUM) "
             "VALUES ('Jan', '777'); INSERT INTO tPujcky (P_UID, P_DVDID) VALUES (777, 1), (1, 2)")
                .constData());
        sql(at(folder + u"/pictures.ddb"_s),
            (numbers +
             "INSERT INTO tPicture (PicDVDID, PicSkup, PicTyp, PicSize, PicDat) SELECT i, 'O', 'jpg', "
             "3000, zeroblob(3001) FROM n")
                .constData());
    }
    void renew(int films) const {
        QDir(at(u"data"_s)).removeRecursively();
        dataFiles::create(at(u"data"_s));
        fill(u"data"_s, films);
    }
    QString checked() const { return check::run(at(u"data"_s), silent).text(); }
    QString backUp(int keep = 0) const {
        return QFileInfo(backup::run(at(u"data"_s), at(u"safe"_s), keep, now, silent).folder).fileName();
    }
    /// The number of films of a pair that is whole and whose files belong together; -1 of any other.
    static qint64 films(const QString& folder) {
        const PairView pair(folder);
        if (!check::damaged(pair, silent).isEmpty()) return -1;
        const qint64 count = pair.catalogue().number("SELECT COUNT(*) FROM tDVD");
        return count == pair.pictures().number("SELECT COUNT(*) FROM tPicture") ? count : -1;
    }
    void spoilPage(const QString& path, int page) const {
        QByteArray bytes = content(path);
        write(path, bytes.replace(page * 4096, 4096, noise(4096)));
    }
};

}  // namespace

TEST_F(Care, CheckNamesEachFaultAndRepairMendsWhatNeedsNoGuess) {
    EXPECT_TRUE(checked().contains(u"Vše je v pořádku."));
    struct {
        const char* catalogue;
        const char* pictures;
        QString found;
        bool mended;
    } const cases[] = {
        {"INSERT INTO tDVD (DVDID) VALUES (9)", "", u"Film 9: záznam neobsahuje nic"_s, true},
        {"INSERT INTO tDVD (DVDID) VALUES (9); INSERT INTO tPujcky (P_UID, P_DVDID) VALUES (1, 9)", "",
         u"Film 9: záznam neobsahuje nic"_s, false},
        {"UPDATE tDVD SET KatCisl=NULL WHERE DVDID=3", "", u"Film 3 „Film 3“: nemá evidenční"_s, true},
        {"UPDATE tDVD SET Jazyk=NULL WHERE DVDID=3", "", u"Film 3 „Film 3“: nemá jazyk"_s, true},
        {"UPDATE tDVD SET Obal_ID=77 WHERE DVDID=3", "", u"Film 3 „Film 3“: obal má klíč 77, takový"_s, true},
        {"UPDATE tDVD SET Obal_ID=4 WHERE DVDID=3", "", u"obal má klíč 4, to je obrázek filmu 4"_s, true},
        {"UPDATE tDVD SET Nahled_ID=3 WHERE DVDID=3", "", u"náhled má klíč 3, to je obrázek druhého"_s,
         false},
        {"UPDATE tDVD SET Obal_ID=77 WHERE DVDID=3",
         "INSERT INTO tPicture (PicDVDID, PicSkup, PicSize, PicDat) VALUES (3, 'O', 0, zeroblob(1))",
         u"obal má klíč 77"_s, false},
        {"", "UPDATE tPicture SET PicSize=100000 WHERE PicID=3", u"má mít 100002 bajtů a má jich 3001"_s,
         false},
        {"", "UPDATE tPicture SET PicSize=NULL, PicDat=NULL WHERE PicID=3", u"obrázek 3 nemá žádná data"_s,
         false},
        {"DELETE FROM tDVD WHERE DVDID=2", "", u"Film 2: půjčeno neznámo kdy, film už v katalogu"_s, false},
        {"INSERT INTO tPujcky (P_UID, P_DVDID) VALUES (1, 2)", "", u"„Film 2“: je půjčený 2krát"_s, false},
        {"UPDATE tPujcky SET P_UID=8, PDatVraceni=PDatPujcky WHERE P_DVDID=2", "", u"pod číslem 8 (nev"_s,
         false}};
    for (const auto& [catalogueSql, picturesSql, found, mended] : cases) {
        SCOPED_TRACE(found.toStdString());
        renew(5);
        sql(catalogueSql);
        sql(pictures(), picturesSql);
        EXPECT_TRUE(checked().contains(found)) << checked().toStdString();
        const repair::Report report = repair::run(at(u"data"_s), now, silent);
        EXPECT_EQ(report.left.join(u'\n').contains(found), !mended);
        EXPECT_EQ(checked().contains(u"Vše je v pořádku."), mended) << checked().toStdString();
        EXPECT_EQ(content(u"data/repair.txt"_s), report.text().toUtf8());
    }
    EXPECT_EQ(names(u"Zálohy"_s).size(), std::size(cases));
    EXPECT_EQ(QFile::permissions(at(u"data/repair.txt"_s)), QFile::Permissions(0x6600));
}

TEST_F(Care, IndexInAnotherOrderIsFoundAndMadeAnew) {
    {
        const sqlite::Database elsewhere(catalogue(), sqlite::Database::Mode::readWrite);
        sqlite3_create_collation_v2(
            elsewhere.handle(), "CZECH", SQLITE_UTF8, nullptr,
            [](void*, int, const void* left, int, const void* right) {
                return std::strcmp(static_cast<const char*>(right), static_cast<const char*>(left));
            },
            nullptr);
        elsewhere.exec("REINDEX tDVD_CZJm");
    }
    EXPECT_TRUE(checked().contains(u"Rejstřík tDVD_CZJm souboru data.ddb"));
    EXPECT_TRUE(repair::run(at(u"data"_s), now, silent).isWhole());
    EXPECT_TRUE(checked().contains(u"Vše je v pořádku."));
}

TEST_F(Care, DamagedPageLosesOnlyItsRowsAndThePairIsPutAside) {
    renew(300);
    spoilPage(u"data/data.ddb"_s, 20);
    const QByteArray damaged = content(u"data/data.ddb"_s);
    EXPECT_TRUE(checked().contains(u"Soubor data.ddb je poškozený"));
    EXPECT_THROW(backUp(), RuntimeError);
    EXPECT_TRUE(names(u"safe"_s).isEmpty());
    EXPECT_FALSE(repair::run(at(u"data"_s), now, silent).isWhole());
    EXPECT_TRUE(content(u"data/Odloženo 2026-11-25 1830/data.ddb"_s) == damaged);
    EXPECT_TRUE(checked().contains(u"Vše je v pořádku.")) << checked().toStdString();
    EXPECT_GT(number("SELECT COUNT(*) FROM tDVD"), 280);
    EXPECT_LT(number("SELECT COUNT(*) FROM tDVD"), 300);
    EXPECT_EQ(number("SELECT seq FROM sqlite_sequence WHERE name='tDVD'"), 300);
}

TEST_F(Care, FileOfAKilledWriterIsCheckedAsACopy) {
    const sqlite::Database writer(catalogue(), sqlite::Database::Mode::readWrite);
    sqlite::Transaction transaction(writer);
    writer.exec("DELETE FROM tPujcky; UPDATE tDVD SET Jazyk=NULL");
    sqlite3_db_cacheflush(writer.handle());
    ASSERT_TRUE(QDir().mkpath(at(u"killed"_s)));
    for (const QString& name : {u"data.ddb"_s, u"data.ddb-journal"_s, u"pictures.ddb"_s})
        ASSERT_TRUE(QFile::copy(at(u"data/"_s + name), at(u"killed/"_s + name)));
    const QByteArray before = content(u"killed/data.ddb"_s);
    const check::Report report = check::run(at(u"killed"_s), silent);
    EXPECT_TRUE(report.isClean() && report.text().contains(u"Soubor data.ddb zůstal"))
        << report.text().toStdString();
    EXPECT_EQ(content(u"killed/data.ddb"_s), before);
    EXPECT_EQ(names(u"killed"_s).size(), 3);
}

TEST_F(Care, BackupIsOfOneMomentWhileOthersWriteAndOnlyTheOldestOfItsOwnGo) {
    int writes = 0;
    const backup::Report report = backup::run(at(u"data"_s), at(u"safe"_s), 0, now, [&](const QString& what) {
        if (what.contains(u"pictures") && ++writes == 1) sql("DELETE FROM tDVD WHERE DVDID>2");
    });
    EXPECT_EQ(writes, 2);
    EXPECT_EQ(films(report.folder), 5);
    ASSERT_TRUE(QDir().mkpath(at(u"safe/2020-01-01 1000"_s)));
    write(u"safe/2020-01-01 1000/mine.txt"_s, "");
    EXPECT_EQ(backUp(), u"2026-11-25 1830 (2)"_s);
    EXPECT_EQ(backUp(2), u"2026-11-25 1830 (3)"_s);
    EXPECT_EQ(backUp(2), u"2026-11-25 1830 (4)"_s);
    EXPECT_EQ(names(u"safe"_s),
              QStringList({u"2020-01-01 1000"_s, u"2026-11-25 1830 (3)"_s, u"2026-11-25 1830 (4)"_s}));
    EXPECT_EQ(QFile::permissions(at(u"safe/2026-11-25 1830 (3)/pictures.ddb"_s)), QFile::Permissions(0x6600));
}

TEST_F(Care, RestoreChecksTheBackupAndPutsTheFormerPairAside) {
    const QString saved = at(u"safe/"_s + backUp());
    renew(3);
    {
        const FolderLock program(at(u"data"_s));
        for (const auto& work :
             {std::function<void()>([&] { restore::run(saved, at(u"data"_s), now, silent); }),
              std::function<void()>([&] { repair::run(at(u"data"_s), now, silent); })})
            EXPECT_TRUE(descriptionOf(work).contains(u"pracuje program"));
    }
    {
        const sqlite::Database writer = dataFiles::openCatalogue(at(u"data"_s));
        const sqlite::Transaction writing(writer);
        EXPECT_TRUE(descriptionOf([&] {
                        restore::run(saved, at(u"data"_s), now, silent);
                    }).contains(u"používá jiný program"));
    }
    EXPECT_EQ(restore::run(saved, at(u"data"_s), now, silent).aside, at(u"data/Odloženo 2026-11-25 1830"_s));
    EXPECT_EQ(films(at(u"data"_s)), 5);
    EXPECT_EQ(films(at(u"data/Odloženo 2026-11-25 1830"_s)), 3);
    spoilPage(saved + u"/pictures.ddb"_s, 2);
    EXPECT_TRUE(descriptionOf([&] {
                    restore::run(saved, at(u"data"_s), now, silent);
                }).contains(u"pictures.ddb je poškozený"));
    EXPECT_EQ(films(at(u"data"_s)), 5);
    EXPECT_EQ(names(u"data"_s),
              QStringList({u"data.ddb"_s, u"Odloženo 2026-11-25 1830"_s, u"pictures.ddb"_s}));
}

TEST_F(Care, ReplacementKilledBetweenItsRenamingsIsSeenWholeAndFinished) {
    const QString saved = backUp();
    renew(3);
    ASSERT_TRUE(QDir().rename(at(u"safe/"_s + saved), pairReplacement::makeRoom(at(u"data"_s))));
    ASSERT_TRUE(QFile::remove(catalogue()) &&
                QFile::rename(at(u"data/.nova-dvojice/data.ddb"_s), catalogue()));
    EXPECT_EQ(films(at(u"data"_s)), 5);
    // Another one was killed before its first renaming.
    ASSERT_TRUE(QDir().mkpath(at(u"data/Odloženo"_s)));
    std::filesystem::create_hard_link(catalogue().toStdString(),
                                      at(u"data/Odloženo/data.ddb"_s).toStdString());
    pairReplacement::finish(at(u"data"_s));
    EXPECT_EQ(names(u"data"_s), QStringList({u"data.ddb"_s, u"pictures.ddb"_s}));
    EXPECT_EQ(films(at(u"data"_s)), 5);
}

TEST_F(Care, KillsLeaveAWholePair) {
    const QString saved = at(u"safe/"_s + backUp());
    for (int kill = 0; kill < 12; ++kill) {
        renew(200);
        if (kill % 2 == 1) spoilPage(u"data/data.ddb"_s, 20);
        const QStringList commands[] = {{u"repair"_s, at(u"data"_s)},
                                        {u"backup"_s, at(u"data"_s), at(u"more"_s)},
                                        {u"restore"_s, saved, at(u"data"_s)}};
        QProcess program;
        program.start(QStringLiteral(KALVERA_DATA), commands[kill % 3]);
        ASSERT_TRUE(program.waitForStarted());
        program.waitForFinished(QRandomGenerator::global()->bounded(60));
        program.kill();
        program.waitForFinished();
        SCOPED_TRACE(commands[kill % 3].join(u' ').toStdString());
        for (const QString& name : QDir(at(u"more"_s)).entryList(QDir::Dirs | QDir::NoDotAndDotDot))
            EXPECT_EQ(films(at(u"more/"_s + name)), 200);
        // A damaged pair stays as it was until the new one is complete.
        const QStringList lines = check::damaged(PairView(at(u"data"_s)), silent);
        EXPECT_TRUE(lines.isEmpty() || (kill % 2 == 1 && names(u"data"_s).contains(u"pictures.ddb"_s)));
        if (kill % 2 == 1) continue;
        const qint64 count = films(at(u"data"_s));
        EXPECT_TRUE(count == 200 || count == 5) << count;
    }
}

TEST_F(Care, ProgramTellsByItsExitCodeWhatItFound) {
    EXPECT_EQ(run({u"check"_s, at(u"data"_s)}).exitCode, 0);
    sql("UPDATE tDVD SET Nahled_ID=99");
    EXPECT_EQ(run({u"check"_s, at(u"data"_s)}).exitCode, 3);
    EXPECT_EQ(run({u"repair"_s, at(u"data"_s)}).exitCode, 3);
    const Result gone = run({u"check"_s, at(u"nowhere"_s)});
    EXPECT_TRUE(gone.exitCode == 1 && gone.errors.startsWith(u"Chyba: Soubor neexistuje"_s) &&
                gone.errors.contains(u"data.ddb"));
    for (const QStringList& wrong :
         {QStringList{u"backup"_s, u"a"_s, u"b"_s, u"--keep"_s, u"0"_s}, {u"restore"_s}})
        EXPECT_EQ(run(wrong).exitCode, 2);
}
