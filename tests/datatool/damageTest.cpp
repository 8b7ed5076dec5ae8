#include <QtEndian>

#include "core/pairReplacement.h"
#include "datatool/Repair.h"
#include "datatool/Restore.h"
#include "datatool/careFixture.h"
#include "platform/files.h"
#include "platform/restrictions.h"

using namespace Qt::StringLiterals;

namespace {

class Damage : public Care {
 protected:
    repair::Report repaired() const { return repair::run(at(u"data"_s), now, silent); }
    void restored(const QString& backup) const { restore::run(at(backup), at(u"data"_s), now, silent); }
    /// Leaves a sixth film in a log, as a killed program with another way of writing does.
    void leaveLog() const {
        renew(5);
        sql(pictures(),
            "INSERT INTO tPicture (PicDVDID, PicSkup, PicTyp, PicSize, PicDat) VALUES (6, 'O', 'jpg', 0, "
            "x'00')");
        ASSERT_TRUE(QDir().mkpath(at(u"log"_s)));
        const sqlite::Database writer(catalogue(), sqlite::Database::Mode::readWrite);
        writer.exec(
            "PRAGMA journal_mode=WAL; INSERT INTO tDVD (CZJm, KatCisl, Jazyk, Obal_ID, Nahled_ID) "
            "VALUES ('Film 6', '6', 1, 6, 0)");
        for (const QString& name : {u"data.ddb"_s, u"data.ddb-wal"_s})
            files::copy(at(u"data/"_s + name), at(u"log/"_s + name));
    }
    void putLog() const {
        for (const QString& name : {u"data.ddb"_s, u"data.ddb-wal"_s})
            files::copy(at(u"log/"_s + name), at(u"data/"_s + name));
    }
    QByteArray spoilt(const QByteArray& file, qsizetype at, const QByteArray& bytes) const {
        return QByteArray(file).replace(at, bytes.size(), bytes);
    }
};

}  // namespace

TEST_F(Damage, RepairSavesWhatIsLeftAndSaysWhatIsNot) {
    renew(300);
    // A film, a customer and a department that are gone, but not what refers to them.
    sql("INSERT INTO tPujcky (P_UID, P_DVDID) VALUES (40, 350); UPDATE tDVD SET Oddel_ID=33, Nahled_ID=360 "
        "WHERE DVDID=1");
    const QByteArray sound = content(catalogue());
    const QByteArray soundPictures = content(pictures());
    const qsizetype lastFilm = sound.indexOf("300Film 300") / 4096 * 4096;
    const QByteArray zeros(4096, '\0');
    const QString all = u"řádků 300, nepřečteno nejvýš 0."_s;
    const QString unknown = u"kolik jich chybí, nelze zjistit"_s;
    const qsizetype key = sound.indexOf("100Film 100") - 23;  // in front of the record's header
    ASSERT_EQ(sound[key], 100);
    struct {
        const char* name;
        QByteArray catalogue;
        int least;
        int most;
        int customer;  // highest key
        QString told;
    } const cases[] = {
        {"half", sound.first(sound.size() / 8192 * 4096), 90, 299, 1, u"Tabulka tDVD: zachráněno"_s},
        {"end", sound.first(sound.size() - 4096), 290, 300, 1, u"Tabulka tDVD: zachráněno"_s},
        {"cut page", sound.chopped(2000), 290, 300, 1, u"Tabulka tDVD: zachráněno"_s},
        {"one page", sound.first(4096), 0, 0, 0, u"nebylo co zachránit"_s},
        {"schema", spoilt(sound, 100, noise(3996)), 300, 300, 1, all},
        {"page size", spoilt(sound, 16, "\x02"), 300, 300, 1, all},
        {"verifier", spoilt(sound, 63, "\x08"), 300, 300, 1, all},
        {"given keys", spoilt(sound, 8192, zeros), 300, 300, 40, all},
        {"root", spoilt(sound, 4096, noise(4096)), 300, 300, 1, unknown},
        {"key", spoilt(sound, key, "\xFF"), 298, 300, 1, unknown},
        {"name", QByteArray(sound).replace("Obsah TEXT", "Obsaz TEXT").replace("USID I", "USIX I"), 300, 300,
         1, all},
        {"no tables", spoilt(sound, 104, QByteArray(1, '\0')), 300, 300, 1, all},
        {"last page", spoilt(sound, lastFilm, zeros), 280, 299, 1, u"tDVD: zachráněno řádků 29"_s},
        {"both", spoilt(spoilt(sound, 8192, zeros), lastFilm, zeros), 280, 299, 40, unknown}};
    for (const auto& [name, bytes, least, most, customer, told] : cases) {
        SCOPED_TRACE(name);
        write(u"data/data.ddb"_s, bytes);
        write(u"data/pictures.ddb"_s, soundPictures);
        EXPECT_TRUE(checked().contains(u"zachrání, co se dá přečíst, kalvera-data repair"));
        EXPECT_TRUE(descriptionOf([&] { backUp(); }).contains(u"kalvera-data repair"));
        const repair::Report report = repaired();
        EXPECT_TRUE(report.text().contains(told)) << report.text().toStdString();
        const qint64 films = number("SELECT COUNT(*) FROM tDVD");
        EXPECT_TRUE(films >= least && films <= most) << films;
        EXPECT_EQ(report.lostRows, told != all);
        EXPECT_EQ(number("SELECT COUNT(*) FROM tDVD WHERE length(Obsah)=400"), films);
        EXPECT_FALSE(checked().contains(u"je poškozený"));
        EXPECT_EQ(text(pictures(), "SELECT COUNT(*) FROM tPicture"), u"300"_s);
        const QString keys = text(
            "SELECT group_concat(name || seq) FROM (SELECT * FROM sqlite_sequence "
            "WHERE name IN ('tDVD', 'tOddeleni', 'tUser') ORDER BY name)");
        EXPECT_EQ(keys,
                  films == 0 ? u"tDVD300,tOddeleni5"_s : u"tDVD350,tOddeleni33,tUser%1"_s.arg(customer));
        EXPECT_EQ(text(pictures(), "SELECT seq FROM sqlite_sequence"), films == 0 ? u"300"_s : u"360"_s);
    }
    // The pictures, and both.
    write(u"data/data.ddb"_s, sound.first(sound.size() - 4096));
    write(u"data/pictures.ddb"_s, soundPictures.first(soundPictures.size() / 2));
    EXPECT_TRUE(repaired().lostRows);
    EXPECT_GT(text(pictures(), "SELECT COUNT(*) FROM tPicture").toInt(), 100);
    EXPECT_GT(number("SELECT COUNT(*) FROM tDVD"), 280);
    // Deleted films stay in free pages.
    renew(300);
    sql("DELETE FROM tDVD WHERE DVDID>100");
    spoilPage(u"data/data.ddb"_s, 1);
    repaired();
    EXPECT_EQ(number("SELECT COUNT(*) FROM tDVD"), 100);
}

