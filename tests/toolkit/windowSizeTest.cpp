#include <QDialog>
#include <QHeaderView>
#include <QListWidget>
#include <QScreen>
#include <QSignalSpy>
#include <cstdlib>

#include "film/frmDVD.h"
#include "lookup/frmCSFDFind.h"
#include "printing/frmFindObal.h"
#include "support/TemporaryProgram.h"
#include "support/windows.h"
#include "toolkit/ListView.h"
#include "toolkit/letters.h"
#include "toolkit/twips.h"

namespace {

constexpr QSize largeScreen(4000, 3000);

QFont desktopFont(const QString& family, double points) {
    QFont font(family);
    font.setPointSizeF(points);
    return font;
}

class WindowSizeTest : public TemporaryProgram {
 protected:
    ~WindowSizeTest() override { letters::use(letters::fitTo(desktopFont(u"Sans Serif"_s, 9), largeScreen)); }
};

}  // namespace

TEST(LettersTest, TheFactorFollowsSizeWidthAndScreen) {
    const auto factor = [](const QString& family, double points, QSize screen = largeScreen) {
        return letters::fitTo(desktopFont(family, points), screen).factor;
    };
    EXPECT_EQ(factor(u"Sans Serif"_s, 9), 1);  // no desktop names a font
    EXPECT_EQ(factor(u"Liberation Sans"_s, 8.25), 1);
    EXPECT_EQ(factor(u"Liberation Sans"_s, 11), 11 / 8.25);
    EXPECT_GT(factor(u"DejaVu Sans"_s, 10), 1.05 * 10 / 8.25);  // wider letters
    // The film editor still fits, down to letters that can be read.
    const letters::Fit tight = letters::fitTo(desktopFont(u"Liberation Sans"_s, 16.5), {1366, 510});
    EXPECT_EQ(tight.factor, 1.2);
    EXPECT_DOUBLE_EQ(tight.font.pointSizeF(), 1.2 * 8.25);
    for (const QString& family : {u"Liberation Sans"_s, u"Sans Serif"_s}) {
        EXPECT_EQ(factor(family, 9, {683, 374}), 0.88) << family.toStdString();
        EXPECT_EQ(factor(family, 9, {640, 300}), 0.8) << family.toStdString();
    }
}

TEST_F(WindowSizeTest, FormsTheirPlacesAndIconsGrowTogether) {
    const frmDVD laidOut(Sites{});
    letters::use({desktopFont(u"Liberation Sans"_s, 12.375), 1.5});
    const frmDVD editor(Sites{});
    EXPECT_EQ(editor.size(), laidOut.size() * 1.5);
    EXPECT_EQ(editor.size(), editor.minimumSize());
    for (const char* name : {"txtCZName", "cmdSave", "txtPopis", "Frame2", "chkMenu_0"}) {
        const QRect place = control<QWidget>(laidOut, name).geometry();
        const QRect grown = control<QWidget>(editor, name).geometry();
        EXPECT_EQ(grown.left(), qRound(place.left() * 1.5)) << name;
        EXPECT_EQ(grown.bottom() + 1, qRound((place.bottom() + 1) * 1.5)) << name;
    }
    EXPECT_EQ(control<QAbstractButton>(editor, "cmdSaveObal").iconSize().width(),
              qRound(control<QAbstractButton>(laidOut, "cmdSaveObal").iconSize().width() * 1.5));
    ListView list;
    list.setColumns({{u"A"_s, 101}, {u"B"_s, 1500}});
    EXPECT_EQ(list.columnWidthInTwips(0), 101);
    list.header()->resizeSection(1, 300);
    EXPECT_EQ(list.columnWidthInTwips(1), 3000);
}

TEST_F(WindowSizeTest, WindowsStayOnTheScreen) {
    const QRect free = QGuiApplication::primaryScreen()->availableGeometry();
    QWidget sizable;
    sizable.setGeometry(free.adjusted(300, 200, 500, 400));
    QWidget fixed;
    fixed.setFixedSize(400, 300);
    fixed.move(free.bottomRight() - QPoint(100, 100));
    QWidget tooLarge;
    tooLarge.setFixedSize(free.size() * 2);
    for (QWidget* window : {&sizable, &fixed, &tooLarge})
        window->show();
    EXPECT_TRUE(free.contains(sizable.geometry()));
    EXPECT_GT(sizable.height(), free.height() - 60);
    EXPECT_TRUE(free.contains(fixed.geometry()));
    EXPECT_TRUE(free.contains(tooLarge.pos()));
}

TEST_F(WindowSizeTest, DialogsOpenInTheMiddleOfTheirOwner) {
    QWidget owner;
    owner.setGeometry(60, 60, 600, 450);
    owner.show();
    QDialog dialog(&owner);
    dialog.setFixedSize(300, 200);
    dialog.show();
    // Qt leaves room for a frame that it does not know yet.
    const QPoint aside = dialog.geometry().center() - owner.geometry().center();
    EXPECT_LT(std::abs(aside.x()), 50);
    EXPECT_LT(std::abs(aside.y()), 50);
    // The desktop places a window of no place, but only as long as nobody moves it.
    QWidget placeless(&owner, Qt::Dialog);
    placeless.resize(300, 200);
    placeless.show();
    EXPECT_FALSE(placeless.testAttribute(Qt::WA_Moved));
}

TEST_F(WindowSizeTest, BothSearchesGrowWithTheirListsAndTexts) {
    frmFindObal covers(Sites{});
    frmCSFDFind films(Sites{});
    const auto grown = [](QWidget& window, const char* name) {
        const QSize before = control<QWidget>(window, name).size();
        window.resize(window.size() + QSize(100, 80));
        const QSize after = control<QWidget>(window, name).size();
        window.resize(window.size() - QSize(100, 80));
        return after - before;
    };
    covers.show();
    films.show();
    EXPECT_EQ(grown(covers, "lvwDVD"), QSize(100, 80));
    EXPECT_EQ(grown(covers, "imgNahled"), QSize(100, 80));
    EXPECT_EQ(grown(covers, "Command4"), QSize(0, 0));
    EXPECT_EQ(grown(films, "lvwSeznam"), QSize(50, 80));
    EXPECT_EQ(grown(films, "findPopis"), QSize(50, 80));
}

TEST_F(WindowSizeTest, TheLastHeaderAndTheSelectedRowReachToTheEdge) {
    ListView list;
    list.setColumns({{u"A"_s, 900}, {u"B"_s, 900}});
    list.resize(400, 200);
    list.show();
    const QSignalSpy clicked(&list, &ListView::columnClicked);
    QTest::mouseClick(list.header()->viewport(), Qt::LeftButton, {}, QPoint(350, 5));
    EXPECT_EQ(clicked.value(0).value(0).toInt(), 1);
    EXPECT_EQ(list.columnWidthInTwips(1), 900);
    const QImage header = list.header()->grab().toImage();
    EXPECT_EQ(header.pixel(100, header.height() / 2), header.pixel(350, header.height() / 2));
    list.select(list.add(u"K1"_s, {}));
    list.activateWindow();
    list.setFocus();
    ASSERT_TRUE(QTest::qWaitFor([&] { return list.hasFocus(); }));
    // Without a seam where the columns end, also where the row is framed.
    const QRect row = list.visualRect(list.currentIndex());
    const QImage shown = list.viewport()->grab().toImage();
    for (const int y : {row.top(), row.center().y(), row.bottom()}) {
        for (int x = 90; x < 350; ++x)
            ASSERT_EQ(shown.pixelColor(x, y), shown.pixelColor(350, y)) << x << ' ' << y;
    }
}
