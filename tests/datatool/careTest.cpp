#include <QRandomGenerator>
#include <filesystem>

#include "core/mFunction.h"
#include "core/pairReplacement.h"
#include "datatool/Backup.h"
#include "datatool/Check.h"
#include "datatool/Repair.h"
#include "datatool/Restore.h"
#include "datatool/careCommands.h"
#include "datatool/careFixture.h"
#include "platform/FolderLock.h"
#include "platform/restrictions.h"

using namespace Qt::StringLiterals;

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
        {"UPDATE tDVD SET KatCisl=NULL WHERE DVDID=3", "", u"Film 3 „Film 3“: nemá katalogové"_s, true},
        {"UPDATE tDVD SET Jazyk=NULL WHERE DVDID=3", "", u"Film 3 „Film 3“: nemá jazyk"_s, true},
        {"UPDATE tDVD SET Obal_ID=77 WHERE DVDID=3", "", u"Film 3 „Film 3“: obal má klíč 77, takový"_s, true},
        {"UPDATE tDVD SET Obal_ID=4 WHERE DVDID=3", "", u"obal má klíč 4, to je obrázek filmu 4"_s, true},
        {"UPDATE tDVD SET Nahled_ID=3 WHERE DVDID=3", "", u"náhled má klíč 3, to je obal"_s, false},
        {"UPDATE tDVD SET Obal_ID=77 WHERE DVDID=3",
         "INSERT INTO tPicture (PicDVDID, PicSkup, PicSize, PicDat) VALUES (3, 'O', 0, zeroblob(1))",
         u"obal má klíč 77"_s, false},
        {"", "UPDATE tPicture SET PicSize=100000 WHERE PicID=3", u"má mít délku 100002 B a má 3001"_s, false},
        {"", "UPDATE tPicture SET PicSize=NULL, PicDat=NULL WHERE PicID=3", u"obrázek 3 nemá žádná data"_s,
         false},
        {"", "UPDATE tPicture SET PicSkup='?' WHERE PicID=3", u"obal má klíč 3, to je obrázek neznámého"_s,
         false},
        {"DELETE FROM tDVD WHERE DVDID=2", "", u"Film 2: půjčeno 1. 1. 2026, film už v katalogu"_s, false},
        {"INSERT INTO tPujcky (P_UID, PDatPujcky) VALUES (1, '2020-01-02 10:00:00')", "",
         u"Film bez čísla: půjčeno 2. 1. 2020, film už v katalogu není"_s, false},
        {"INSERT INTO tPujcky (P_DVDID, PDatPujcky) VALUES (3, '2020-11-30')", "",
         u"Film 3 „Film 3“: půjčeno 30. 11. 2020 bez čísla zákazníka (nevráceno)"_s, false},
        {"INSERT INTO tPujcky (P_UID, P_DVDID) VALUES (1, 2)", "", u"„Film 2“: je půjčený 2krát"_s, false},
        {"UPDATE tPujcky SET P_UID=8 WHERE P_DVDID=2", "", u"pod číslem 8 (nev"_s, false},
        {"UPDATE tDVD SET Jazyk='abc' WHERE DVDID=3", "", u"Film 3 „Film 3“: jazyk „abc“ není číslo"_s, true},
        {"UPDATE tDVD SET Jazyk=9999999999 WHERE DVDID=3", "", u"jazyk „9999999999“ není číslo"_s, true},
        {"INSERT INTO tDVD (DVDID, KatCisl, Jazyk) VALUES (9000000000, 'x', 1)", "",
         u"Film 9000000000: tak velké číslo"_s, false},
        {"UPDATE tDVD SET DiskPocet=1.5 WHERE DVDID=3", "", u"DiskPocet je „1.5“, to není celé"_s, false},
        {"UPDATE tDVD SET Oddel_ID=99 WHERE DVDID=3", "", u"oddělení 99 v číselníku není"_s, false},
        {"UPDATE tDVD SET Obsah='a' || char(0) WHERE DVDID=3", "", u"Obsah obsahuje znaky"_s, false},
        {"UPDATE tPujcky SET PDatPujcky=NULL WHERE P_DVDID=2", "", u"půjčeno neznámo kdy, seznam za ní"_s,
         false},
        {"UPDATE tUser SET USNAME=NULL", "", u"zákazník nemá jméno, seznam za ní"_s, false},
        {"INSERT INTO tUser (USREGNUM) VALUES (' 777')", "", u"Zákazníci 1, 2: mají stejný osobní kód"_s,
         false},
        {"", "UPDATE tPicture SET PicTyp='tiffer' WHERE PicID=3", u"obrázek 3 má typ „tiffer“"_s, false},
        {"UPDATE sqlite_sequence SET seq=1 WHERE name='tDVD'; DELETE FROM tDVD WHERE DVDID=5", "",
         u"Tabulka tDVD: nový záznam by dostal klíč"_s, true},
        {"UPDATE sqlite_sequence SET seq=4 WHERE name='tDVD'", "", u"tDVD: klíč záznamu 5 je vyšší"_s, true},
        {"UPDATE sqlite_sequence SET seq=9223372036854775807 WHERE name='tUser'", "",
         u"Tabulka tUser: vydala všechny"_s, true},
        {"DROP INDEX tPujcky_open; CREATE INDEX own ON tDVD (length(CZJm))", "",
         u"Rejstřík tPujcky_open souboru data.ddb chybí."_s, true},
        {"DROP TABLE tZanr", "", u"V souboru data.ddb chybí: tabulka tZanr."_s, true}};
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
    EXPECT_EQ(names(u"Zálohy"_s).size(), std::size(cases) - 1);  // a pair made anew has been put aside
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
    write(u"data/leftover"_s, "");
    ASSERT_TRUE(QDir().mkpath(at(u"data/.nova-dvojice"_s)) &&
                QFile::rename(at(u"data/leftover"_s), at(u"data/.nova-dvojice/data.ddb"_s)));
    EXPECT_TRUE(repair::run(at(u"data"_s), now, silent).isWhole());
    EXPECT_TRUE(checked().contains(u"Vše je v pořádku."));
    EXPECT_EQ(names(u"data"_s), QStringList({u"data.ddb"_s, u"pictures.ddb"_s, u"repair.txt"_s}));
}

