#pragma once

#include "datatool/LoadReport.h"
#include "datatool/Progress.h"

/// Loads films from CSV. The first line names columns of `tDVD` or what `tableHeadings` knows beside them, in
/// any order. CsvText tells which files can be read.
namespace filmLoader {

struct Options {
    bool ignoreUnknown = false;  // leave out columns with unknown headings
    bool addGenres = false;      // add genres that the dictionary lacks
    bool skipKnown = false;      // leave out films that are there already
    bool dryRun = false;         // find out what would happen, and write nothing
};

/// Adds all films of the file `csv`, or of `films.csv` in that folder, to the catalogue in `folder`, and the
/// pictures they name to the picture file, in one transaction, and writes the report into the folder as
/// `load.txt`. Missing or blank fields get defaults: empty texts, one disc, the language "neuvedeno", no
/// pictures, the key as catalogue number, the original title as title. A field `\N` is Null; a quoted field
/// is taken literally, even if empty. A row that holds nothing in a known column makes no film. A department
/// of an unknown name is created; its name takes precedence over `Oddel_ID`, as the name of a picture does
/// over its key. A picture's key stays where the pair has that picture of this film, and is 0 otherwise.
/// @throws RuntimeError for bad lines, with their numbers in the description, when a file cannot be read or
///         written and when this process is asked to end. Nothing has been added then.
LoadReport load(const QString& folder, const QString& csv, const Options& options, const Progress& progress);

}  // namespace filmLoader
