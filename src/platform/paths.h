#pragma once

#include <QString>
#include <QStringList>

/// Where the program's files lie. Paths are written with "\" in the program, as its data come from a system
/// that has it; the target's separator takes its place here.
namespace paths {

/// The folder that every path of the program is built on, without a separator at its end.
QString programFolder();
void setProgramFolder(const QString& folder);

/// The program folder followed by a path such as `\data\test.htm`, with the target's separators.
QString inProgramFolder(QStringView tail);

/// The name (without folder) of the file at `path`; "" when there is no such file. A folder is no file.
QString Dir(const QString& path);

/// `path` itself when it exists, else a file of the same folder whose name differs in letter case only, else
/// `path` again. Where case does not count, `path` is returned as it stands.
QString ignoringCase(const QString& path);

/// The program folder for an executable that lies in `executableFolder`: that folder itself when its `data`
/// folder can be written. Otherwise `userFolder`, whose `data` folder is copied from the first of
/// `readyMadeData` that exists when there is none yet. In one that exists the data files (`*.ddb`) are never
/// touched; pages and help that differ from the ready-made ones are replaced, as they belong to the program,
/// and stay as they are where that fails.
/// @throws RuntimeError 75 when the copy cannot be made; nothing is left of it then.
QString chooseProgramFolder(const QString& executableFolder, const QString& userFolder,
                            const QStringList& readyMadeData);

}  // namespace paths
