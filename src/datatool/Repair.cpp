#include "datatool/Repair.h"

#include <QDir>
#include <QSaveFile>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <algorithm>

#include "core/pairReplacement.h"
#include "datatool/Backup.h"
#include "datatool/Check.h"
#include "datatool/DataFiles.h"
#include "datatool/Integrity.h"
#include "datatool/Interruption.h"
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

/// Brings what can be read of a file into the new one.
/// @param damage as check::damageOf tells it.
/// @return false when that was nothing.
bool bringOver(const PairView::File& file, const QString& damage, const sqlite::Database& made,
               const Progress& progress, repair::Report& report) {
    if (damage.isEmpty()) {
        file.database->copyInto(made, [&](qint64 done, qint64 all) {
            interruption::check();
            progress(u"Kopírování souboru "_s + file.name(), done, all);
        });
        return true;
    }
    salvage::Result result;
    if (file.database != nullptr) {
        result = salvage::copy(*file.database, made, progress);
    } else {
        const QTemporaryDir folder;
        const QString copy = folder.filePath(file.name());
        if (!folder.isValid()) outputFile::failWriting(folder.path());
        if (salvage::copyWithHeader(file.path, made, copy))
            result = salvage::copy({copy, sqlite::Database::Mode::readOnly}, made, progress);
    }
    const bool isNothing = file.database == nullptr && result.copied == 0;
    if (isNothing) {
        report.steps += u"Ze souboru %1 nebylo co zachránit, místo něj je nový prázdný."_s.arg(file.name());
    } else {
        report.steps += result.lines;
    }
    report.lostRows = report.lostRows || isNothing || result.lost > 0;
    return !isNothing;
}

/// Lets new rows of a lost file have keys that nothing in the other file refers to.
/// @param highest query for the highest key that does.
void keepKeys(const sqlite::Database& lost, const QString& table, const sqlite::Database& other,
              const char* highest) {
    salvage::keepKeys(lost, table, std::clamp<qint64>(other.number(highest), 0, dataFiles::highestKey));
}

/// @param damage of each file.
/// @return the folder of the former pair.
QString replaceDamaged(const PairView& pair, const QStringList& damage, const QDateTime& now,
                       const Progress& progress, repair::Report& report) {
    // What others wrote behind what has been read would be missing in the new pair.
    const auto held = restore::holdPair(report.folder);
    const QString room = pairReplacement::makeRoom(report.folder);
    auto undo = qScopeGuard([&report] { pairReplacement::makeRoom(report.folder); });
    NewPair made(room);
    const bool hasFilms = bringOver(pair.files()[0], damage[0], made.catalogue(), progress, report);
    const bool hasPictures = bringOver(pair.files()[1], damage[1], made.pictures(), progress, report);
    if (!hasFilms) {
        made.catalogue().exec(dataFiles::script(u"dictionaries.sql"_s).constData());
        keepKeys(made.catalogue(), u"tDVD"_s, made.pictures(), "SELECT max(PicDVDID) FROM tPicture");
    }
    if (!hasPictures) {
        keepKeys(made.pictures(), u"tPicture"_s, made.catalogue(),
                 "SELECT max(IFNULL(max(Obal_ID), 0), IFNULL(max(Nahled_ID), 0)) FROM tDVD");
    }
    made.keep();
    undo.dismiss();
    QString aside = restore::asideFolder(report.folder, now);
    pairReplacement::replace(report.folder, aside);
    report.steps += u"Původní soubory jsou odložené ve složce %1"_s.arg(QDir::toNativeSeparators(aside));
    return aside;
}

void renewIndexes(const sqlite::Database& database, const QString& file, const Progress& progress,
                  repair::Report& report) {
    const auto step = [&](qint64 done, qint64 all) {
        interruption::check();
        progress(u"Rejstříky souboru "_s + file, done, all);
    };
    for (const schema::Index& index : schema::missingIndexes(database, schema::scriptOf(file))) {
        database.exec(index.sql.constData());
        report.steps += u"Chybějící rejstřík %1 souboru %2 je vytvořen."_s.arg(index.name, file);
    }
    for (const QString& index : integrity::wrongIndexes(database, step)) {
        database.exec(("REINDEX \"" + index.toUtf8().replace('"', "\"\"") + '"').constData());
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

void write(const repair::Report& report, const std::function<void()>& commit) {
    QSaveFile told(QDir(report.folder).filePath(u"repair.txt"_s));
    if (!told.open(QFile::WriteOnly)) outputFile::failWriting(told.fileName());
    files::keepToOwner(told);  // it names films
    if (told.write(report.text().toUtf8()) < 0 || !files::sync(told))
        outputFile::failWriting(told.fileName());
    commit();
    if (!files::commit(told))
        throw RuntimeError(errors::pathAccess, u"Katalog je opravený, ale zprávu repair.txt nelze zapsat."_s);
}

void mend(repair::Report& report, const Progress& progress) {
    {
        const sqlite::Database pictures = dataFiles::openPictures(report.folder);
        sqlite::Transaction transaction(pictures);
        renewIndexes(pictures, u"pictures.ddb"_s, progress, report);
        transaction.commit();
    }
    const sqlite::Database catalogue = dataFiles::openCatalogue(report.folder);
    catalogue.attach(dataFiles::picturesPath(report.folder), u"pictures"_s);
    sqlite::Transaction transaction(catalogue);
    renewIndexes(catalogue, u"data.ddb"_s, progress, report);
    mendRows(catalogue, report);
    report.left = check::linesOf(
        findings::of(catalogue, [&](qint64 done, qint64 all) { progress(u"Kontrola obsahu"_s, done, all); }));
    write(report, [&transaction] { transaction.commit(); });
}

}  // namespace

QString repair::Report::text() const {
    QStringList lines{u"Oprava složky %1"_s.arg(QDir::toNativeSeparators(folder))};
    lines += steps;
    lines += QString();
    if (lostRows)
        lines +=
            u"Některé řádky poškozených souborů nešlo přečíst. Máte-li zálohu, vrátí ji příkaz kalvera-data restore."_s;
    if (left.isEmpty()) {
        lines += u"Nic dalšího k opravě nezbývá."_s;
    } else {
        lines += u"Zbývá, co bez vás rozhodnout nelze (%1):"_s.arg(left.size());
        lines += left;
    }
    return lines.join(u'\n') + u'\n';
}

repair::Report repair::run(const QString& folder, const QDateTime& now, const Progress& progress) {
    Report report{QDir(folder).absolutePath(), {}, {}, false};
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
        const QString target = QDir::cleanPath(QDir(report.folder).filePath(u"../Zálohy"_s));
        const backup::Report saved = backup::run(report.folder, target, 0, now, progress);
        report.steps += u"Záloha před opravou: %1"_s.arg(QDir::toNativeSeparators(saved.folder));
    }
    try {
        mend(report, progress);
    } catch (const RuntimeError& failure) {
        if (aside.isEmpty()) throw;
        const bool isInterrupted = dynamic_cast<const interruption::Interrupted*>(&failure) != nullptr;
        throw RuntimeError(failure.number(),
                           u"%1 Zachráněné soubory už jsou na místě, poškozené ve složce %2"_s.arg(
                               isInterrupted ? u"Práce byla přerušena."_s : failure.description(), aside));
    }
    return report;
}
