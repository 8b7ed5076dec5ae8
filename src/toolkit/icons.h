#pragma once

#include <QIcon>
#include <QString>
#include <QWidget>

/// The program's own icons by name, each loaded once.
namespace icons {

/// The icon `name`.svg from the program's resources.
QIcon named(const QString& name);

/// Sets the icons of all buttons and actions of a form that have a property `iconName`.
void place(QWidget& form);

}  // namespace icons
