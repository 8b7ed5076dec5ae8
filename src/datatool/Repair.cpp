#include "datatool/Repair.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <QScopeGuard>
#include <QTemporaryDir>

#include "core/pairReplacement.h"
#include "datatool/Backup.h"
#include "datatool/Check.h"
#include "datatool/DataFiles.h"
#include "datatool/Integrity.h"
#include "datatool/Interruption.h"
#include "datatool/NewFolder.h"
#include "datatool/NewPair.h"
#include "datatool/Restore.h"
#include "datatool/Salvage.h"
#include "datatool/Schema.h"
#include "datatool/Sequences.h"
#include "datatool/findings.h"
#include "datatool/outputFile.h"
#include "platform/FolderLock.h"
#include "platform/files.h"

using namespace Qt::StringLiterals;

namespace {

QString reportPath(const QString& folder) {
    return QDir(folder).filePath(u"repair.txt"_s);
}

/// Fails now where writing the report would fail later, when all else is done.
void refuseUnwritableReport(const QString& folder) {
    const QString path = reportPath(folder);
    if (QSaveFile told(path); !told.open(QFile::WriteOnly)) outputFile::failWriting(path);
}

/// @param commit runs when nothing but the report's renaming can fail any more.
void write(const repair::Report& report, const std::function<void()>& commit) {
    QSaveFile told(reportPath(report.folder));
    if (!told.open(QFile::WriteOnly)) outputFile::failWriting(told.fileName());
    files::keepToOwner(told);  // it names films
    if (told.write(report.text().toUtf8()) < 0 || !files::sync(told))
        outputFile::failWriting(told.fileName());
    commit();
    if (!files::commit(told))
        throw RuntimeError(errors::pathAccess, u"Katalog je opravený, ale zprávu repair.txt nelze zapsat."_s);
}

/// Whether the file cannot be opened or its schema has lost tables.
bool needsStart(const PairView::File& file) {
    if (file.database == nullptr) return true;
    QStringList lacks;
    try {
        lacks = schema::lacks(*file.database, schema::scriptOf(file.name())).parts;
    } catch (const sqlite::Failure&) {
        return true;
    }
    return std::any_of(lacks.begin(), lacks.end(),
                       [](const QString& part) { return part.startsWith(u"tabulka "); });
}

/// Brings row by row what can be read of a damaged file into the new one.
salvage::Result rescue(const PairView::File& file, const sqlite::Database& made, const Progress& progress) {
    if (!needsStart(file)) return salvage::copy(*file.database, made, salvage::Trust::all, progress);
    const QTemporaryDir folder;
    const QString copy = folder.filePath(file.name());
    if (!folder.isValid()) outputFile::failWriting(folder.path());
    const salvage::Trust trust = salvage::copyWithHeader(file.path, made, copy);
    if (trust == salvage::Trust::nothing) return {};
    return salvage::copy({copy, sqlite::Database::Mode::readOnly}, made, trust, progress);
}

/// Brings what can be read of a file into the new one.
/// @param damage as check::damageOf tells it.
/// @param unknownKeys gets the tables of which it cannot be told what keys they have given out.
/// @return false when that was nothing.
bool bringOver(const PairView::File& file, const QString& damage, const sqlite::Database& made,
               const Progress& progress, repair::Report& report, QStringList& unknownKeys) {
    if (damage.isEmpty() || damage == file.condition) {
        file.database->copyInto(made, [&](qint64 done, qint64 all) {
            interruption::check();
            progress(u"Kopírování souboru "_s + file.name(), done, all);
        });
        return true;
    }
    const salvage::Result result = rescue(file, made, progress);
    const bool isNothing = result.copied == 0 && (file.database == nullptr || result.lost > 0);
    if (isNothing) {
        report.steps += u"Ze souboru %1 nebylo co zachránit, místo něj je nový prázdný."_s.arg(file.name());
    } else {
        report.steps += result.lines;
    }
    unknownKeys += result.unknownKeys;
    (QFileInfo::exists(file.path) ? report.lostRows : report.lostFile) |= isNothing || result.lost > 0;
    return !isNothing;
}

/// Lets new rows have keys that nothing refers to: what refers to a row outlives it.
/// @param areCustomersKnown whether the keys that customers have had are known anyway.
void keepReferredKeys(const NewPair& made, bool areCustomersKnown) {
    const auto keep = [](const sqlite::Database& target, const QString& table, const sqlite::Database& other,
                         const QByteArray& keys) {
        const QByteArray highest =
            "SELECT IFNULL(max(k), 0) FROM (" + keys +
            ") WHERE typeof(k)='integer' AND k<=" + QByteArray::number(dataFiles::highestKey);
        salvage::keepKeys(target, table, other.number(highest.constData()));
    };
    const sqlite::Database& catalogue = made.catalogue();
    keep(catalogue, u"tDVD"_s, catalogue, "SELECT P_DVDID AS k FROM tPujcky");
    keep(catalogue, u"tDVD"_s, made.pictures(), "SELECT PicDVDID AS k FROM tPicture");
    keep(catalogue, u"tOddeleni"_s, catalogue, "SELECT Oddel_ID AS k FROM tDVD");
    keep(made.pictures(), u"tPicture"_s, catalogue,
         "SELECT Obal_ID AS k FROM tDVD UNION ALL SELECT Nahled_ID FROM tDVD");
    if (areCustomersKnown) return;
    // A loan names the customer by his code, which is his key unless he has another one.
    keep(catalogue, u"tUser"_s, catalogue,
         "SELECT P_UID AS k FROM tPujcky WHERE P_UID NOT IN "
         "(SELECT CAST(USREGNUM AS INTEGER) FROM tUser WHERE USREGNUM IS NOT NULL)");
}

/// @param damage of each file.
/// @return the folder of the former pair.
QString replaceDamaged(const PairView& pair, const QStringList& damage, const QDateTime& now,
                       const Progress& progress, repair::Report& report) {
    refuseUnwritableReport(report.folder);
    // What others wrote behind what has been read would be missing in the new pair.
    const auto held = restore::holdPair(report.folder);
    const QString room = pairReplacement::makeRoom(report.folder);
    const auto undo = qScopeGuard([&report] { pairReplacement::giveUp(report.folder); });
    NewPair made(room);
    QStringList unknownKeys;
    const bool hasFilms =
        bringOver(pair.files()[0], damage[0], made.catalogue(), progress, report, unknownKeys);
    const bool hasPictures =
        bringOver(pair.files()[1], damage[1], made.pictures(), progress, report, unknownKeys);
    if (!hasFilms && !hasPictures) {
        throw RuntimeError(
            errors::database,
            u"%1 Nic z nich přečíst nelze. Katalog vrátí ze zálohy příkaz kalvera-data restore. Složka: %2"_s
                .arg(damage.join(u' '), QDir::toNativeSeparators(report.folder)));
    }
    if (!hasFilms) made.catalogue().exec(dataFiles::script(u"dictionaries.sql"_s).constData());
    keepReferredKeys(made, hasFilms && !unknownKeys.contains(u"tUser"_s));
    made.keep();
    // A kill after the exchange must not leave losses untold.
    repair::Report begun = report;
    begun.steps += u"Zachráněné soubory jdou na místo, jejich obsah ještě není zkontrolovaný."_s;
    write(begun, [] {});
    QString aside = restore::asideFolder(report.folder, now);
    pairReplacement::replace(report.folder, aside);
    report.steps += (report.lostFile ? u"Původní soubor je odložený ve složce %1"_s
                                     : u"Původní soubory jsou odložené ve složce %1"_s)
                        .arg(QDir::toNativeSeparators(aside));
    return aside;
}

/// @param reader connection that has the file as its own.
/// @param place the schema that the file is in `pair`.
void renewIndexes(const sqlite::Database& pair, const sqlite::Database& reader, const QByteArray& place,
                  const Progress& progress, repair::Report& report) {
    const QString file = place == "main" ? u"data.ddb"_s : u"pictures.ddb"_s;
    const auto step = [&](qint64 done, qint64 all) {
        interruption::check();
        progress(u"Rejstříky souboru "_s + file, done, all);
    };
    // Read before the writing begins, which may need the file for itself.
    const QStringList wrong = integrity::wrongIndexes(reader, step);
    for (const schema::Index& index : schema::missingIndexes(reader, schema::scriptOf(file))) {
        pair.exec(QByteArray(index.sql).replace("CREATE INDEX ", "CREATE INDEX " + place + '.').constData());
        report.steps += u"Chybějící rejstřík %1 souboru %2 je vytvořen."_s.arg(index.name, file);
    }
    for (const QString& index : wrong) {
        const QByteArray name = index.toUtf8().replace('"', "\"\"");
        pair.exec(("REINDEX " + place + ".\"" + name + '"').constData());
        report.steps += u"Rejstřík %1 souboru %2 je vytvořen znovu."_s.arg(index, file);
    }
}

/// Runs a statement on the films that meet a condition, and reports each.
void mendFilms(const sqlite::Database& catalogue, const QByteArray& statement, const QByteArray& condition,
               const QString& done, repair::Report& report) {
    {
        const sqlite::Statement films(catalogue, "SELECT DVDID, CZJm FROM tDVD WHERE " + condition);
        while (films.step())
            report.steps += u"%1: %2"_s.arg(findings::filmName(films.text(0), films.text(1)), done);
    }
    catalogue.exec((statement + " WHERE " + condition).constData());
}

void mendRows(const sqlite::Database& catalogue, repair::Report& report) {
    mendFilms(catalogue, "DELETE FROM tDVD",
              findings::emptyFilm() +
                  " AND NOT EXISTS (SELECT * FROM tPujcky WHERE P_DVDID=DVDID)"
                  " AND NOT EXISTS (SELECT * FROM pictures.tPicture WHERE PicDVDID=DVDID)",
              u"prázdný záznam je smazaný"_s, report);
    for (const findings::PictureLink& link : findings::pictureLinks()) {
        const QByteArray own = " FROM pictures.tPicture WHERE PicDVDID=DVDID AND PicSkup=" + link.group + ")";
        mendFilms(catalogue, "UPDATE tDVD SET " + link.column + "=(SELECT PicID" + own,
                  findings::wrongLink(link) + " AND (SELECT COUNT(*)" + own + "=1",
                  u"%1 vede opět na obrázek tohoto filmu"_s.arg(QString::fromUtf8(link.name)), report);
    }
    // An empty row that is still referred to stays out of the list.
    const QByteArray filled = " AND NOT " + findings::emptyFilm();
    mendFilms(catalogue, "UPDATE tDVD SET KatCisl=DVDID", "KatCisl IS NULL" + filled,
              u"chybějící katalogové číslo nahradilo vlastní číslo filmu"_s, report);
    // A film that is listed and has none would end the list.
    mendFilms(catalogue, "UPDATE tDVD SET Jazyk=2", "Jazyk IS NULL" + filled,
              u"chybějící jazyk je nastaven na „neuvedeno“"_s, report);
    mendFilms(catalogue, "UPDATE tDVD SET Jazyk=2", findings::unreadableLanguage(),
              u"jazyk, který není číslo, je nastaven na „neuvedeno“"_s, report);
    for (const sequences::Wrong& wrong : sequences::wrong(catalogue)) {
        sequences::mend(catalogue, wrong);
        report.steps += u"%1; čísluje se dál od %2."_s.arg(wrong.fault, QString::number(wrong.last + 1));
    }
}

/// Opens both files in one connection, so that what is mended comes into both or into none.
sqlite::Database openPair(const QString& folder) {
    sqlite::Database catalogue = dataFiles::openCatalogue(folder);
    dataFiles::openPictures(folder);  // checks its header
    catalogue.attach(dataFiles::picturesPath(folder), u"pictures"_s);
    catalogue.exec("PRAGMA pictures.synchronous=EXTRA");
    return catalogue;
}

/// Fails now where `mend` would fail later, when there is a backup already.
void refuseUnwritable(const QString& folder) {
    refuseUnwritableReport(folder);
    const sqlite::Database pair = openPair(folder);
    const sqlite::Transaction transaction(pair);
}

/// @param committed is called once the files are mended.
void mend(repair::Report& report, const Progress& progress, const std::function<void()>& committed) {
    const sqlite::Database pair = openPair(report.folder);
    sqlite::Transaction transaction(pair);
    renewIndexes(pair, dataFiles::openPictures(report.folder), "pictures", progress, report);
    renewIndexes(pair, pair, "main", progress, report);
    mendRows(pair, report);
    report.left = check::linesOf(
        findings::of(pair, [&](qint64 done, qint64 all) { progress(u"Kontrola obsahu"_s, done, all); }));
    write(report, [&] {
        transaction.commit();
        committed();
    });
}

/// A backup before the repair, unless it comes to nothing.
void mendWithBackup(repair::Report& report, const QDateTime& now, const Progress& progress) {
    refuseUnwritable(report.folder);
    const QString target = QDir::cleanPath(QDir(report.folder).filePath(u"../Zálohy"_s));
    NewFolder targetFolder(target);
    const backup::Report saved = backup::run(report.folder, target, 0, now, progress);
    auto undo = qScopeGuard([&saved] { QDir(saved.folder).removeRecursively(); });
    report.steps += u"Záloha před opravou: %1"_s.arg(QDir::toNativeSeparators(saved.folder));
    mend(report, progress, [&] {
        undo.dismiss();
        targetFolder.keep();
    });
}

/// @return false, with the report as it was, when pages of an index are so damaged that they cannot even be
/// given back.
bool mendInPlace(repair::Report& report, const QDateTime& now, const Progress& progress) {
    const repair::Report before = report;
    try {
        mendWithBackup(report, now, progress);
    } catch (const sqlite::Failure& failure) {
        if ((failure.resultCode() & 0xFF) != SQLITE_CORRUPT) throw;
        report = before;
        return false;
    }
    return true;
}

}  // namespace

