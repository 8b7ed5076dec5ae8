#pragma once

#include <QString>

/// Shows an application error and the place where it arose. The program goes on.
void ChybaAplikace(const QString& text, const QString& where);
