#pragma once

#include <QString>
#include <optional>

/// Values as people and other programs write them, brought into the form that the editor and the lookups
/// store.
namespace foreignValue {

/// A value for a text column of `tDVD`: several values are joined by ", ", a cast is its names without roles,
/// `<br/>` is a line break, a length is in minutes. Other texts are unchanged.
QString forColumn(const QString& column, const QString& value);

/// The option of `Jazyk` that languages in words stand for, such as "česky", "Czech; English" or "české
/// titulky"; nothing if they name neither Czech nor "neuvedeno".
std::optional<int> language(const QString& words);

}  // namespace foreignValue
