#include "toolkit/textBox.h"

#include <QTextBlock>
#include <QTextCursor>
#include <algorithm>
#include <memory>

#include "platform/index.h"
#include "platform/text.h"

using namespace Qt::StringLiterals;

namespace {

constexpr const char* beingFilled = "beingFilled";

/// Removes up to `excess` characters, counted as stored, from the end of the text between two positions.
void dropEnd(QPlainTextEdit& box, int begin, int end, int excess) {
    const QTextDocument& document = *box.document();
    int from = std::min(end, document.characterCount() - 1);
    const int to = from;
    while (from > begin && (excess > 0 || document.characterAt(from).isLowSurrogate())) {
        --from;
        excess -= document.characterAt(from) == QChar::ParagraphSeparator ? 2 : 1;
    }
    if (from == to) return;
    QTextCursor cursor(box.document());
    cursor.joinPreviousEditBlock();
    cursor.setPosition(from);
    cursor.setPosition(to, QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
    cursor.endEditBlock();
}

}  // namespace

QString textBox::text(const QPlainTextEdit& box) {
    QStringList lines;
    for (QTextBlock line = box.document()->begin(); line.isValid(); line = line.next())
        lines += line.text();
    return lines.join(u"\r\n"_s);
}

void textBox::setText(QPlainTextEdit& box, const QString& stored) {
    box.setProperty(beingFilled, true);
    box.setPlainText(stored);
    box.setProperty(beingFilled, false);
}

void textBox::limit(QPlainTextEdit& box, int characters) {
    // The document must not be changed within contentsChange, so the position is only noted there.
    struct Entered {
        int position = 0;
        int length = 0;
    };
    const auto entered = std::make_shared<Entered>();
    QObject::connect(box.document(), &QTextDocument::contentsChange, &box,
                     [entered](int position, int /*removed*/, int added) {
                         *entered = {position, added};
                     });
    QObject::connect(&box, &QPlainTextEdit::textChanged, &box, [&box, entered, characters] {
        if (box.property(beingFilled).toBool()) return;
        const int excess = countOf(textBox::text(box)) - characters;
        if (excess > 0) dropEnd(box, entered->position, entered->position + entered->length, excess);
    });
}

void textBox::keepLettersWhole(QLineEdit& box) {
    QObject::connect(&box, &QLineEdit::textChanged, &box, [&box](const QString& text) {
        const QString whole = text::wholeLetters(text);
        if (whole == text) return;
        const QString before = text::wholeLetters(QStringView(text).left(box.cursorPosition()));
        box.setText(whole);
        box.setCursorPosition(countOf(before));
    });
}
