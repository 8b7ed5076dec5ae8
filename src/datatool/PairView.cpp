#include "datatool/PairView.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

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
        : RuntimeError(errors::pathAccess, u"Soubor neexistuje: %1"_s.arg(QDir::toNativeSeparators(path))) {}
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

/// False when the last writer was killed within a transaction, which only a writer can roll back. Other
/// failures are left to whoever reads.
bool isReadable(const sqlite::Database& database) {
    try {
        database.number("SELECT COUNT(*) FROM sqlite_schema");
    } catch (const sqlite::Failure& failure) {
        return failure.resultCode() != SQLITE_READONLY_ROLLBACK;
    }
    return true;
}

/// Refuses what no file of ours has; damage shows later.
void refuseForeignSchema(const sqlite::Database& database) {
    try {
        database.readSchema();
    } catch (const sqlite::Failure& failure) {
        const int code = failure.resultCode() & 0xFF;
        if (code != SQLITE_CORRUPT && code != SQLITE_NOTADB) throw;
    }
}

/// A file of the old program is none that could be damaged.
bool isOld(const QString& path) {
    QFile file(path);
    return file.open(QFile::ReadOnly) && file.read(19).endsWith("Standard Jet DB");
}

QString journalOf(const QString& path) {
    return path + u"-journal"_s;
}

/// The journal first: rolled back by somebody else meanwhile, it does no harm to the newer file.
void copyWithJournal(const QString& path, const QString& copy) {
    skipFailure([&] { files::copy(journalOf(path), journalOf(copy)); });
    files::copy(path, copy);
}

}  // namespace

QString PairView::File::name() const {
    return QFileInfo(path).fileName();
}

void PairView::File::use(const std::function<void(const sqlite::Database&)>& work) const {
    namingFile(path, [&] { work(*database); });
}

PairView::PairView(const QString& folder, Unreadable unreadable) {
    if (pairReplacement::isHalf(folder))
        notes_ += u"Výměna souborů, kterou něco přerušilo, ještě není dokončená."_s;
    add(dataFiles::cataloguePath(folder), unreadable);
    add(pairReplacement::currentPictures(folder), unreadable);
    if (files_[0].database == nullptr && files_[1].database == nullptr) {
        throw RuntimeError(errors::database,
                           u"%1 %2 Katalog vrátí ze zálohy příkaz kalvera-data restore. Složka: %3"_s.arg(
                               files_[0].fault, files_[1].fault, QDir::toNativeSeparators(folder)));
    }
}

void PairView::add(const QString& path, Unreadable unreadable) {
    File file{path, path, {}};
    namingFile(path, [&] {
        try {
            open(file);
        } catch (const sqlite::Failure& failure) {
            const int code = failure.resultCode() & 0xFF;
            if (unreadable == Unreadable::refused || (code != SQLITE_NOTADB && code != SQLITE_CORRUPT)) throw;
            file.fault = u"Soubor %1 nelze otevřít: %2"_s.arg(file.name(), failure.description());
        } catch (const Missing& failure) {
            if (unreadable == Unreadable::refused) throw;
            file.fault = u"Soubor %1 chybí."_s.arg(file.name());
        }
    });
    if (!file.fault.isEmpty()) file.database.reset();
    files_.push_back(std::move(file));
}

void PairView::open(File& file) {
    using Mode = sqlite::Database::Mode;
    if (!QFileInfo::exists(file.path)) throw Missing(file.path);
    if (!QFileInfo(file.path).isFile()) outputFile::fail(u"Není to soubor"_s, file.path);
    if (isOld(file.path))
        outputFile::fail(u"Je to starý soubor, převede ho příkaz kalvera-data import"_s, file.path);
    file.database = std::make_unique<sqlite::Database>(file.path, Mode::readOnly);
    password::checkHeader(*file.database, databasePassword());
    if (isReadable(*file.database)) return refuseForeignSchema(*file.database);
    file.copy = std::make_unique<QTemporaryDir>();
    if (!file.copy->isValid()) outputFile::failWriting(file.copy->path());
    file.read = file.copy->filePath(file.name());
    copyWithJournal(file.path, file.read);
    file.database = std::make_unique<sqlite::Database>(file.read, Mode::readWrite);
    refuseForeignSchema(*file.database);
    notes_ += u"Soubor %1 zůstal po přerušeném zápisu rozepsaný, čte se jeho kopie."_s.arg(file.name());
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
