#pragma once

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QString>

/// Texts of multi-line boxes, stored with CR LF line breaks and otherwise unchanged;
/// QPlainTextEdit::toPlainText would replace non-breaking spaces.
namespace textBox {

/// The text of the box, lines separated by CR LF.
QString text(const QPlainTextEdit& box);

/// Shows a stored text; CR LF, LF and CR are all line breaks.
void setText(QPlainTextEdit& box, const QString& stored);

/// Limits the input to `characters` characters; a line break counts as two. Input beyond the limit is
/// dropped. A longer text set by setText is kept and can only be shortened.
void limit(QPlainTextEdit& box, int characters);

/// Keeps the length limit of a single-line box from splitting a surrogate pair of the input.
void keepLettersWhole(QLineEdit& box);

}  // namespace textBox
