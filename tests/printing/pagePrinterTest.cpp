#include "toolkit/pagePrinter.h"

#include <QDir>
#include <QImage>
#include <QPrinter>
#include <QProcess>

#include "support/TemporaryProgram.h"
#include "support/pictures.h"

namespace {

class PagePrinterTest : public TemporaryProgram {
 protected:
    PagePrinterTest() { write(cover, pictureOf(qRgb(255, 0, 0), "JPG", {160, 200})); }

    void print(int resolution, QPageSize::PageSizeId paper) const {
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(at(u"page.pdf"_s));
        printer.setResolution(resolution);
        printer.setPageSize(QPageSize(paper));
        pagePrinter::print({.picture = cover,
                            .title = u"Obal"_s,
                            .landscape = true,
                            .left = 1440,
                            .top = 720,
                            .width = 7200,
                            .height = 10080},
                           printer);
    }
    /// The page printed last, 100 dots per inch.
    QImage seen() const {
        QProcess poppler;
        poppler.start(u"pdftoppm"_s,
                      {u"-r"_s, u"100"_s, u"-singlefile"_s, u"-png"_s, at(u"page.pdf"_s), at(u"page"_s)});
        EXPECT_TRUE(poppler.waitForFinished());
        return QImage(at(u"page.png"_s));
    }

    const QString cover = at(u"data/fobl.jpg"_s);
};

}  // namespace

TEST_F(PagePrinterTest, AnythingPrintedHasItsSizeAndPlaceOnEveryPrinter) {
    const std::tuple<int, QPageSize::PageSizeId, QPoint> printers[] = {{150, QPageSize::A4, {1169, 827}},
                                                                       {1200, QPageSize::A4, {1169, 827}},
                                                                       {600, QPageSize::Letter, {1100, 850}}};
    for (const auto& [resolution, paper, size] : printers) {
        print(resolution, paper);
        const QImage page = seen();
        EXPECT_LE((page.rect().bottomRight() - size).manhattanLength(), 3);
        QRect red;
        for (int y = 0; y < page.height(); ++y) {
            for (int x = 0; x < page.width(); ++x) {
                if (qGreen(page.pixel(x, y)) < 128) red |= QRect(x, y, 1, 1);
            }
        }
        EXPECT_LE((red.topLeft() - QPoint(100, 50)).manhattanLength(), 2);
        EXPECT_LE((red.bottomRight() - QPoint(599, 749)).manhattanLength(), 2);
    }
}

TEST_F(PagePrinterTest, WhatCannotBePrintedFails) {
    QFile(cover).remove();
    EXPECT_EQ(failureOf([&] { print(300, QPageSize::A4); }), 53);
    write(cover, "<html>");
    EXPECT_EQ(failureOf([&] { print(300, QPageSize::A4); }), 481);
    EXPECT_FALSE(QFile::exists(at(u"page.pdf"_s)));
    write(cover, pictureOf(0, "JPG"));
    QDir(folder()).mkdir(u"page.pdf"_s);  // cannot be written to
    EXPECT_EQ(failureOf([&] { print(300, QPageSize::A4); }), 482);
}

TEST_F(PagePrinterTest, APictureIsComparedWithThePaperAsItIsTurned) {
    const std::tuple<QPageSize::PageSizeId, bool, bool> papers[] = {{QPageSize::A3, true, true},
                                                                    {QPageSize::A4, true, true},
                                                                    {QPageSize::A4, false, false},
                                                                    {QPageSize::Letter, true, true},
                                                                    {QPageSize::A5, true, false}};
    for (const auto& [paper, landscape, fits] : papers) {
        QPrinter printer;
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setPageSize(QPageSize(paper));
        const PicturePage page{.picture = {},
                               .title = {},
                               .landscape = landscape,
                               .left = 10,
                               .top = 10,
                               .width = 15600,
                               .height = 10480};
        EXPECT_EQ(pagePrinter::fits(page, printer), fits)
            << printer.pageLayout().pageSize().name().toStdString();
    }
}
