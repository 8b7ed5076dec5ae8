#pragma once

#include <QLineEdit>
#include <QPlainTextEdit>

/// Boxes that a stored text is shown in and taken from again. Not every box can show every text (a line break
/// in a single line, say), so what was loaded is what is stored again, as long as the user has not changed
/// it.
namespace loadedText {

/// Shows a stored text.
void show(QLineEdit& box, const QString& stored);
void show(QPlainTextEdit& box, const QString& stored);

/// The text to store.
QString toStore(const QLineEdit& box);
QString toStore(const QPlainTextEdit& box);

}  // namespace loadedText
