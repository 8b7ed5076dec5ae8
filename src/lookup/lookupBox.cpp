#include "lookup/lookupBox.h"

#include <QComboBox>

#include "toolkit/loadedText.h"
#include "toolkit/textBox.h"

namespace {
constexpr qsizetype longestText = 65535;
}

QString lookupBox::text(const QWidget& box) {
    if (const auto* titles = qobject_cast<const QComboBox*>(&box)) return titles->currentText();
    if (const auto* lines = qobject_cast<const QPlainTextEdit*>(&box)) return textBox::text(*lines);
    return loadedText::toStore(*qobject_cast<const QLineEdit*>(&box));
}

void lookupBox::setText(QWidget& box, const QString& text) {
    if (auto* titles = qobject_cast<QComboBox*>(&box)) {
        titles->setEditText(text);
    } else if (auto* lines = qobject_cast<QPlainTextEdit*>(&box)) {
        textBox::setText(*lines, text.left(longestText));
    } else {
        auto* line = qobject_cast<QLineEdit*>(&box);
        loadedText::show(*line, text.left(line->maxLength()));
        line->setCursorPosition(0);
    }
}
