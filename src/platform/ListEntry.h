#pragma once

#include <QString>

/// An entry of a list or combo box: its text and its number.
struct ListEntry {
    QString text;
    qint32 itemData;

    friend bool operator==(const ListEntry&, const ListEntry&) = default;
};
