#pragma once

#include <QPlainTextEdit>
#include <QString>

/// Texts of boxes with several lines. They are stored with CR LF as line break, and nothing else in them is
/// changed on the way: Qt's own plain text would turn non-breaking blanks into blanks.
namespace textBox {

/// The text of the box, lines ended with CR LF.
QString text(const QPlainTextEdit& box);

/// Puts a stored text into the box; CR LF, LF and CR all break lines.
void setText(QPlainTextEdit& box, const QString& stored);

/// Lets the user enter no more than so many characters, a line break counting as two. What is entered beyond
/// them is dropped. A longer text put in by setText stays whole and can only become shorter.
void limit(QPlainTextEdit& box, int characters);

}  // namespace textBox