QString repair::Report::text() const {
    QStringList lines{u"Oprava složky %1"_s.arg(QDir::toNativeSeparators(folder))};
    lines += steps;
    lines += QString();
    if (lostRows)
        lines +=
            u"Některé řádky poškozených souborů chybějí, nebo to nelze vyloučit. Máte-li zálohu, vrátí ji příkaz kalvera-data restore."_s;
    if (lostFile) lines += u"Co bylo v chybějícím souboru, vrátí jen záloha příkazem kalvera-data restore."_s;
    if (left.isEmpty()) {
        lines += u"Nic dalšího k opravě nezbývá."_s;
    } else {
        lines += u"Zbývá, co bez vás rozhodnout nelze (%1):"_s.arg(left.size());
        lines += left;
    }
    return lines.join(u'\n') + u'\n';
}

repair::Report repair::run(const QString& folder, const QDateTime& now, const Progress& progress) {
    dataFiles::refuseFile(folder);
    Report report{QDir(folder).absolutePath(), {}, {}};
    const FolderLock lock(report.folder);
    restore::refuseTaken(lock, report.folder);
    pairReplacement::makeRoom(report.folder);  // finishes what was killed
    QString aside;
    {
        const PairView pair(report.folder, PairView::Unreadable::told);
        report.steps += pair.notes();
        QStringList damage;
        for (const PairView::File& file : pair.files())
            damage += check::damageOf(file, progress);
        report.steps += damage;
        report.steps.removeAll(QString());
        if (!damage.join(QString()).isEmpty()) aside = replaceDamaged(pair, damage, now, progress, report);
    }
    if (aside.isEmpty()) {
        if (mendInPlace(report, now, progress)) return report;
        const PairView pair(report.folder, PairView::Unreadable::told);
        QStringList reasons;
        for (const PairView::File& file : pair.files())
            reasons +=
                u"Rejstřík nelze vytvořit znovu, řádky souboru %1 se přenesou do nového."_s.arg(file.name());
        report.steps += reasons;
        aside = replaceDamaged(pair, reasons, now, progress, report);
    }
    try {
        mend(report, progress, [] {});
    } catch (const RuntimeError& failure) {
        const bool isInterrupted = dynamic_cast<const interruption::Interrupted*>(&failure) != nullptr;
        throw RuntimeError(failure.number(),
                           u"%1 Zachráněné soubory už jsou na místě, poškozené ve složce %2"_s.arg(
                               isInterrupted ? u"Práce byla přerušena."_s : failure.description(), aside));
    }
    return report;
}
