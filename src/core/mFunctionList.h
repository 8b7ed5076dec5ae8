#pragma once

#include <QString>

class ListView;

/// Gives the row with the key, the item and all its sub-items, one colour (0xBBGGRR).
/// @throws RuntimeError 35601 when no row has the key.
void BarvaPolozky(ListView& list, const QString& key, quint32 colour);
