#pragma once

#include <QString>
#include <QStringList>

/// The program's files. The program writes paths with "\"; here it is replaced by the native separator.
namespace paths {

/// The base folder of all program paths, without a trailing separator.
QString programFolder();
void setProgramFolder(const QString& folder);

/// The program folder followed by a path such as `\data\test.htm`, with native separators.
QString inProgramFolder(QStringView tail);

/// The file name (without folder) at `path`; "" if there is no such file. A folder is not a file.
QString Dir(const QString& path);

/// `path` if it exists, else a file in the same folder whose name differs only in case, else `path`.
QString ignoringCase(const QString& path);

/// The program folder for an executable in `executableFolder`: that folder itself if its `data` folder is
/// writable, else `userFolder`, whose `data` folder is copied from the first existing folder of
/// `readyMadeData` if missing. In an existing one the data files (`*.ddb`) are never touched; pages and help
/// are replaced if they differ from the ready-made ones, and kept where that fails.
/// @throws RuntimeError 75 when the copy fails or lacks a data file; nothing is left of it then.
QString chooseProgramFolder(const QString& executableFolder, const QString& userFolder,
                            const QStringList& readyMadeData);

}  // namespace paths
