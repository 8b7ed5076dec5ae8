#pragma once

#include <QString>
#include <functional>

#include "datatool/ImportReport.h"
#include "datatool/OldFile.h"

/// Takes over what an old pair of files holds.
namespace importer {

/// Called now and then while a table is read: its title, the rows so far, the rows that it is to have.
using Progress = std::function<void(const QString& title, qint64 done, qint64 all)>;

/// Reads `data.ddb` and `pictures.ddb` (in any letter case) in `oldFolder` and makes a pair with all their
/// rows, keys unchanged, in `newFolder`, with the report beside it as `import.txt`. Numbers of new rows will
/// go on above the highest that the old file has given out. A row that cannot be taken over is left out and
/// named in the report.
/// @throws RuntimeError when the old files are damaged, when the new folder holds one of the files already,
/// when
///         writing fails and when this process is asked to end. Nothing is left in the new folder then.
ImportReport run(const QString& oldFolder, const QString& newFolder, const OldPrograms& programs,
                 const Progress& progress);

}  // namespace importer
