#pragma once

#include <QObject>
#include <QString>

/// Asks for the file of a cover, starting in the folder that the setting `Covers` remembers.
/// @param form the window that owns the dialog.
/// @return the path with the target's separators; "" when cancelled.
QString OtevritObal(QObject* form);

/// Asks for the file of a preview, starting in the folder that the setting `Nahled` remembers.
QString OtevritNahled(QObject* form);

/// Asks where to save a picture. A name without an ending gets "jpg".
QString UlozitObrazek(QObject* form);
