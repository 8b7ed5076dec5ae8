#pragma once

#include <QString>
#include <functional>

/// Printed film lists. A list is written to `\data\test.htm` and opened with the desktop's default
/// application.
namespace filmLists {

/// `simple` has one row per film, `detailed` a block with the preview.
enum class Kind { simple, detailed };

/// Creates and opens the list of all films in the order of a SELECT on `tDVD`, replacing the previous one.
/// Failures are skipped: a film with Null in a printed column is left out, and if the file cannot be written
/// the previous list stays.
/// @param yield called after each film. It may print another list meanwhile, whose rows then appear in this
///              one too.
void print(const QString& sql, Kind kind, const std::function<void()>& yield);

}  // namespace filmLists
