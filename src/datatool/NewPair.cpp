#include "datatool/NewPair.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "core/mDatabase.h"
#include "datatool/DataFiles.h"
#include "datatool/outputFile.h"
#include "platform/files.h"
#include "platform/password.h"

using namespace Qt::StringLiterals;

namespace {

std::unique_ptr<sqlite::Database> newDatabase(const QString& path, const QString& tables) {
    auto database = std::make_unique<sqlite::Database>(path, sqlite::Database::Mode::create);
    // Files that are deleted on any failure need no journal; they are synced once, when complete.
    database->exec("PRAGMA journal_mode=OFF; PRAGMA synchronous=OFF");
    sqlite::Transaction transaction(*database);
    database->exec(dataFiles::script(tables).constData());
    password::stamp(*database, databasePassword());
    transaction.commit();
    return database;
}

/// @param path the final path, for the message of a failure.
void writeText(const QString& made, const QString& path, const QString& text) {
    QFile file(made);
    const QByteArray bytes = text.toUtf8();
    if (!file.open(QFile::WriteOnly | QFile::NewOnly)) outputFile::failWriting(path);
    files::keepToOwner(file);  // it names films and customers
    if (file.write(bytes) != bytes.size() || !files::sync(file)) outputFile::failWriting(path);
}

}  // namespace

NewPair::NewPair(const QString& folder, const QString& report) : folder_(folder) {
    QStringList paths{dataFiles::cataloguePath(folder), dataFiles::picturesPath(folder)};
    if (!report.isEmpty()) paths += QDir(folder).filePath(report);
    for (const QString& path : std::as_const(paths)) {
        outputFile::refuseExisting(path);
        files_.push_back({path, path + u".new"_s, nullptr});
        QFile::remove(files_.back().made);
    }
    try {
        files_[0].database = newDatabase(files_[0].made, u"catalogue.sql"_s);
        // Its indexes are filled in random order; pictures are appended.
        files_[0].database->exec("PRAGMA cache_size=-16000");
        files_[1].database = newDatabase(files_[1].made, u"pictures.sql"_s);
    } catch (...) {
        discard();
        throw;
    }
}

NewPair::~NewPair() {
    discard();
}

void NewPair::discard() {
    for (File& file : files_) {
        file.database.reset();
        QFile::remove(file.made);
    }
}

void NewPair::keep(const QString& report) {
    for (File& file : files_) {
        if (file.database == nullptr) {
            writeText(file.made, file.path, report);
            continue;
        }
        file.database.reset();
        QFile whole(file.made);
        if (!whole.open(QFile::ReadWrite) || !files::sync(whole)) outputFile::failWriting(file.path);
    }
    QStringList renamed;
    for (const File& file : files_) {
        if (QFile::rename(file.made, file.path)) {
            renamed += file.path;
            continue;
        }
        for (const QString& path : std::as_const(renamed))
            QFile::remove(path);
        outputFile::failWriting(file.path);
    }
    files::syncFolder(QFileInfo(files_.front().path).absolutePath());
    folder_.keep();
}
