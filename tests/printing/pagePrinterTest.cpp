#include "toolkit/pagePrinter.h"

#include <QDir>
#include <QImage>
#include <QPrinter>
#include <QProcess>

#include "support/TemporaryProgram.h"
#include "support/pictures.h"

using namespace Qt::StringLiterals;

namespace {

constexpr double mmPerTwip = 25.4 / 1440;

/// Where a page that has been printed is red, in millimetres from its corner.
struct Measured {
    double left, top, right, bottom, pageWidth, pageHeight;
};

class PagePrinterTest : public TemporaryProgram {
 protected:
    PagePrinterTest() { write(cover, pictureOf(qRgb(255, 0, 0), "JPG", {160, 200})); }

    /// Prints to a PDF file; the paper is A4 unless told otherwise.
    QString printed(int resolution, QPageSize::PageSizeId paper = QPageSize::A4) const {
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(at(u"page.pdf"_s));
        printer.setResolution(resolution);
        printer.setPageSize(QPageSize(paper));
        pagePrinter::print({.picture = cover,
                            .title = u"Obal"_s,
                            .landscape = true,
                            .left = 10,
                            .top = 10,
                            .width = 15600,
                            .height = 10480},
                           printer);
        return printer.outputFileName();
    }

    Measured measure(const QString& pdf) const {
        constexpr int dotsPerMm = 10;
        QProcess poppler;
        poppler.start(u"pdftoppm"_s, {u"-r"_s, u"254"_s, u"-singlefile"_s, u"-png"_s, pdf, at(u"page"_s)});
        EXPECT_TRUE(poppler.waitForFinished());
        const QImage seen(at(u"page.png"_s));
        QRect red;
        for (int y = 0; y < seen.height(); ++y) {
            for (int x = 0; x < seen.width(); ++x) {
                if (qGreen(seen.pixel(x, y)) < 128) red |= QRect(x, y, 1, 1);
            }
        }
        const auto mm = [](int dots) { return double(dots) / dotsPerMm; };
        return {mm(red.left()),       mm(red.top()),    mm(red.right() + 1),
                mm(red.bottom() + 1), mm(seen.width()), mm(seen.height())};
    }

    const QString cover = at(u"data/fobl.jpg"_s);
};

}  // namespace

TEST_F(PagePrinterTest, ACoverHasItsSizeAndPlaceAtEveryResolution) {
    for (const int resolution : {150, 1200}) {
        const Measured seen = measure(printed(resolution));
        EXPECT_NEAR(seen.pageWidth, 297, 0.5);
        EXPECT_NEAR(seen.pageHeight, 210, 0.5);
        EXPECT_NEAR(seen.left, 10 * mmPerTwip, 0.5);
        EXPECT_NEAR(seen.top, 10 * mmPerTwip, 0.5);
        EXPECT_NEAR(seen.right - seen.left, 15600 * mmPerTwip, 0.5);
        EXPECT_NEAR(seen.bottom - seen.top, 10480 * mmPerTwip, 0.5);
    }
    const Measured letter = measure(printed(600, QPageSize::Letter));
    EXPECT_NEAR(letter.pageWidth, 279.4, 0.5);
    EXPECT_NEAR(letter.right - letter.left, 15600 * mmPerTwip, 0.5);
}

TEST_F(PagePrinterTest, WhatCannotBePrintedIsAFailure) {
    QFile(cover).remove();
    EXPECT_EQ(failureOf([&] { printed(300); }), 53);
    write(cover, "<html>");
    EXPECT_EQ(failureOf([&] { printed(300); }), 481);
    EXPECT_FALSE(QFile::exists(at(u"page.pdf"_s)));
    write(cover, pictureOf(0, "JPG"));
    QDir(folder()).mkdir(u"page.pdf"_s);  // what cannot be written to
    EXPECT_EQ(failureOf([&] { printed(300); }), 482);
}
