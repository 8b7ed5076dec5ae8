#include "toolkit/formContent.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>

#include "toolkit/textBox.h"

formContent::Content formContent::of(const QWidget& form) {
    Content content;
    for (const QWidget* control : form.findChildren<QWidget*>()) {
        if (control->window() != &form) continue;  // of a window above it
        if (const auto* line = qobject_cast<const QLineEdit*>(control)) {
            content[control] = line->text();  // also that of a combo box
        } else if (const auto* lines = qobject_cast<const QPlainTextEdit*>(control)) {
            content[control] = textBox::text(*lines);
        } else if (const auto* choice = qobject_cast<const QComboBox*>(control)) {
            content[control] = choice->currentIndex();
        } else if (const auto* button = qobject_cast<const QAbstractButton*>(control)) {
            content[control] = button->isChecked();
        } else if (const auto* label = qobject_cast<const QLabel*>(control)) {
            content[control] = label->text();
        } else if (const auto* list = qobject_cast<const QListWidget*>(control)) {
            QVariantList ticks;
            for (int row = 0; row < list->count(); ++row)
                ticks += list->item(row)->checkState() == Qt::Checked;
            content[control] = ticks;
        }
    }
    return content;
}
