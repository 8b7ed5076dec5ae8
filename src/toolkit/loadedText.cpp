#include "toolkit/loadedText.h"

#include "toolkit/textBox.h"

namespace {

constexpr const char* loaded = "loadedText";

/// Remembers the loaded text and what the box made of it.
void keep(QWidget& box, const QString& shown, const QString& stored) {
    box.setProperty(loaded, QStringList{shown, stored});
}

QString unlessChanged(const QWidget& box, const QString& shown) {
    const QStringList kept = box.property(loaded).toStringList();
    return kept.size() == 2 && kept[0] == shown ? kept[1] : shown;
}

}  // namespace

void loadedText::show(QLineEdit& box, const QString& stored) {
    textBox::setText(box, stored);
    keep(box, box.text(), stored);
}

void loadedText::show(QPlainTextEdit& box, const QString& stored) {
    textBox::setText(box, stored);
    keep(box, textBox::text(box), stored);
}

QString loadedText::toStore(const QLineEdit& box) {
    return unlessChanged(box, box.text());
}

QString loadedText::toStore(const QPlainTextEdit& box) {
    return unlessChanged(box, textBox::text(box));
}