TEST_F(Care, DamagedPageLosesOnlyItsRowsAndThePairIsPutAside) {
    renew(300);
    spoilPage(u"data/data.ddb"_s, 20);
    const QByteArray damaged = content(u"data/data.ddb"_s);
    EXPECT_TRUE(checked().contains(u"Soubor data.ddb je poškozený"));
    EXPECT_TRUE(descriptionOf([&] { backUp(); }).contains(u"Zkuste kalvera-data repair. Složka: "));
    EXPECT_FALSE(QFile::exists(at(u"safe"_s)));
    // What another program wrote meanwhile would be put aside unseen.
    QStringList refused;
    const WaitedFor waited({pictures()});
    const auto writeMeanwhile = [&](const QString& title, qint64, qint64) {
        if (!title.startsWith(u"Záchrana") || refused.contains(title)) return;
        EXPECT_NE(failureOf([&] { sql(at(u"data/pictures.ddb"_s), "UPDATE tPicture SET PicTyp='png'"); }), 0);
        refused += title;
    };
    EXPECT_FALSE(repair::run(at(u"data"_s), now, writeMeanwhile).isWhole());
    EXPECT_FALSE(refused.isEmpty());
    EXPECT_TRUE(content(u"data/Odloženo 2026-11-25 1830/data.ddb"_s) == damaged);
    EXPECT_TRUE(checked().contains(u"Vše je v pořádku.")) << checked().toStdString();
    EXPECT_GT(number("SELECT COUNT(*) FROM tDVD"), 280);
    EXPECT_LT(number("SELECT COUNT(*) FROM tDVD"), 300);
    EXPECT_EQ(number("SELECT seq FROM sqlite_sequence WHERE name='tDVD'"), 300);
}