TEST_F(Damage, IndexThatCannotBeReadCostsNoRow) {
    renew(300);
    const qint64 page = 4096 * (number("SELECT rootpage FROM sqlite_schema WHERE name='tDVD_KatCisl'") - 1);
    const QByteArray sound = content(catalogue());
    ASSERT_EQ(sound[page], 10);  // a leaf
    const qsizetype row = page + qFromBigEndian<quint16>(sound.constData() + page + 8);
    write(u"data/data.ddb"_s, spoilt(sound, row + 1, "\x7F"));  // the length of the record's header
    EXPECT_TRUE(checked().contains(u"Rejstřík tDVD_KatCisl souboru data.ddb"));
    EXPECT_TRUE(repaired().isWhole());
    EXPECT_EQ(films(at(u"data"_s)), 300);
    EXPECT_TRUE(checked().contains(u"Vše je v pořádku."));
}

TEST_F(Damage, LogOfAnotherProgramIsReadAndGoesAsideWithItsFile) {
    const QString saved = u"safe/"_s + backUp();
    leaveLog();
    const auto leave = [this] {
        QDir(at(u"data/Odloženo 2026-11-25 1830"_s)).removeRecursively();
        putLog();
    };
    leave();
    EXPECT_TRUE(checked().contains(u"Soubor data.ddb nechal jiný program v režimu WAL"));
    EXPECT_EQ(films(at(u"safe/"_s + backUp())), 6);
    EXPECT_TRUE(content(catalogue()) == content(u"log/data.ddb"_s));
    EXPECT_EQ(repaired().left, QStringList());
    EXPECT_EQ(films(at(u"data"_s)), 6);
    EXPECT_TRUE(checked().contains(u"Vše je v pořádku.")) << checked().toStdString();
    leave();
    write(u"data/data.ddb"_s, noise(100) + content(catalogue()).sliced(100));
    EXPECT_TRUE(repaired().isWhole());
    EXPECT_EQ(films(at(u"data"_s)), 6);
    leave();
    restored(saved);
    EXPECT_EQ(films(at(u"data"_s)), 5);
    EXPECT_EQ(
        PairView(at(u"data/Odloženo 2026-11-25 1830"_s)).catalogue().number("SELECT COUNT(*) FROM tDVD"), 6);
    EXPECT_EQ(names(u"data"_s), QStringList({u"data.ddb"_s, u"Odloženo 2026-11-25 1830"_s, u"pictures.ddb"_s,
                                             u"repair.txt"_s}));
    // Killed when the new catalogue was in place and the log of the former one not yet away.
    const QString room = pairReplacement::makeRoom(at(u"data"_s));
    ASSERT_TRUE(QDir().mkpath(room) && QFile::rename(pictures(), room + u"/pictures.ddb"_s));
    files::copy(at(u"log/data.ddb-wal"_s), at(u"data/data.ddb-wal"_s));
    EXPECT_EQ(films(at(u"data"_s)), 5);
    pairReplacement::finish(at(u"data"_s));
    EXPECT_EQ(films(at(u"data"_s)), 5);
    EXPECT_FALSE(QFile::exists(at(u"data/data.ddb-wal"_s)));
}

