#pragma once

#include <QObject>
#include <QString>

/// Lets the user choose a cover file, starting in the folder stored in the setting `Covers`.
/// @param form the window that owns the dialog.
/// @return the path with native separators; "" when cancelled.
QString OtevritObal(QObject* form);

/// The same for a preview, with the setting `Nahled`.
QString OtevritNahled(QObject* form);

/// Lets the user choose where to save a picture. A name without a suffix gets "jpg".
QString UlozitObrazek(QObject* form);
