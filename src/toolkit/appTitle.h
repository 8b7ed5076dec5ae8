#pragma once

#include <QString>

/// The program's name as the user reads it; the title of every box that has none of its own.
inline QString appTitle() {
    return QStringLiteral("Brem DVD Kalvéra");
}