TEST_F(Care, FileThatCannotBeOpenedIsMadeAnewAndTheOtherStays) {
    const QByteArray sound[] = {content(u"data/data.ddb"_s), content(u"data/pictures.ddb"_s)};
    const QString files[] = {u"data.ddb"_s, u"pictures.ddb"_s};
    // The next key of the lost file's rows, which nothing refers to.
    const char* const keys[] = {"SELECT seq FROM sqlite_sequence WHERE name='tDVD'",
                                "SELECT seq FROM sqlite_sequence WHERE name='tPicture'"};
    const auto repaired = [this] { return repair::run(at(u"data"_s), now, silent).text(); };
    for (const size_t lost : {0U, 1U}) {
        for (const QByteArray& spoilt : {QByteArray(), QByteArray("SQLite format 3"), noise(9000), "-"_ba}) {
            QDir(at(u"data"_s)).removeRecursively();
            ASSERT_TRUE(QDir().mkpath(at(u"data"_s)));
            write(u"data/"_s + files[1 - lost], sound[1 - lost]);
            if (spoilt != "-") write(u"data/"_s + files[lost], spoilt);
            const QString told = repaired();
            EXPECT_TRUE(told.contains(u"Ze souboru %1 nebylo co zachránit"_s.arg(files[lost])) &&
                        told.contains(u"kalvera-data restore"))
                << told.toStdString();
            EXPECT_EQ(number("SELECT COUNT(*) FROM tDVD"), lost == 0 ? 0 : 5);
            EXPECT_EQ(number("SELECT COUNT(*) FROM tOddeleni"), 5);
            EXPECT_EQ(text(pictures(), "SELECT COUNT(*) FROM tPicture"), lost == 0 ? u"5"_s : u"0"_s);
            EXPECT_EQ(text(at(u"data/"_s + files[lost]), keys[lost]), u"5"_s);
            EXPECT_EQ(checked().count(u"takový obrázek není"), lost == 0 ? 0 : 5);
            const QString aside = u"data/Odloženo 2026-11-25 1830/"_s;
            EXPECT_TRUE(content(aside + files[1 - lost]) == sound[1 - lost]);
            EXPECT_TRUE(content(aside + files[lost]) == (spoilt == "-" ? "no file" : spoilt));
        }
    }
    // A damaged header alone loses nothing.
    for (const size_t spoilt : {0U, 1U}) {
        write(u"data/"_s + files[1 - spoilt], sound[1 - spoilt]);
        write(u"data/"_s + files[spoilt], noise(100) + sound[spoilt].sliced(100));
        EXPECT_TRUE(repair::run(at(u"data"_s), now, silent).isWhole());
        EXPECT_EQ(films(at(u"data"_s)), 5);
        EXPECT_EQ(number("SELECT COUNT(*) FROM tPujcky"), 2);
    }
    // Neither can be read; one is of a newer program, one computes when it is read.
    write(u"data/data.ddb"_s, sound[0]);
    sql("ALTER TABLE tZanr ADD COLUMN slow AS (zeroblob(900000000))");
    const std::pair<QByteArray, QString> refused[] = {
        {content(u"data/data.ddb"_s), u"není databází programu"_s},
        {"", u"Katalog vrátí ze zálohy příkaz kalvera-data restore."_s},
        {QByteArray("\0\1\0\0Standard Jet DB", 19), u"převede ho příkaz kalvera-data import"_s},
        {QByteArray(sound[0]).replace(68, 4, "KvDE"), u"novější formát"_s}};
    for (const auto& [bytes, told] : refused) {
        QFile::remove(pictures());
        write(u"data/data.ddb"_s, bytes);
        EXPECT_TRUE(descriptionOf([&] { repaired(); }).contains(told));
        EXPECT_TRUE(content(u"data/data.ddb"_s) == bytes && !QFile::exists(pictures()));
    }
}

TEST_F(Care, LongWorkTellsItsProgressAndCanBeEnded) {
    renew(3000);
    QStringList moved;
    qint64 last = 0;
    const auto note = [&](const QString& title, qint64 done, qint64 all) {
        EXPECT_LE(done, all) << title.toStdString();
        EXPECT_TRUE(moved.isEmpty() || moved.last() != title || done >= last) << title.toStdString();
        last = done;
        if (done > 0 && (moved.isEmpty() || moved.last() != title)) moved += title;
    };
    check::run(at(u"data"_s), note);
    EXPECT_EQ(moved, QStringList({u"Kontrola souboru pictures.ddb"_s, u"Rejstříky souboru data.ddb"_s,
                                  u"Rejstříky souboru pictures.ddb"_s, u"Kontrola obsahu"_s}));
    moved.clear();
    backup::run(at(u"data"_s), at(u"safe"_s), 0, now, note);
    EXPECT_EQ(moved, QStringList({u"Kopírování souboru pictures.ddb"_s, u"Kontrola souboru pictures.ddb"_s}));
    const auto end = [](const QString& title, qint64 done, qint64 /*all*/) {
        if (title.startsWith(u"Kontrola souboru") && done > 0) throw RuntimeError(errors::itemNotFound);
    };
    EXPECT_EQ(failureOf([&] { check::run(at(u"data"_s), end); }), errors::itemNotFound);
    spoilPage(u"data/data.ddb"_s, 20);
    moved.clear();
    repair::run(at(u"data"_s), now, note);
    EXPECT_TRUE(moved.contains(u"Záchrana tabulky tDVD"_s) &&
                moved.contains(u"Kopírování souboru pictures.ddb"_s))
        << moved.join(u' ').toStdString();
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
    const backup::Report report = backup::run(
        at(u"data"_s), at(u"safe"_s), 0, now, [&](const QString& title, qint64 /*done*/, qint64 /*all*/) {
            if (title == u"Kopírování souboru pictures.ddb" && writes++ == 0)
                sql("DELETE FROM tDVD WHERE DVDID>2");
        });
    EXPECT_GT(writes, 0);
    EXPECT_EQ(films(report.folder), 5);
    ASSERT_TRUE(QDir().mkpath(at(u"safe/2020-01-01 1000"_s)));
    write(u"safe/2020-01-01 1000/mine.txt"_s, "");
    EXPECT_EQ(backUp(), u"2026-11-25 1830 (2)"_s);
    EXPECT_EQ(backUp(2), u"2026-11-25 1830 (3)"_s);
    EXPECT_EQ(backUp(2), u"2026-11-25 1830 (4)"_s);
    EXPECT_EQ(names(u"safe"_s),
              QStringList({u"2020-01-01 1000"_s, u"2026-11-25 1830 (3)"_s, u"2026-11-25 1830 (4)"_s}));
    EXPECT_EQ(QFile::permissions(at(u"safe/2026-11-25 1830 (3)/pictures.ddb"_s)), QFile::Permissions(0x6600));
    // The picture of a film added meanwhile becomes nobody else's.
    const backup::Report grown = backup::run(
        at(u"data"_s), at(u"safe"_s), 0, now, [&](const QString& title, qint64 /*done*/, qint64 /*all*/) {
            if (title == u"Kopírování souboru pictures.ddb" && writes++ > 0) {
                sql(pictures(),
                    "INSERT INTO tPicture SELECT 50, 50, 'O', 'jpg', 0, x'00' WHERE NOT EXISTS "
                    "(SELECT * FROM tPicture WHERE PicID=50)");
            }
        });
    EXPECT_EQ(text(grown.folder + u"/pictures.ddb"_s, "SELECT max(PicDVDID) FROM tPicture"), u"50"_s);
    EXPECT_FALSE(check::run(grown.folder, silent).text().contains(u"Tabulka tDVD"));
}