TEST_F(Damage, FailedRepairAndRestoreLeaveNothing) {
    const QString saved = u"safe/"_s + backUp();
    const WaitedFor waited({catalogue(), pictures()});
    const QStringList before = names(u"data"_s);
    for (const auto open : {&dataFiles::openCatalogue, &dataFiles::openPictures}) {
        const sqlite::Database writer = open(at(u"data"_s));
        const sqlite::Transaction transaction(writer);
        EXPECT_NE(failureOf([&] { repaired(); }), 0);
        EXPECT_NE(failureOf([&] { restored(saved); }), 0);
        EXPECT_EQ(names(u"data"_s), before);
    }
    const auto endLate = [](const QString& title, qint64, qint64) {
        if (title == u"Kontrola obsahu") throw RuntimeError(errors::itemNotFound);
    };
    sql("DROP INDEX tPujcky_P_UID; UPDATE tDVD SET Jazyk=NULL");
    EXPECT_EQ(failureOf([&] { repair::run(at(u"data"_s), now, endLate); }), errors::itemNotFound);
    EXPECT_EQ(number("SELECT COUNT(*) FROM tDVD WHERE Jazyk IS NULL"), 5);
    ASSERT_TRUE(QDir().mkpath(at(u"data/repair.txt"_s)));
    EXPECT_EQ(failureOf([&] { repaired(); }), errors::pathAccess);
    write(u"data/data.ddb"_s, noise(9000));
    EXPECT_EQ(failureOf([&] { repaired(); }), errors::pathAccess);
    ASSERT_TRUE(QDir().rmdir(at(u"data/repair.txt"_s)));
    EXPECT_EQ(names(u"data"_s), before);
    EXPECT_FALSE(QFile::exists(at(u"Zálohy"_s)));
}

TEST_F(Damage, WhatCannotBeOpenedIsToldWithTheNextStep) {
    const QString saved = backUp();
    EXPECT_TRUE(
        descriptionOf([&] { restored(u"safe"_s); }).endsWith(u"nejnovější je: "_s + at(u"safe/"_s + saved)));
    EXPECT_TRUE(descriptionOf([&] { restored(u"old/data.ddb"_s); }).contains(u"uveďte složku"));
    EXPECT_TRUE(descriptionOf([&] { check::run(catalogue(), silent); }).contains(u"uveďte složku"));
    QFile::setPermissions(at(u"data"_s), QFile::ReadOwner | QFile::ReadOther);
    QFile::setPermissions(folder(), QFile::Permissions(0x7777));
    {
        const OrdinaryUser user;
        EXPECT_TRUE(descriptionOf([&] { checked(); }).contains(u"nemáte oprávnění"));
    }
    QFile::setPermissions(at(u"data"_s), QFile::Permissions(0x7777));
    // Only the name of a transaction that nothing belongs to goes.
    write(u"data/data.ddb-mj00000001"_s, "");
    write(u"data/pictures.ddb-journal"_s, "");
    pairReplacement::finish(at(u"data"_s));
    EXPECT_TRUE(QFile::exists(at(u"data/data.ddb-mj00000001"_s)) &&
                QFile::remove(at(u"data/pictures.ddb-journal"_s)));
    pairReplacement::finish(at(u"data"_s));
    EXPECT_FALSE(QFile::exists(at(u"data/data.ddb-mj00000001"_s)));
    ASSERT_TRUE(QFile::remove(catalogue()));
    EXPECT_TRUE(descriptionOf([&] { checked(); }).contains(u"kalvera-data restore"));
    ASSERT_TRUE(QFile::link(at(u"nowhere"_s), catalogue()));
    EXPECT_TRUE(descriptionOf([&] { repaired(); }).contains(u"Připojte disk"));
    EXPECT_TRUE(restore::run(at(u"safe/"_s + saved), at(u"data"_s), now, silent)
                    .text()
                    .contains(u"data.ddb byl odkaz"));
    ASSERT_TRUE(QFile::remove(catalogue()));
    const QString told = repaired().text();
    EXPECT_TRUE(told.contains(u"Původní soubor je odložený") && !told.contains(u"Některé řádky"));
}
