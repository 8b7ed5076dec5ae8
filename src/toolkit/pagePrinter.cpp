#include "toolkit/pagePrinter.h"

#include <QPainter>
#include <QPrinter>

#include "platform/errors.h"
#include "toolkit/pictureFile.h"

namespace {
constexpr qreal twipsPerInch = 1440;
}

void pagePrinter::print(const PicturePage& page, QPrinter& printer) {
    const QImage picture = pictureFile::read(page.picture);
    printer.setDocName(page.title);
    printer.setPageOrientation(page.landscape ? QPageLayout::Landscape : QPageLayout::Portrait);
    // Positions are relative to the paper's corner, not to the printable area.
    printer.setFullPage(true);
    QPainter painter;
    if (!painter.begin(&printer)) throw RuntimeError(errors::printer);
    const qreal dots = printer.resolution() / twipsPerInch;
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(QRectF(page.left * dots, page.top * dots, page.width * dots, page.height * dots),
                      picture);
    if (!painter.end() || printer.printerState() == QPrinter::Error) throw RuntimeError(errors::printer);
}
