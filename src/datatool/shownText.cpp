#include "datatool/shownText.h"

#include "platform/text.h"

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype longest = 200;

/// Controls, and the marks that turn the direction of what follows.
bool isObeyed(QChar character) {
    const char16_t code = character.unicode();
    return character.category() == QChar::Other_Control || (code >= 0x202A && code <= 0x202E) ||
           (code >= 0x2066 && code <= 0x2069);
}

}  // namespace

QString shownText(const QString& value) {
    QString shown = text::cut(value, longest);
    const bool isCut = shown.size() < value.size();
    shown.replace(u"\r\n"_s, u" "_s);
    for (QChar& character : shown) {
        if (character.isSpace()) {
            character = u' ';
        } else if (isObeyed(character)) {
            character = QChar::ReplacementCharacter;
        }
    }
    return isCut ? shown + u"…"_s : shown;
}
