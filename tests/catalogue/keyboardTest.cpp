#include <QApplication>
#include <QMenu>
#include <QPushButton>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <QToolButton>

#include "catalogue/masterFixture.h"
#include "film/frmDVD.h"
#include "film/frmZanry.h"
#include "toolkit/WindowOutside.h"
#include "toolkit/shades.h"

using namespace Qt::StringLiterals;

namespace {

/// The windows in the hands of somebody without a mouse.
class KeyboardTest : public MasterTest {
 protected:
    void SetUp() override {
        MasterTest::SetUp();
        window().show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
    }

    static QString focused() {
        const auto* button = qobject_cast<QToolButton*>(QApplication::focusWidget());
        return button != nullptr ? button->defaultAction()->objectName()
                                 : QApplication::focusWidget()->objectName();
    }
    QToolButton& button(const QString& action) {
        for (auto* button : window().findChildren<QToolButton*>()) {
            if (button->defaultAction() != nullptr && button->defaultAction()->objectName() == action)
                return *button;
        }
        throw std::runtime_error(action.toStdString());
    }

    /// Runs `work`, which opens a modal window, and `look` on that window before it is closed.
    template <typename Work, typename Look>
    static void inModal(Work&& work, Look&& look) {
        bool met = false;
        QTimer::singleShot(0, qApp, [&] {
            QWidget* modal = QApplication::activeModalWidget();
            if (modal == nullptr) modal = QApplication::activePopupWidget();
            met = modal != nullptr;
            if (!met) return;
            look(*modal);
            modal->close();
        });
        work();
        EXPECT_TRUE(met);
    }
};

}  // namespace

TEST_F(KeyboardTest, TabGoesThroughTheBarsFromLeftToRight) {
    QStringList order;
    for (int step = 0; step < 7; ++step) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        order += focused();
    }
    EXPECT_EQ(order.join(u' '), u"KeyAddNew KeyEdit KeyPujcitVratit keyFind SortCZName keyPrint lvwList"_s);
}

TEST_F(KeyboardTest, EnterPressesAButtonOfABarAndDownOpensItsMenu) {
    const QSignalSpy pressed(action("SortCZName"), &QAction::triggered);
    QTest::keyClick(&button(u"SortCZName"_s), Qt::Key_Return);
    EXPECT_EQ(pressed.count(), 1);
    inModal([this] { QTest::keyClick(&button(u"keyFind"_s), Qt::Key_Down); },
            [](const QWidget& menu) { EXPECT_EQ(menu.actions().size(), 3); });
}

TEST_F(KeyboardTest, EnterPressesTheButtonsOfADictionary) {
    frmZanry genres;
    genres.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&genres));
    EXPECT_EQ(focused(), u"lvwZanr"_s);
    auto* add = genres.findChild<QToolButton*>(u"Command1"_s);
    add->setFocus();
    inModal([add] { QTest::keyClick(add, Qt::Key_Return); },
            [](const QWidget& record) { EXPECT_EQ(record.windowTitle(), u"Žánr"_s); });
}

TEST_F(KeyboardTest, EscapeClosesTheGenresOfTheEditorFirstFromWhereverItIsPressed) {
    frmDVD editor;
    editor.show();
    auto* genres = editor.findChild<QWidget*>(u"picZanr"_s);
    editor.findChild<QPushButton*>(u"Command1"_s)->click();
    ASSERT_TRUE(genres->isVisible());
    QTest::keyClick(editor.findChild<QWidget*>(u"txtCZName"_s), Qt::Key_Escape);
    EXPECT_FALSE(genres->isVisible());
    EXPECT_TRUE(editor.isVisible());
    QTest::keyClick(editor.findChild<QWidget*>(u"txtCZName"_s), Qt::Key_Escape);
    EXPECT_FALSE(editor.isVisible());
}

TEST_F(KeyboardTest, ControlAndTabTurnThePagesOfTheEditor) {
    frmDVD editor;
    editor.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&editor));
    const auto* tabs = editor.findChild<QTabWidget*>(u"tabMain"_s);
    for (const int page : {1, 2, 3, 0}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab, Qt::ControlModifier);
        EXPECT_EQ(tabs->currentIndex(), page);
    }
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(tabs->currentIndex(), 3);
}

TEST_F(KeyboardTest, ABoxIsAsWideAsItsTitle) {
    WindowOutside real;
    const QString title = u"Vyhledávání výrazu: NEJNEOBHOSPODAŘOVÁVATELNĚJŠÍ"_s;
    inModal([&] { real.messageBox(u"Nic."_s, boxStyle::information, title, nullptr); },
            [&](const QWidget& box) { EXPECT_GT(box.width(), box.fontMetrics().horizontalAdvance(title)); });
}

TEST(Shades, DarkLettersAreLighterOnADarkGroundAlone) {
    const struct {
        QColor letters;
        QColor ground;
        bool stays;
    } cases[] = {{{1, 100, 1}, Qt::white, true},
                 {{1, 100, 1}, {27, 30, 32}, false},
                 {Qt::blue, {27, 30, 32}, false},
                 {{120, 255, 120}, {27, 30, 32}, true},
                 {{200, 200, 200}, Qt::white, true}};
    for (const auto& [letters, ground, stays] : cases) {
        const QColor shown = shades::readable(letters, ground);
        EXPECT_EQ(shown == letters, stays) << letters.name().toStdString();
        if (stays) continue;
        EXPECT_NEAR(shown.hslHue(), letters.hslHue(), 2);
        EXPECT_GT(shown.lightness(), ground.lightness() + 100);
    }
}
