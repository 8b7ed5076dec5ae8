#pragma once

#include <QLineEdit>
#include <QPlainTextEdit>

/// Showing stored texts in boxes and reading them back. A box may be unable to show a text exactly (a line
/// break in a single line, say), so an unedited text is stored back as it was loaded.
namespace loadedText {

/// Shows a stored text.
void show(QLineEdit& box, const QString& stored);
void show(QPlainTextEdit& box, const QString& stored);

/// The text to store.
QString toStore(const QLineEdit& box);
QString toStore(const QPlainTextEdit& box);

}  // namespace loadedText
