#include "datatool/outputFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "platform/errors.h"

using namespace Qt::StringLiterals;

void outputFile::fail(const QString& what, const QString& path) {
    throw RuntimeError(errors::pathAccess, u"%1: %2"_s.arg(what, QDir::toNativeSeparators(path)));
}

void outputFile::refuseExisting(const QString& path) {
    const QFileInfo file(path);
    if (file.isDir()) fail(u"Složka již existuje a nebude přepsána"_s, path);
    if (file.exists() || file.isSymLink()) fail(u"Soubor již existuje a nebude přepsán"_s, path);
}

void outputFile::refuseExistingOrHomeless(const QString& path) {
    constexpr qsizetype longestName = 255;  // bytes, on the usual file systems
    if (QFile::encodeName(QFileInfo(QDir::cleanPath(path)).fileName()).size() > longestName)
        fail(u"Jméno je příliš dlouhé"_s, path);
    refuseExisting(path);
    const QString parent = QFileInfo(QDir::cleanPath(path)).absolutePath();
    if (!QFileInfo(parent).isDir()) fail(u"Nadřazená složka neexistuje"_s, parent);
}

void outputFile::failWriting(const QString& path) {
    fail(u"Soubor nelze zapsat"_s, path);
}
