#pragma once

#include <QByteArray>
#include <QFont>
#include <QImage>
#include <QPalette>
#include <QString>

/// How help pages are drawn. Their style sheet is made for 10 points on white; here it follows the window's
/// font, the zoom and dark colours.
struct HelpLook {
    QPalette palette;
    QFont font;               ///< of the running text
    qreal zoom = 1;           ///< 1 as designed
    qreal widestPicture = 0;  ///< pixels of the page; wider pictures are scaled down; 0 for any width
    qreal dotsPerPixel = 1;   ///< of the paint device; 0 leaves a picture all that it has

    /// The font of text to which the style sheet gives none.
    QFont zoomedFont() const;

    /// A style sheet with sizes in proportion to font and zoom, the font itself in place of sans-serif ones,
    /// and colours for a dark background when the palette is dark.
    QString styleSheet(const QString& designed) const;

    /// A picture at its size on the page; null when the bytes are none.
    QImage picture(const QByteArray& bytes) const;
};
