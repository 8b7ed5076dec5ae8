#pragma once

#include <QString>

/// One entry of a list or combo box: what the user reads, and the number that it carries.
struct ListEntry {
    QString text;
    qint32 itemData;

    friend bool operator==(const ListEntry&, const ListEntry&) = default;
};
