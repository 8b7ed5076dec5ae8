#include "benchCatalogue.h"

#include "core/mDatabase.h"
#include "datatool/DataFiles.h"
#include "platform/paths.h"
#include "platform/sqlite.h"

namespace {

QByteArray numbers(int count) {
    return "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<" +
           QByteArray::number(count) + ") ";
}

}  // namespace

BenchCatalogue::BenchCatalogue(int films, int openLoans, int pictures) {
    dataFiles::create(folder_.filePath(QStringLiteral("data")));
    const sqlite::Database catalogue(path(), sqlite::Database::Mode::readWrite);
    sqlite::Transaction filling(catalogue);
    catalogue.exec(
        (numbers(films) +
         "INSERT INTO tDVD (KatCisl, CZJm, PuvJm, Zanr, DiskPocet, Obsah, Jazyk, Stat, Rezie, Delka, "
         "Rok, Herci, Obal_ID, Nahled_ID) SELECT i, substr('ŽCŘAČHŠKL', (i*7)%9+1, 1) || 'esta ' || "
         "((i*7919)%100003) || ' za štěstím', 'The Way to Happiness ' || i, 'Drama, Komedie', 1, "
         "'Příběh o jedné cestě, na které se potkají ti, kdo se nehledali.', i%3, 'USA', "
         "'Jan Novák', '118', '1998', 'A. B., C. D., E. F.', 0, 0 FROM n LIMIT " +
         QByteArray::number(films))
            .constData());
    catalogue.exec("INSERT INTO tUser (USNAME) SELECT 'Zákazník ' || DVDID FROM tDVD LIMIT 500");
    catalogue.exec(("INSERT INTO tPujcky (P_UID, P_DVDID, PDatPujcky) SELECT DVDID%500+1, DVDID, "
                    "'2026-02-03 10:20:30' FROM tDVD LIMIT " +
                    QByteArray::number(openLoans))
                       .constData());
    filling.commit();
    const sqlite::Database pictureFile(picturesPath(), sqlite::Database::Mode::readWrite);
    sqlite::Transaction storing(pictureFile);
    pictureFile.exec(
        (numbers(pictures) +
         "INSERT INTO tPicture (PicDVDID, PicSkup, PicTyp, PicSize, PicDat) SELECT i+10, 'O', 'jpg', "
         "1000, zeroblob(1001) FROM n LIMIT " +
         QByteArray::number(pictures))
            .constData());
    storing.commit();
}

void BenchCatalogue::use() const {
    paths::setProgramFolder(folder());
    ActDBPath = path();
}
