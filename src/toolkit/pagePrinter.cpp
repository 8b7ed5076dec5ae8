#include "toolkit/pagePrinter.h"

#include <QPainter>
#include <QPrinter>

#include "platform/errors.h"
#include "toolkit/pictureFile.h"

using namespace Qt::StringLiterals;

namespace {
constexpr qreal twipsPerInch = 1440;
}

bool pagePrinter::fits(const PicturePage& page, const QPrinter& printer) {
    QPageLayout layout = printer.pageLayout();
    layout.setOrientation(page.landscape ? QPageLayout::Landscape : QPageLayout::Portrait);
    const QSizeF paper = layout.fullRect(QPageLayout::Inch).size() * twipsPerInch;
    return page.left + page.width <= paper.width() && page.top + page.height <= paper.height();
}

void pagePrinter::print(const PicturePage& page, QPrinter& printer) {
    const qreal dots = printer.resolution() / twipsPerInch;
    const QRectF place(page.left * dots, page.top * dots, page.width * dots, page.height * dots);
    // More pixels than the printer has dots would only take memory.
    const QImage picture = pictureFile::readUpTo(page.picture, place.size().toSize());
    if (picture.isNull())
        throw RuntimeError(errors::printer, u"Obrázek je na tisk příliš velký nebo je poškozený."_s);
    printer.setDocName(page.title);
    printer.setPageOrientation(page.landscape ? QPageLayout::Landscape : QPageLayout::Portrait);
    // Positions are relative to the paper's corner, not to the printable area.
    printer.setFullPage(true);
    QPainter painter;
    if (!painter.begin(&printer)) throw RuntimeError(errors::printer);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(place, picture);
    if (!painter.end() || printer.printerState() == QPrinter::Error) throw RuntimeError(errors::printer);
}
