#pragma once

#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QString>

/// Texts of boxes, shown from their beginning. Those of multi-line boxes are stored with CR LF line breaks
/// and otherwise unchanged; QPlainTextEdit::toPlainText would replace non-breaking spaces.
namespace textBox {

/// Shows a text in a single line, from its first letter; QLineEdit::setText and QComboBox::setEditText scroll
/// to the last one. Length limits apply.
void setText(QLineEdit& box, const QString& text);
void setText(QComboBox& box, const QString& text);

/// Makes an editable combo box show chosen entries from their first letter.
void showStarts(QComboBox& box);

/// The text of the box, lines separated by CR LF.
QString text(const QPlainTextEdit& box);

/// Shows a stored text; CR LF, LF and CR are all line breaks.
void setText(QPlainTextEdit& box, const QString& stored);

/// Single lines of a form that get the focus by Tab, by their label's key or by the opening of the form are
/// selected with the cursor at their start, so that their first letters stay in view; Qt puts it at the end.
void selectFromEnd(QWidget& form);

/// Keeps the box quick with words of any length: where one has thousands of letters, lines break anywhere.
/// The text itself stays as it is.
void breakLongWords(QPlainTextEdit& box);

/// Limits the input to `characters` characters; a line break counts as two. Input beyond the limit is
/// dropped. A longer text set by setText is kept and can only be shortened.
void limit(QPlainTextEdit& box, int characters);

/// Keeps the length limit of a single-line box from splitting a surrogate pair of the input.
void keepLettersWhole(QLineEdit& box);

}  // namespace textBox
