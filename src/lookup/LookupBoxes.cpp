#include "lookup/LookupBoxes.h"

#include <QComboBox>

#include "toolkit/loadedText.h"
#include "toolkit/textBox.h"

namespace {
constexpr qsizetype longestText = 65535;
}

QString LookupBoxes::text(LookupField field) const {
    const QWidget* box = boxes_.at(field);
    if (const auto* titles = qobject_cast<const QComboBox*>(box)) return titles->currentText();
    if (const auto* lines = qobject_cast<const QPlainTextEdit*>(box)) return textBox::text(*lines);
    return loadedText::toStore(*qobject_cast<const QLineEdit*>(box));
}

void LookupBoxes::setText(LookupField field, const QString& text) const {
    QWidget* box = boxes_.at(field);
    if (auto* titles = qobject_cast<QComboBox*>(box)) {
        textBox::setText(*titles, text);
    } else if (auto* lines = qobject_cast<QPlainTextEdit*>(box)) {
        textBox::setText(*lines, text.left(longestText));
    } else {
        auto* line = qobject_cast<QLineEdit*>(box);
        loadedText::show(*line, text.left(line->maxLength()));
    }
}

LookupResult LookupBoxes::result(bool withPicture) const {
    return {.czechTitle = text(LookupField::czechTitle),
            .originalTitle = text(LookupField::originalTitle),
            .genre = text(LookupField::genre),
            .country = text(LookupField::country),
            .year = text(LookupField::year),
            .length = text(LookupField::length),
            .director = text(LookupField::director),
            .cast = text(LookupField::cast),
            .description = text(LookupField::description),
            .withPicture = withPicture,
            .picturePath = text(LookupField::picture)};
}
