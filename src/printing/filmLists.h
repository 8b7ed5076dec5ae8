#pragma once

#include <QString>
#include <functional>

/// Printed film lists. A list is written to `\data\test.htm` and handed to the desktop, which shows it in
/// whatever the user reads such files with.
namespace filmLists {

/// `simple` has a row for each film, `detailed` a block with the preview.
enum class Kind { simple, detailed };

/// Makes the list of all films in the order of a SELECT on `tDVD`, in place of the one before, and opens it.
/// Whatever fails is skipped: a film with Null in a printed column is not in the list, and when the file
/// cannot be written whole the former list stays.
/// @param yield is called after each film, and may make another list meanwhile: that one's rows are then in
///        this one too.
void print(const QString& sql, Kind kind, const std::function<void()>& yield);

}  // namespace filmLists
