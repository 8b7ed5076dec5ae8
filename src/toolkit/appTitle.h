#pragma once

#include <QString>

/// The program's name as shown to the user, and the default title of message boxes.
inline QString appTitle() {
    return QStringLiteral("Brem DVD Kalvéra");
}
