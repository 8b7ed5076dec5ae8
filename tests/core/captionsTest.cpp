#include "catalogue/frmMaster.h"
#include "film/frmDVD.h"
#include "printing/frmFindObal.h"
#include "printing/frmTisknout.h"
#include "rental/SharedUser.h"
#include "rental/frmKlienti.h"
#include "rental/frmPujcDVD.h"
#include "services/frmAbout.h"
#include "services/frmSplash.h"
#include "support/TemporaryProgram.h"
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
            if (!label->text().isEmpty()) expectRoom(*label, label->sizeHint().width());
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
    frmAbout about;
    frmSplash splash;
    frmMaster master(Sites{});
    frmDVD editor(Sites{});
    editor.Inicializuj(0);
    frmFindObal covers(Sites{});
    for (QWidget* window : std::initializer_list<QWidget*>{&about, &splash, &master, &editor, &covers})
        expectRoom(*window);
    outside.printerNames = {u"Hala"_s};
    for (const char* page : {"Command4", "Command3"}) {
        click(covers, page);
        expectRoom(covers);
    }
    EXPECT_EQ(outside.told(), u"Chyba při stahování obalu|0|"_s);
    sql("INSERT INTO tUser (USID, USNAME, USREGNUM) VALUES (9876, 'Božena Novotná', '9876')");
    const auto user = std::make_shared<SharedUser>();
    frmKlienti customers(user);
    customers.Historie_Obnovit();
    customers.Vratit_Obnovit();
    customers.KVypujceni_Obnovit();
    expectRoom(customers);
    frmPujcDVD lending(user);
    expectRoom(lending);
    user->loaded().setUSID(9876);
    expectRoom(user->loaded());
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
