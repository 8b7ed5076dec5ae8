#include "datatool/foldedText.h"

QString foldedText(const QString& text) {
    QString folded;
    for (const QChar character : text.normalized(QString::NormalizationForm_D).toCaseFolded()) {
        if (character.isMark()) continue;
        folded += character.isLetterOrNumber() ? character : QChar(u' ');
    }
    return folded.simplified();
}
