#include "datatool/PairView.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QtEndian>
#include <algorithm>

#include "core/mDatabase.h"
#include "core/pairReplacement.h"
#include "datatool/DataFiles.h"
#include "datatool/Interruption.h"
#include "datatool/outputFile.h"
#include "platform/files.h"
#include "platform/password.h"

using namespace Qt::StringLiterals;

namespace {

class Missing final : public RuntimeError {
 public:
    explicit Missing(const QString& path)
        : RuntimeError(errors::pathAccess,
                       u"Soubor neexistuje: %1. Chybí-li jen on, vytvoří místo něj prázdný příkaz "
                       "kalvera-data repair; celý katalog vrátí ze zálohy kalvera-data restore."_s.arg(
                           QDir::toNativeSeparators(path))) {}
};

template <typename Work>
void namingFile(const QString& path, Work&& work) {
    try {
        work();
    } catch (const interruption::Interrupted&) {
        throw;
    } catch (const RuntimeError& failure) {
        if (failure.description().contains(path)) throw;
        throw RuntimeError(failure.number(), u"%1 (%2)"_s.arg(failure.description(), path));
    }
}

/// Refuses a path at which there is no file, with what to do about it.
void refuseAbsent(const QString& path) {
    const QFileInfo file(path);
    if (file.isFile()) return;
    if (file.exists()) outputFile::fail(u"Není to soubor"_s, path);
    if (file.isSymLink()) {
        outputFile::fail(
            u"%1 je odkaz na soubor, který není dostupný. Připojte disk, na který odkaz vede, nebo odkaz odstraňte; vede na"_s
                .arg(path),
            file.symLinkTarget());
    }
    const QFileInfo folder(file.path());
    if (folder.isDir() && !folder.isExecutable())
        outputFile::fail(u"Ke složce nemáte oprávnění"_s, folder.filePath());
    throw Missing(path);
}

bool isDamage(const sqlite::Failure& failure) {
    const int code = failure.resultCode() & 0xFF;
    return code == SQLITE_CORRUPT || code == SQLITE_NOTADB;
}

/// False when the last writer was killed within a transaction, which only a writer can roll back. Failures
/// other than damage are left to whoever reads.
bool isReadable(const sqlite::Database& database) {
    try {
        database.number("SELECT COUNT(*) FROM sqlite_schema");
    } catch (const sqlite::Failure& failure) {
        if (isDamage(failure)) throw;
        return failure.resultCode() != SQLITE_READONLY_ROLLBACK;
    }
    return true;
}

/// Refuses what no file of ours has; damage shows later.
void refuseForeignSchema(const sqlite::Database& database) {
    try {
        database.readSchema();
    } catch (const sqlite::Failure& failure) {
        if (!isDamage(failure)) throw;
    }
}

// The offsets and values below: the file format of SQLite 3, "The Database Header".

QByteArray headerOf(const QString& path) {
    QFile file(path);
    return file.open(QFile::ReadOnly) ? file.read(100) : QByteArray();
}

/// A file of the old program is none that could be damaged.
bool isOld(const QByteArray& header) {
    return header.first(std::min<qsizetype>(header.size(), 19)).endsWith("Standard Jet DB");
}

/// Whether another program has switched the file to a write-ahead log, in which ours does not open it.
bool isInLogMode(const QByteArray& header) {
    return header.startsWith("SQLite format 3") && header.mid(18, 2) == "\2\2";
}

/// As password::checkHeader. A verifier that no password gives is damage; another one may be either.
void checkHeader(const sqlite::Database& database, const QByteArray& header) {
    try {
        password::checkHeader(database, databasePassword());
    } catch (const RuntimeError& failure) {
        if (failure.number() != errors::databasePassword) throw;
        const auto verifier = qFromBigEndian<qint32>(header.mid(60, 4).constData());
        if (verifier <= 0 || verifier % 2 == 0)
            throw sqlite::Failure(errors::database, sqlite::description(SQLITE_CORRUPT), SQLITE_CORRUPT);
        throw RuntimeError(failure.number(),
                           failure.description() +
                               u" Pokud ho program dosud otevíral, má soubor poškozenou hlavičku; "
                               "katalog vrátí ze zálohy příkaz kalvera-data restore."_s);
    }
}

/// The size and time of a file and of what belongs to it.
QString stateOf(const QString& path, const QString& companion) {
    QString state;
    for (const QFileInfo& file : {QFileInfo(path), QFileInfo(companion)})
        state += u"%1 %2 "_s.arg(file.size()).arg(file.lastModified().toMSecsSinceEpoch());
    return state;
}

/// The companion first: a journal that somebody else meanwhile rolls back does no harm to the newer file. A
/// log would.
void copyWith(QStringView ending, const QString& path, const QString& copy) {
    const QString companion = pairReplacement::companionOf(path, ending);
    const QString before = stateOf(path, companion);
    skipFailure([&] { files::copy(companion, copy + ending.toString()); });
    files::copy(path, copy);
    if (ending == pairReplacement::log && stateOf(path, companion) != before)
        throw sqlite::Failure(errors::database, sqlite::description(SQLITE_BUSY), SQLITE_BUSY);
}

}  // namespace

