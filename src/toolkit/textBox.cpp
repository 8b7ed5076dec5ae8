#include "toolkit/textBox.h"

#include <QFocusEvent>
#include <QTextBlock>
#include <QTextCursor>
#include <algorithm>
#include <memory>

#include "platform/index.h"
#include "platform/text.h"

using namespace Qt::StringLiterals;

namespace {

constexpr const char* beingFilled = "beingFilled";

/// Qt looks for the place to break a line from its start to the end of the word, so the time that a word
/// takes grows with the square of its length: 0.3 ms for this one, 20 s for 400,000 letters.
constexpr int longWord = 2000;

bool separatesWords(QChar letter) {
    return letter.isSpace() && letter.decompositionTag() != QChar::NoBreak;
}

bool hasLongWord(const QTextDocument& document) {
    for (QTextBlock line = document.begin(); line.isValid(); line = line.next()) {
        if (line.length() <= longWord) continue;
        const QString text = line.text();
        int length = 0;
        for (const QChar letter : text) {
            length = separatesWords(letter) ? 0 : length + 1;
            if (length > longWord) return true;
        }
    }
    return false;
}

class FromEnd final : public QObject {
 public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::FocusIn) return false;
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason != Qt::TabFocusReason && reason != Qt::BacktabFocusReason &&
            reason != Qt::ShortcutFocusReason)
            return false;
        auto* choice = qobject_cast<QComboBox*>(watched);
        auto* line = choice != nullptr ? choice->lineEdit() : qobject_cast<QLineEdit*>(watched);
        if (line == nullptr) return false;
        // For another reason the box takes the focus without selecting.
        QFocusEvent plain(QEvent::FocusIn, Qt::OtherFocusReason);
        watched->event(&plain);
        const int length = countOf(line->text());
        if (!line->hasSelectedText()) line->setSelection(length, -length);
        return true;
    }
};

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

void textBox::setText(QLineEdit& box, const QString& text) {
    box.setText(text);
    box.setCursorPosition(0);
}

void textBox::setText(QComboBox& box, const QString& text) {
    setText(*box.lineEdit(), text);
}

void textBox::showStarts(QComboBox& box) {
    QObject::connect(&box, &QComboBox::currentIndexChanged, box.lineEdit(),
                     [line = box.lineEdit()] { line->setCursorPosition(0); });
}

void textBox::selectFromEnd(QWidget& form) {
    auto* filter = new FromEnd(&form);
    for (QLineEdit* box : form.findChildren<QLineEdit*>())
        box->installEventFilter(filter);
    for (QComboBox* box : form.findChildren<QComboBox*>())
        box->installEventFilter(filter);
}

void textBox::breakLongWords(QPlainTextEdit& box) {
    // This signal comes before the lines are laid out.
    QObject::connect(box.document(), &QTextDocument::contentsChange, &box, [&box] {
        const QTextOption::WrapMode mode = hasLongWord(*box.document())
                                               ? QTextOption::WrapAnywhere
                                               : QTextOption::WrapAtWordBoundaryOrAnywhere;
        if (box.wordWrapMode() != mode) box.setWordWrapMode(mode);
    });
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
