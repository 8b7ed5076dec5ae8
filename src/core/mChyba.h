#pragma once

#include <QString>

/// Shows an application error and where it occurred. The program continues.
void ChybaAplikace(const QString& text, const QString& where);
