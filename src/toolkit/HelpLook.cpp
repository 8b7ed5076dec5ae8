#include "toolkit/HelpLook.h"

#include <QFontInfo>
#include <QRegularExpression>
#include <algorithm>

#include "toolkit/shades.h"

using namespace Qt::StringLiterals;

namespace {

// The style sheet's running text.
constexpr qreal designedPoints = 10;
constexpr qreal designedPixels = 10 * 96.0 / 72;

constexpr int darkestColour = 60;  // of 255; letters below are the plain ones
constexpr int boxLift = 14;        // how much lighter than a dark page its boxes are, of 255
constexpr int strongestBox = 60;   // saturation of a box on a dark page, of 255

/// The size of a font; one that is set in pixels is asked what it comes to.
qreal pointsOf(const QFont& font) {
    return font.pointSizeF() > 0 ? font.pointSizeF() : QFontInfo(font).pointSizeF();
}

/// Replaces each match in a text.
template <typename Replace>
QString replaceAll(const QString& text, const QRegularExpression& pattern, Replace&& replace) {
    QString result;
    qsizetype done = 0;
    for (auto matches = pattern.globalMatch(text); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        result += text.mid(done, match.capturedStart() - done) + replace(match);
        done = match.capturedEnd();
    }
    return result + text.mid(done);
}

/// The colour of a property of a style sheet on a dark page.
QColor onDark(QStringView property, const QColor& colour, const QPalette& palette) {
    const QColor ground = palette.color(QPalette::Base);
    if (property.startsWith(u"border")) return shades::line(palette);
    if (property == u"color") {
        return colour.lightness() < darkestColour ? palette.color(QPalette::Text)
                                                  : shades::readable(colour, ground);
    }
    if (colour == Qt::white) return ground;
    return QColor::fromHsl(std::max(colour.hslHue(), 0), std::min(colour.hslSaturation(), strongestBox),
                           std::min(ground.lightness() + boxLift, 255));
}

}  // namespace

QFont HelpLook::zoomedFont() const {
    QFont zoomed = font;
    zoomed.setPointSizeF(pointsOf(font) * zoom);
    return zoomed;
}

QString HelpLook::styleSheet(const QString& designed) const {
    static const QRegularExpression sansSerif(u"font-family:[^;}]*sans-serif;"_s);
    static const QRegularExpression length(u"(\\d+)(pt|px)"_s);
    static const QRegularExpression colour(u"([a-z-]+)(:[^;}]*)(#[0-9a-f]{6})"_s);
    const int pixels = QFontInfo(font).pixelSize();
    QString sheet = QString(designed).remove(sansSerif);
    sheet = replaceAll(sheet, length, [&](const QRegularExpressionMatch& match) {
        const qreal size = match.captured(1).toDouble() * zoom;
        if (match.captured(2) == u"pt")
            return QString::number(size * pointsOf(font) / designedPoints, 'f', 2) + u"pt"_s;
        return QString::number(std::max(qRound(size * pixels / designedPixels), 1)) + u"px"_s;
    });
    if (!shades::isDark(palette)) return sheet;
    return replaceAll(sheet, colour, [&](const QRegularExpressionMatch& match) {
        return match.captured(1) + match.captured(2) +
               onDark(match.capturedView(1), QColor(match.captured(3)), palette).name();
    });
}

QImage HelpLook::picture(const QByteArray& bytes) const {
    QImage image = QImage::fromData(bytes);
    if (image.isNull()) return image;
    qreal width = image.width() * zoom;
    if (widestPicture > 0) width = std::min(width, widestPicture);
    const qreal dots = dotsPerPixel > 0 ? dotsPerPixel : image.width() / width;
    const int columns = std::max(qRound(width * dots), 1);
    if (columns != image.width()) image = image.scaledToWidth(columns, Qt::SmoothTransformation);
    image.setDevicePixelRatio(dots);
    return image;
}
