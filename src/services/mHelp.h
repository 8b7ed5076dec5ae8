#pragma once

#include <QString>

/// Path of the help file: for kind 1 `\data\napoveda.chm`, "" for any other.
QString CestaNapovedy(qint16 kind);

/// Opens the help at its table of contents in a non-modal window, at the page and place last read, or brings
/// the open one to the front. A box says when the help file is missing or cannot be read.
/// @param window the help file's window definition; ignored.
void ZobrazNapovedu(qint16 kind, const QString& window);

/// Opens the help at a page such as "/editor.html", or shows that page in the open one; otherwise as above.
void showHelpPage(const QString& page);
