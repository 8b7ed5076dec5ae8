#pragma once

#include <QString>

/// The headings of tables as people and other programs write them.
namespace tableHeadings {

/// Targets beside the columns of `tDVD`: the department's name and the files of the two pictures.
inline constexpr QStringView department = u"Oddeleni";
inline constexpr QStringView cover = u"Obal";
inline constexpr QStringView preview = u"Nahled";

/// The column of `tDVD` or the target above that a heading stands for; "" if it is not known. Letter case,
/// accents, punctuation and surrounding blanks make no difference.
QString targetOf(const QString& heading);

/// True for "Title" and "Name", which a table can also have for the title abroad.
bool isEnglishTitle(const QString& heading);

/// All that is known, one target a line with its headings, for the help of the command.
QString known();

}  // namespace tableHeadings
