#include "toolkit/letters.h"

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QFontMetricsF>
#include <QLabel>
#include <QLayout>
#include <QMainWindow>
#include <QRadioButton>
#include <QStatusBar>
#include <QToolBar>
#include <algorithm>
#include <optional>

#include "toolkit/twips.h"

using namespace Qt::StringLiterals;

namespace {

constexpr double layoutPoints = 8.25;
constexpr double pointsPerInch = 72;
constexpr double layoutDpi = 96;

/// Width in pixels of `usualCaptions` in Liberation Sans at 8.25 points and 96 dots per inch, measured with
/// Qt 6.4.
constexpr double layoutWidth = 449;
/// Fonts made to measure for each other differ by this much after hinting.
constexpr double sameWidth = 1.03;

/// The largest window of a fixed size, the film editor, with room for its frame; in pixels of the layout.
constexpr QSize largestFixed(534, 389 + 36);
/// Smaller letters could hardly be read; for a screen of 1366 x 768 at 200 % and a panel this is enough.
constexpr double leastFactor = 0.8;
constexpr double nearly = 0.98;

std::optional<QFont> used;

QString usualCaptions() {
    return u"Katalogové číslo Originální název Český zvuk Režie Země původu Počet disků Uložit Storno"_s;
}

QFont layoutFont() {
    QFont font;
    font.setFamilies({u"Microsoft Sans Serif"_s, u"Liberation Sans"_s, u"Arial"_s, u"Helvetica"_s});
    font.setPointSizeF(layoutPoints);
    return font;
}

/// Qt's font where no desktop names one.
bool isNobodysWish(const QFont& font) {
    constexpr double defaultPoints = 9;
    return font.family() == u"Sans Serif" && font.pointSizeF() == defaultPoints;
}

double pointsOf(const QFont& font) {
    return font.pointSizeF() > 0 ? font.pointSizeF() : font.pixelSize() * pointsPerInch / layoutDpi;
}

double factorFor(const QFont& font) {
    const double bySize = pointsOf(font) / layoutPoints;
    const double byWidth = QFontMetricsF(font).horizontalAdvance(usualCaptions()) / layoutWidth;
    return byWidth > bySize * sameWidth ? byWidth : bySize;
}

QRect scaledPlace(const QRect& place) {
    // Edges rather than sizes, so that controls that touch still do.
    const QPoint first(twips::scaled(place.left()), twips::scaled(place.top()));
    const QPoint behind(twips::scaled(place.left() + place.width()),
                        twips::scaled(place.top() + place.height()));
    return {first, QSize(behind.x() - first.x(), behind.y() - first.y())};
}

QSize scaledSize(const QSize& size) {
    return {twips::scaled(size.width()), twips::scaled(size.height())};
}

int scaledLimit(int limit) {
    return limit >= QWIDGETSIZE_MAX ? limit : twips::scaled(limit);
}

void scaleLimits(QWidget& widget) {
    const QSize least = widget.minimumSize();
    const QSize most = widget.maximumSize();
    widget.setMaximumSize(scaledLimit(most.width()), scaledLimit(most.height()));
    widget.setMinimumSize(scaledSize(least));
}

void scaleLayout(QLayout& layout) {
    const QMargins margins = layout.contentsMargins();
    const int spacing = layout.spacing();
    layout.setContentsMargins(twips::scaled(margins.left()), twips::scaled(margins.top()),
                              twips::scaled(margins.right()), twips::scaled(margins.bottom()));
    if (spacing >= 0) layout.setSpacing(twips::scaled(spacing));
}

/// Parts of controls are placed by these.
bool isOwnControl(const QWidget& widget) {
    const QString name = widget.objectName();
    return !widget.isWindow() && !name.isEmpty() && !name.startsWith(u"qt_");
}

/// Places that a control has for its parts follow from its style.
bool belongsToForm(const QLayout& layout) {
    const QWidget* parent = layout.parentWidget();
    return qobject_cast<const QMainWindow*>(parent) == nullptr &&
           qobject_cast<const QToolBar*>(parent) == nullptr &&
           qobject_cast<const QStatusBar*>(parent) == nullptr;
}

bool isLaidOut(const QWidget& widget) {
    const QLayout* layout = widget.parentWidget() == nullptr ? nullptr : widget.parentWidget()->layout();
    return layout != nullptr && layout->indexOf(&widget) >= 0;
}

/// Fonts differ in the height of their lines more than in that of their letters.
QRect withRoomForALine(const QWidget& widget, const QRect& place) {
    const bool isText = qobject_cast<const QLabel*>(&widget) != nullptr ||
                        qobject_cast<const QCheckBox*>(&widget) != nullptr ||
                        qobject_cast<const QRadioButton*>(&widget) != nullptr;
    const int missing = isText ? QFontMetrics(widget.font()).height() - place.height() : 0;
    return missing > 0 ? place.adjusted(0, -(missing / 2), 0, missing - missing / 2) : place;
}

}  // namespace

letters::Fit letters::fitTo(const QFont& desktop, const QSize& screen) {
    const bool wished = !isNobodysWish(desktop);
    QFont font = wished ? desktop : layoutFont();
    const double wanted = wished ? factorFor(desktop) : 1;
    const double room = std::min(static_cast<double>(screen.width()) / largestFixed.width(),
                                 static_cast<double>(screen.height()) / largestFixed.height());
    // For a few pixels at the edge all places are not rounded anew.
    const bool nearlyFits = room > wanted * nearly;
    const double factor = nearlyFits ? wanted : std::min(wanted, std::max(room, leastFactor));
    if (factor < wanted) font.setPointSizeF(pointsOf(font) * factor / wanted);
    return {font, factor};
}

void letters::use(const Fit& fit) {
    used = fit.font;
    twips::setFactor(fit.factor);
    QApplication::setFont(fit.font);
}

void letters::keepInUse() {
    if (used && QApplication::font() != *used) QApplication::setFont(*used);
}

void letters::scale(QWidget& form) {
    if (twips::factor() == 1) return;
    for (QLayout* layout : form.findChildren<QLayout*>()) {
        if (belongsToForm(*layout)) scaleLayout(*layout);
    }
    for (QWidget* widget : form.findChildren<QWidget*>()) {
        if (!isOwnControl(*widget)) continue;
        const QRect place = scaledPlace(widget->geometry());
        scaleLimits(*widget);
        if (!isLaidOut(*widget)) widget->setGeometry(withRoomForALine(*widget, place));
        if (auto* button = qobject_cast<QAbstractButton*>(widget))
            button->setIconSize(scaledSize(button->iconSize()));
        if (auto* bar = qobject_cast<QToolBar*>(widget)) bar->setIconSize(scaledSize(bar->iconSize()));
    }
    const QSize size = scaledSize(form.size());
    const bool sizeIsGiven = form.testAttribute(Qt::WA_Resized);
    scaleLimits(form);
    if (sizeIsGiven) form.resize(size);
}
