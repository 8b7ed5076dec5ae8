#include "support/TemporaryProgram.h"
#include "support/everyWindow.h"
#include "support/windows.h"
#include "toolkit/letters.h"

namespace {

struct DesktopFont {
    const char* family;
    double points;
};

/// Captions fit into their controls, whatever the desktop's font; run a second time at a scale of 1.5.
class CaptionsTest : public TemporaryProgram, public testing::WithParamInterface<DesktopFont> {
 protected:
    CaptionsTest() {
        QFont font(QString::fromLatin1(GetParam().family));
        font.setPointSizeF(GetParam().points);
        EXPECT_EQ(QFontInfo(font).family(), font.family()) << "is not installed";
        letters::use(letters::fitTo(font, largeScreen));
    }
    ~CaptionsTest() override { letters::use(letters::fitTo(QFont(u"Sans Serif"_s, 9), largeScreen)); }

    static constexpr QSize largeScreen{4000, 3000};

    static void expectRoom(QWidget& window) {
        window.show();
        for (const QLabel* label : window.findChildren<QLabel*>()) {
            if (label->text().isEmpty()) continue;
            if (!label->wordWrap()) expectRoom(*label, label->sizeHint().width());
            EXPECT_LE(label->heightForWidth(label->width()), label->height())
                << label->objectName().toStdString();
        }
        for (const auto* button : window.findChildren<QAbstractButton*>()) {
            if (button->text().isEmpty()) continue;
            const int icon = button->icon().isNull() ? 0 : button->iconSize().width();
            expectRoom(*button, button->inherits("QPushButton")
                                    ? button->fontMetrics().horizontalAdvance(button->text()) + 12 + icon
                                    : button->sizeHint().width());
        }
    }
    static void expectRoom(const QWidget& control, int width) {
        if (control.isHidden()) return;
        EXPECT_LE(width, control.width()) << control.objectName().toStdString();
        EXPECT_LE(control.fontMetrics().height(), control.height()) << control.objectName().toStdString();
    }
};

INSTANTIATE_TEST_SUITE_P(Fonts, CaptionsTest,
                         testing::Values(DesktopFont{"Liberation Sans", 8.25},
                                         DesktopFont{"Liberation Sans", 11}, DesktopFont{"DejaVu Sans", 10},
                                         DesktopFont{"DejaVu Sans", 12}, DesktopFont{"Cantarell", 11}));

}  // namespace

TEST_P(CaptionsTest, Fit) {
    sql("INSERT INTO tUser (USID, USNAME, USREGNUM) VALUES (9876, 'Božena Novotná', '9876')");
    outside.printerNames = {u"Hala"_s};
    EveryWindow windows;
    windows.editor.Inicializuj(0);
    windows.rental.Historie_Obnovit();
    windows.rental.Vratit_Obnovit();
    windows.rental.KVypujceni_Obnovit();
    windows.user->loaded().setUSID(9876);
    for (QWidget* window : windows.all()) {
        SCOPED_TRACE(window->objectName().toStdString());
        if (window != &windows.lists) expectRoom(*window);  // its buttons have two lines
    }
    for (const char* page : {"Command4", "Command3"}) {
        click(windows.covers, page);
        expectRoom(windows.covers);
    }
    EXPECT_EQ(outside.told(), u"Chyba při stahování obalu|0|"_s);
}

TEST_P(CaptionsTest, FitOnTwoLinesOfTheButtonsOfThePrintedLists) {
    const frmTisknout lists;
    for (const QPushButton* one : lists.findChildren<QPushButton*>()) {
        const QRect needed = one->fontMetrics().boundingRect(
            QRect(0, 0, one->width() - 12, 1000), static_cast<int>(Qt::AlignCenter) | Qt::TextWordWrap,
            one->text());
        EXPECT_LE(needed.width(), one->width() - 12) << one->objectName().toStdString();
        EXPECT_LE(needed.height(), one->height() - 8) << one->objectName().toStdString();
    }
}
