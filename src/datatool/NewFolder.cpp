#include "datatool/NewFolder.h"

#include <QDir>
#include <QFileInfo>

#include "datatool/outputFile.h"
#include "platform/files.h"

using namespace Qt::StringLiterals;

NewFolder::NewFolder(const QString& path) {
    QString missing = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
    for (; !QFileInfo::exists(missing) && !QFileInfo(missing).isSymLink();
         missing = QFileInfo(missing).path())
        made_ += missing;
    if (QDir().mkpath(path)) return;
    for (const QString& folder : std::as_const(made_))
        QDir().rmdir(folder);
    outputFile::fail(u"Složku nelze vytvořit"_s, path);
}

NewFolder::~NewFolder() {
    for (const QString& folder : std::as_const(made_))
        QDir().rmdir(folder);
}

void NewFolder::keep() {
    for (const QString& folder : std::as_const(made_))
        files::syncFolder(QFileInfo(folder).path());
    made_.clear();
}
