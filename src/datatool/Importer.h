#pragma once

#include <QString>
#include <functional>

#include "datatool/ImportReport.h"
#include "datatool/OldFile.h"

/// Imports an old pair of files.
namespace importer {

/// Called from time to time while a table is read: its title, the rows so far, the total.
using Progress = std::function<void(const QString& title, qint64 done, qint64 all)>;

/// Reads `data.ddb` and `pictures.ddb` (in any case) in `oldFolder` and creates a pair with all their rows
/// and unchanged keys in `newFolder`, together with the report `import.txt`. New rows will get keys above the
/// highest one that the old file has ever assigned. A row that cannot be imported is left out and named in
/// the report.
/// @throws RuntimeError when the old files are damaged, when the new folder already contains one of the
///         files, when writing fails and when this process is asked to end. Nothing is left in the new folder
///         then.
ImportReport run(const QString& oldFolder, const QString& newFolder, const OldPrograms& programs,
                 const Progress& progress);

}  // namespace importer