QString PairView::File::name() const {
    return QFileInfo(path).fileName();
}

void PairView::File::use(const std::function<void(const sqlite::Database&)>& work) const {
    namingFile(path, [&] { work(*database); });
}

PairView::PairView(const QString& folder, Unreadable unreadable)
    : unreadable_(unreadable), isHalf_(pairReplacement::isHalf(folder)) {
    dataFiles::refuseFile(folder);
    if (isHalf_) notes_ += u"Výměna souborů, kterou něco přerušilo, ještě není dokončená."_s;
    add(dataFiles::cataloguePath(folder));
    add(pairReplacement::currentPictures(folder));
}

void PairView::add(const QString& path) {
    File file{path, path, {}};
    namingFile(path, [&] {
        try {
            open(file);
        } catch (const sqlite::Failure& failure) {
            if (!isDamage(failure)) throw;
            if (unreadable_ == Unreadable::refused) {
                throw sqlite::Failure(
                    failure.number(),
                    u"%1 Zkuste kalvera-data repair, nebo vraťte katalog ze zálohy příkazem kalvera-data restore."_s
                        .arg(failure.description()),
                    failure.resultCode());
            }
            file.fault = u"Soubor %1 nelze otevřít: %2"_s.arg(file.name(), failure.description());
        } catch (const Missing&) {
            if (unreadable_ != Unreadable::told) throw;
            file.fault = u"Soubor %1 chybí."_s.arg(file.name());
        }
    });
    if (!file.fault.isEmpty()) file.database.reset();
    files_.push_back(std::move(file));
}

void PairView::open(File& file) {
    refuseAbsent(file.path);
    const QByteArray header = headerOf(file.path);
    if (isOld(header))
        outputFile::fail(u"Je to starý soubor, převede ho příkaz kalvera-data import"_s, file.path);
    if (isInLogMode(header) ||
        QFileInfo::exists(pairReplacement::companionOf(file.path, pairReplacement::log)))
        return openWithLog(file, header);
    file.database = std::make_unique<sqlite::Database>(file.path, sqlite::Database::Mode::readOnly);
    checkHeader(*file.database, header);
    if (!isReadable(*file.database)) {
        openCopy(file, pairReplacement::journal);
        notes_ += u"Soubor %1 zůstal po přerušeném zápisu rozepsaný, čte se jeho kopie."_s.arg(file.name());
        isReadable(*file.database);
    }
    refuseForeignSchema(*file.database);
}

void PairView::openCopy(File& file, QStringView ending) {
    file.copy = std::make_unique<QTemporaryDir>();
    if (!file.copy->isValid()) outputFile::failWriting(file.copy->path());
    file.read = file.copy->filePath(file.name());
    copyWith(ending, file.path, file.read);
    file.database = std::make_unique<sqlite::Database>(file.read, sqlite::Database::Mode::readWrite);
}

void PairView::openWithLog(File& file, const QByteArray& header) {
    openCopy(file, pairReplacement::log);
    // The log of a catalogue that is already replaced is its predecessor's.
    if (isHalf_) QFile::remove(file.read + pairReplacement::log.toString());
    file.database->exec("PRAGMA journal_mode=DELETE");
    checkHeader(*file.database, header);
    refuseForeignSchema(*file.database);
    if (isHalf_) return;
    file.condition =
        u"Soubor %1 nechal jiný program v režimu WAL, se kterým program pracovat neumí."_s.arg(file.name());
    if (QFileInfo::exists(pairReplacement::companionOf(file.path, pairReplacement::log)))
        notes_ += u"Soubor %1 se čte i se změnami, které jsou zatím jen v souboru %1-wal."_s.arg(file.name());
}

void PairView::forEach(const std::function<void(const sqlite::Database&, const QString& name)>& work) const {
    for (const File& file : files_) {
        if (file.database != nullptr)
            file.use([&](const sqlite::Database& database) { work(database, file.name()); });
    }
}

void PairView::onBoth(const std::function<void(const sqlite::Database&)>& work) const {
    namingFile(files_[0].path, [&] {
        catalogue().attach(files_[1].read, u"pictures"_s);
        work(catalogue());
    });
}