TEST_F(Care, OlderBackupThatCannotBeRemovedHidesNotTheNewOne) {
    for (const QString& name : {u"safe/2020-01-01 1000"_s, u"safe/2020-01-01 1001"_s}) {
        ASSERT_TRUE(QDir().mkpath(at(name)));
        for (const QString& file : {u"/data.ddb"_s, u"/pictures.ddb"_s})
            write(name + file, "");
    }
    makeReadOnly();
    for (const QString& open : {u"safe"_s, u"safe/2020-01-01 1001"_s})
        QFile::setPermissions(at(open), QFile::Permissions(0x7777));
    QString output;
    QTextStream told(&output);
    CommandCall call{{at(u"data"_s), at(u"safe"_s)}, {{u"--keep"_s, u"1"_s}}, told, told};
    {
        const OrdinaryUser user;
        EXPECT_EQ(backUpPair(call), exitDifference);
    }
    const QStringList left = names(u"safe"_s);
    ASSERT_TRUE(left.size() == 2 && left.first() == u"2020-01-01 1000") << left.join(u' ').toStdString();
    EXPECT_EQ(output,
              u"Záloha je hotová a zkontrolovaná: %1\nOdstraněna starší záloha 2020-01-01 1001\n"
              "POZOR, starší zálohu nelze odstranit: 2020-01-01 1000\n"_s.arg(at(u"safe/"_s + left.last())));
    QFile::setPermissions(at(u"safe/"_s + left.first()), QFile::Permissions(0x7777));
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
    const WaitedFor waited({catalogue(), pictures()});
    for (const char* writing : {"BEGIN IMMEDIATE", "BEGIN EXCLUSIVE"}) {
        for (const auto open : {&dataFiles::openCatalogue, &dataFiles::openPictures}) {
            const sqlite::Database writer = open(at(u"data"_s));
            writer.exec(writing);
            EXPECT_TRUE(descriptionOf([&] {
                            restore::run(saved, at(u"data"_s), now, silent);
                        }).contains(u"používá jiný program"))
                << writing;
        }
    }
    EXPECT_EQ(films(at(u"data"_s)), 3);
    // A link leads elsewhere from the folder where it is put aside.
    ASSERT_TRUE(QFile::rename(catalogue(), at(u"data/elsewhere.ddb"_s)));
    ASSERT_TRUE(QFile::link(u"elsewhere.ddb"_s, catalogue()));
    EXPECT_EQ(restore::run(saved, at(u"data"_s), now, silent).aside, at(u"data/Odloženo 2026-11-25 1830"_s));
    EXPECT_EQ(films(at(u"data"_s)), 5);
    EXPECT_EQ(films(at(u"data/Odloženo 2026-11-25 1830"_s)), 3);
    EXPECT_TRUE(descriptionOf([&] {
                    restore::run(at(u"safe/../data"_s), at(u"data"_s), now, silent);
                }).contains(u"tatáž složka"));
    EXPECT_TRUE(descriptionOf([&] {
                    backup::run(at(u"data"_s), at(u"safe/../data"_s), 0, now, silent);
                }).contains(u"přímo ve složce katalogu"));
    EXPECT_NE(failureOf([&] { restore::run(at(u"none"_s), at(u"new/data"_s), now, silent); }), 0);
    EXPECT_FALSE(QFile::exists(at(u"new"_s)));
    spoilPage(saved + u"/pictures.ddb"_s, 2);
    EXPECT_TRUE(descriptionOf([&] {
                    restore::run(saved, at(u"data"_s), now, silent);
                }).contains(u"pictures.ddb je poškozený"));
    EXPECT_EQ(films(at(u"data"_s)), 5);
    EXPECT_EQ(names(u"data"_s), QStringList({u"data.ddb"_s, u"elsewhere.ddb"_s, u"Odloženo 2026-11-25 1830"_s,
                                             u"pictures.ddb"_s}));
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
    // These are the user's own.
    std::filesystem::create_directory_symlink(".", at(u"data/odkaz"_s).toStdString());
    ASSERT_TRUE(QDir().mkpath(at(u"data/vlastni"_s)));
    std::filesystem::create_hard_link(catalogue().toStdString(),
                                      at(u"data/vlastni/data.ddb"_s).toStdString());
    write(u"data/vlastni/pictures.ddb"_s, "another");
    pairReplacement::finish(at(u"data"_s));
    EXPECT_EQ(names(u"data"_s), QStringList({u"data.ddb"_s, u"odkaz"_s, u"pictures.ddb"_s, u"vlastni"_s}));
    EXPECT_EQ(names(u"data/vlastni"_s), QStringList({u"data.ddb"_s, u"pictures.ddb"_s}));
    ASSERT_TRUE(QDir().mkpath(at(u"linked/real"_s)));
    write(u"linked/real/data.ddb"_s, "films");
    ASSERT_TRUE(QFile::link(u"real/data.ddb"_s, at(u"linked/data.ddb"_s)));
    pairReplacement::finish(at(u"linked"_s));
    EXPECT_EQ(content(at(u"linked/data.ddb"_s)), "films");
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

TEST_F(Care, DesktopHearsFromTheFirstProgramThatCanTell) {
    ASSERT_TRUE(QDir().mkpath(at(u"bin"_s)));
    environment.insert(u"PATH"_s, at(u"bin:"_s) + qEnvironmentVariable("PATH"));
    environment.insert(u"LC_ALL"_s, u"C"_s);
    const auto install = [this](const QString& name, const QByteArray& script) {
        write(u"bin/"_s + name, "#!/bin/sh\n" + script);
        QFile::setPermissions(at(u"bin/"_s + name), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    };
    const std::pair<QString, QString> cases[] = {{u"notify-send"_s, u"&lt;b&gt; &amp; c"_s},
                                                 {u"kdialog"_s, u"<b> & c"_s},
                                                 {u"zenity"_s, u"<b> & c"_s},
                                                 {u"xmessage"_s, u"<b> & c"_s}};
    for (const auto& [name, folder] : cases) {
        SCOPED_TRACE(name.toStdString());
        install(name, "printf '%s|' \"$@\" $LC_ALL >" + at(u"told"_s).toUtf8());
        EXPECT_EQ(run({u"backup"_s, at(u"data"_s), at(u"<b> & c"_s), u"--desktop"_s}).exitCode, 0);
        QString told = QString::fromUtf8(content(u"told"_s));
        EXPECT_TRUE(told.contains(u"Záloha je hotová"_s) && told.contains(folder)) << told.toStdString();
        EXPECT_EQ(told.contains(u"|*international: true|"_s) && told.endsWith(u"|C.UTF-8|"_s),
                  name == u"xmessage"_s);
        EXPECT_EQ(run({u"backup"_s, at(u"nowhere"_s), at(u"c"_s), u"--desktop"_s}).exitCode, 1);
        told = QString::fromUtf8(content(u"told"_s));
        EXPECT_TRUE(told.contains(u"Záloha nevznikla. "_s)) << told.toStdString();
        install(name, "exit 1");
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
    EXPECT_EQ(failureOf([] { dataFiles::ownFolder(); }), 0);
    UlozNastaveni(u"ActDB"_s, catalogue());
    EXPECT_TRUE(descriptionOf([] { dataFiles::ownFolder(); }).contains(catalogue()));
}
