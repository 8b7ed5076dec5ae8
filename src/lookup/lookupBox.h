#pragma once

#include <QWidget>

/// The boxes in which a lookup shows what it found, of one line, of several, or with a list of titles.
namespace lookupBox {

QString text(const QWidget& box);

/// Shows a text, cut to what a box holds (32,767 characters in one line, 65,535 in several), so that a page
/// gone wrong does not stall the window.
void setText(QWidget& box, const QString& text);

}  // namespace lookupBox
