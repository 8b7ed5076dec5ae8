#pragma once

#include <QIcon>
#include <QString>
#include <QWidget>

/// The program's own icons by name, each read and drawn once for all windows that show it.
namespace icons {

/// The icon of the file `name`.svg among the program's icons.
QIcon named(const QString& name);

/// Gives the buttons and actions of a form the icons that they name in their property `iconName`.
void place(QWidget& form);

}  // namespace icons
