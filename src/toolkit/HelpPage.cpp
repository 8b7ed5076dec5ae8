#include "toolkit/HelpPage.h"

#include <QBuffer>
#include <QImageReader>
#include <QPagedPaintDevice>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>
#include <iterator>

#include "platform/Outside.h"
#include "platform/codepage.h"
#include "toolkit/HelpSearch.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int zooms[] = {HelpPage::smallestZoom, 67, 80, 90, 100, 110, 125, 150, 175, 200, 250,
                         HelpPage::largestZoom};
constexpr qreal percent = 100;

// Dark letters on both, on light and dark pages.
const QColor markedGround(255, 224, 102);
const QColor markedLetters(24, 26, 30);

constexpr qreal printedPoints = 10;
constexpr qreal printMargin = 2 / 2.54;  // inches, set by Qt on each side
constexpr qreal pixelsPerInch = 96;      // of pictures

/// A style sheet or a picture of the help file.
QVariant resource(const ChmFile& file, const QString& path, const HelpLook& look) {
    const QByteArray bytes = file.read(path);
    if (path.endsWith(u".css")) return look.styleSheet(codepage::fromWindows1250(bytes));
    return look.picture(bytes);
}

}  // namespace

HelpPage::HelpPage(const ChmFile& file, QWidget* parent) : QTextBrowser(parent), file_(file) {
    setOpenLinks(false);
    setAccessibleName(u"Stránka nápovědy"_s);
    connect(this, &QTextBrowser::anchorClicked, this, [this](const QUrl& link) {
        if (link.scheme().startsWith(u"http")) {
            Outside::current().openWithDesktop(link.toString());
        } else {
            setSource(source().resolved(link));
        }
    });
    redraw();
}

HelpLook HelpPage::look() const {
    return {.palette = palette(),
            .font = font(),
            .zoom = zoom_ / percent,
            .widestPicture = room(),
            .dotsPerPixel = devicePixelRatioF()};
}

qreal HelpPage::room() const {
    // Counted with the scroll bar, so that it does not depend on the height of the pictures. Beside the text
    // are the margin of the document, that of the style sheet, which grows with the zoom, and in lists their
    // indent.
    const qreal margin = fontMetrics().height() * (1 + zoom_ / percent);
    const qreal beside = 2 * frameWidth() + verticalScrollBar()->sizeHint().width() + 2 * margin;
    return std::max(width() - beside - document()->indentWidth(), 1.0);
}

QVariant HelpPage::loadResource(int type, const QUrl& name) {
    const QUrl whole = source().isEmpty() ? name : source().resolved(name);
    if (type == QTextDocument::ImageResource) {
        QBuffer bytes;
        bytes.setData(file_.read(whole.path()));
        widest_ = std::max(widest_, QImageReader(&bytes).size().width() * zoom_ / percent);
    }
    if (type != QTextDocument::HtmlResource) return resource(file_, whole.path(), look());
    widest_ = 0;
    return codepage::fromWindows1250(file_.read(whole.path()));
}

void HelpPage::redraw() {
    const int kept = place();
    drawnRoom_ = room();
    document()->setDefaultFont(look().zoomedFont());
    document()->setDocumentMargin(fontMetrics().height());
    if (source().isEmpty()) return;
    reload();
    setPlace(kept);
}

void HelpPage::setZoom(int percent) {
    const int limited = std::clamp(percent, smallestZoom, largestZoom);
    if (limited == zoom_) return;
    zoom_ = limited;
    redraw();
}

void HelpPage::zoomBy(int steps) {
    for (; steps > 0; --steps)
        setZoom(*std::upper_bound(std::begin(zooms), std::end(zooms) - 1, zoom_));
    for (; steps < 0; ++steps) {
        const int* const reached = std::lower_bound(std::begin(zooms), std::end(zooms), zoom_);
        setZoom(*std::max(std::begin(zooms), reached - 1));
    }
}

int HelpPage::place() const {
    return verticalScrollBar()->value() == 0 ? 0 : cursorForPosition(QPoint(0, 1)).position();
}

void HelpPage::setPlace(int place) {
    QTextCursor at(document());
    at.setPosition(std::clamp(place, 0, document()->characterCount() - 1));
    QScrollBar& bar = *verticalScrollBar();
    bar.setValue(place <= 0 ? 0 : bar.value() + cursorRect(at).top());
}

void HelpPage::mark(const QString& query) {
    QList<QTextEdit::ExtraSelection> marks;
    for (const HelpSearch::Place& place : HelpSearch::places(document()->toPlainText(), query)) {
        QTextEdit::ExtraSelection mark;
        mark.cursor = QTextCursor(document());
        mark.cursor.setPosition(static_cast<int>(place.start));
        mark.cursor.setPosition(static_cast<int>(place.start + place.length), QTextCursor::KeepAnchor);
        mark.format.setBackground(markedGround);
        mark.format.setForeground(markedLetters);
        marks.append(mark);
    }
    setExtraSelections(marks);
}

void HelpPage::showFirstMark() {
    if (extraSelections().isEmpty()) return;
    QTextCursor first = extraSelections().constFirst().cursor;
    first.setPosition(first.selectionStart());
    // Some lines before it belong to its context.
    QScrollBar& bar = *verticalScrollBar();
    bar.setValue(bar.value() + cursorRect(first).top() - viewport()->height() / 4);
}

void HelpPage::printOn(QPagedPaintDevice& paper) const {
    HelpLook look{.palette = QPalette(Qt::white), .font = font()};
    look.font.setPointSizeF(printedPoints);
    look.palette.setColor(QPalette::WindowText, Qt::black);
    const qreal width = paper.pageLayout().paintRect(QPageLayout::Inch).width();
    QTextDocument printed;
    look.widestPicture = (width - 2 * printMargin) * pixelsPerInch - printed.indentWidth();
    look.dotsPerPixel = 0;
    printed.setResourceProvider(
        [&](const QUrl& name) { return resource(file_, source().resolved(name).path(), look); });
    printed.setDefaultFont(look.font);
    printed.setHtml(codepage::fromWindows1250(file_.read(source().path())));
    printed.print(&paper);
}

void HelpPage::changeEvent(QEvent* event) {
    QTextBrowser::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::PaletteChange) redraw();
}

void HelpPage::resizeEvent(QResizeEvent* event) {
    QTextBrowser::resizeEvent(event);
    if (std::min(widest_, room()) != std::min(widest_, drawnRoom_)) redraw();
}

void HelpPage::wheelEvent(QWheelEvent* event) {
    if (!event->modifiers().testFlag(Qt::ControlModifier)) {
        QTextBrowser::wheelEvent(event);
        return;
    }
    // Fine wheels and touch pads send parts of a step.
    wheel_ += event->angleDelta().y();
    zoomBy(wheel_ / QWheelEvent::DefaultDeltasPerStep);
    wheel_ %= QWheelEvent::DefaultDeltasPerStep;
    event->accept();
}
