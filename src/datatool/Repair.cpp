#include "datatool/Repair.h"

#include <QDir>
#include <QSaveFile>
#include <QScopeGuard>

#include "core/pairReplacement.h"
#include "datatool/Backup.h"
#include "datatool/Check.h"
#include "datatool/DataFiles.h"
#include "datatool/Integrity.h"
#include "datatool/Interruption.h"
#include "datatool/NewPair.h"
#include "datatool/Restore.h"
#include "datatool/Salvage.h"
#include "datatool/findings.h"
#include "datatool/outputFile.h"
#include "platform/FolderLock.h"
#include "platform/files.h"

using namespace Qt::StringLiterals;

namespace {

/// @return the folder of the damaged pair.
QString replaceDamaged(const PairView& pair, const QDateTime& now, repair::Report& report) {
    const QString room = pairReplacement::makeRoom(report.folder);
    auto undo = qScopeGuard([&report] { pairReplacement::makeRoom(report.folder); });
    NewPair made(room);
    for (const auto& [from, to] :
         {std::pair(&pair.catalogue(), &made.catalogue()), std::pair(&pair.pictures(), &made.pictures())}) {
        const salvage::Result result = salvage::copy(*from, *to);
        report.steps += result.lines;
        report.lostRows = report.lostRows || result.lost > 0;
    }
    made.keep();
    undo.dismiss();
    const auto held = restore::holdPair(report.folder);
    QString aside = restore::asideFolder(report.folder, now);
    pairReplacement::replace(report.folder, aside);
    report.steps += u"Poškozené soubory jsou odložené ve složce %1"_s.arg(QDir::toNativeSeparators(aside));
    return aside;
}

void renewIndexes(const sqlite::Database& database, repair::Report& report) {
    for (const QString& index : integrity::wrongIndexes(database)) {
        database.exec(("REINDEX \"" + index.toUtf8().replace('"', "\"\"") + '"').constData());
        report.steps += u"Rejstřík %1 je vytvořený znovu."_s.arg(index);
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
                  u"%1 vede na vlastní obrázek filmu"_s.arg(QString::fromLatin1(link.column)), report);
    }
    // An empty row that is still referred to stays out of the list.
    const QByteArray filled = " AND NOT " + findings::emptyFilm();
    mendFilms(catalogue, "UPDATE tDVD SET KatCisl=DVDID", "KatCisl IS NULL" + filled,
              u"dostal evidenční číslo podle svého klíče"_s, report);
    // A film that is listed and has none would end the list.
    mendFilms(catalogue, "UPDATE tDVD SET Jazyk=2", "Jazyk IS NULL" + filled, u"jazyk je neuvedený"_s,
              report);
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

void mend(repair::Report& report, const std::function<void(const QString&)>& tell) {
    tell(u"Opravují se obrázky"_s);
    {
        const sqlite::Database pictures = dataFiles::openPictures(report.folder);
        sqlite::Transaction transaction(pictures);
        renewIndexes(pictures, report);
        transaction.commit();
    }
    tell(u"Opravuje se katalog"_s);
    const sqlite::Database catalogue = dataFiles::openCatalogue(report.folder);
    catalogue.attach(dataFiles::picturesPath(report.folder), u"pictures"_s);
    sqlite::Transaction transaction(catalogue);
    renewIndexes(catalogue, report);
    mendRows(catalogue, report);
    report.left = check::linesOf(findings::of(catalogue));
    write(report, [&transaction] { transaction.commit(); });
}

}  // namespace

QString repair::Report::text() const {
    QStringList lines{u"Oprava složky %1"_s.arg(QDir::toNativeSeparators(folder))};
    lines += steps;
    lines += QString();
    if (lostRows) lines += u"Některé řádky poškozených souborů nešlo přečíst."_s;
    if (left.isEmpty()) {
        lines += u"Nic dalšího k opravě nezbývá."_s;
    } else {
        lines += u"Zbývá, co bez vás rozhodnout nelze (%1):"_s.arg(left.size());
        lines += left;
    }
    return lines.join(u'\n') + u'\n';
}

repair::Report repair::run(const QString& folder, const QDateTime& now,
                           const std::function<void(const QString&)>& tell) {
    Report report{QDir(folder).absolutePath(), {}, {}, false};
    const FolderLock lock(report.folder);
    restore::refuseTaken(lock, report.folder);
    pairReplacement::finish(report.folder);
    QString aside;
    {
        const PairView pair(report.folder);
        report.steps += pair.notes();
        const QStringList damaged = check::damaged(pair, tell);
        report.steps += damaged;
        if (!damaged.isEmpty()) aside = replaceDamaged(pair, now, report);
    }
    if (aside.isEmpty()) {
        const QString target = QDir::cleanPath(QDir(report.folder).filePath(u"../Zálohy"_s));
        const backup::Report saved = backup::run(report.folder, target, 0, now, tell);
        report.steps += u"Záloha před opravou: %1"_s.arg(QDir::toNativeSeparators(saved.folder));
    }
    try {
        mend(report, tell);
    } catch (const interruption::Interrupted&) {
        if (aside.isEmpty()) throw;
        throw RuntimeError(
            errors::invalidCall,
            u"Práce byla přerušena. Zachráněné soubory už jsou na místě, poškozené ve složce %1"_s.arg(
                aside));
    }
    return report;
}
