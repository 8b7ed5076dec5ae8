#pragma once

#include <QString>

/// A value from a file as messages and reports show it: in one line, with a blank for each line break or tab
/// and U+FFFD for any other character that a terminal would obey rather than show, and cut with "…" after
/// 200 characters.
QString shownText(const QString& value);
