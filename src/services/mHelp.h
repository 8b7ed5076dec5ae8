#pragma once

#include <QString>

/// Path of the help file: for kind 1 `\data\napoveda.chm`, "" for any other.
QString CestaNapovedy(qint16 kind);

/// Opens the help at its table of contents, in a window of its own that stays beside the others; one that is
/// open comes to the front. A box tells when there is no help file or it cannot be read.
/// @param window the name of the help file's window definition; its contents open whatever that is.
void ZobrazNapovedu(qint16 kind, const QString& window);
