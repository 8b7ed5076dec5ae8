#include "datatool/PairView.h"

#include <QDir>
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

QString journalOf(const QString& path) {
    return path + u"-journal"_s;
}

/// The journal first: rolled back by somebody else meanwhile, it does no harm to the newer file.
void copyWithJournal(const QString& path, const QString& copy) {
    skipFailure([&] { files::copy(journalOf(path), journalOf(copy)); });
    files::copy(path, copy);
}

}  // namespace

PairView::PairView(const QString& folder) {
    if (pairReplacement::isHalf(folder))
        notes_ += u"Výměna souborů, kterou něco přerušilo, ještě není dokončená."_s;
    open(dataFiles::cataloguePath(folder));
    open(pairReplacement::currentPictures(folder));
}

void PairView::open(const QString& path) {
    if (!QFileInfo(path).isFile()) outputFile::fail(u"Soubor neexistuje"_s, path);
    namingFile(path, [&] {
        using Mode = sqlite::Database::Mode;
        File file{path, path, nullptr, std::make_unique<sqlite::Database>(path, Mode::readOnly)};
        password::checkHeader(*file.database, databasePassword());
        if (!isReadable(*file.database)) {
            file.copy = std::make_unique<QTemporaryDir>();
            if (!file.copy->isValid()) outputFile::failWriting(file.copy->path());
            file.read = file.copy->filePath(QFileInfo(path).fileName());
            copyWithJournal(path, file.read);
            file.database = std::make_unique<sqlite::Database>(file.read, Mode::readWrite);
            file.database->number("SELECT COUNT(*) FROM sqlite_schema");
            notes_ += u"Soubor %1 zůstal po přerušeném zápisu rozepsaný, čte se jeho kopie."_s.arg(
                QFileInfo(path).fileName());
        }
        files_.push_back(std::move(file));
    });
}

void PairView::forEach(const std::function<void(const sqlite::Database&, const QString& name)>& work) const {
    for (const File& file : files_)
        namingFile(file.path, [&] { work(*file.database, QFileInfo(file.path).fileName()); });
}

void PairView::onBoth(const std::function<void(const sqlite::Database&)>& work) const {
    namingFile(files_[0].path, [&] {
        catalogue().attach(files_[1].read, u"pictures"_s);
        work(catalogue());
    });
}
