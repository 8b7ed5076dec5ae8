#include <QMenu>
#include <QSignalSpy>
#include <QTabWidget>
#include <QToolButton>

#include "catalogue/masterFixture.h"
#include "film/frmDVD.h"
#include "film/frmZanry.h"
#include "support/windows.h"
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
    QToolButton& find = button(u"keyFind"_s);
    qsizetype entries = 0;
    QObject::connect(find.menu(), &QMenu::aboutToShow, find.menu(), [&] {
        entries = find.menu()->actions().size();
        QMetaObject::invokeMethod(find.menu(), &QWidget::close, Qt::QueuedConnection);
    });
    QTest::keyClick(&find, Qt::Key_Down);
    EXPECT_EQ(entries, 3);
}

TEST_F(KeyboardTest, EnterPressesTheButtonsOfADictionary) {
    frmZanry genres;
    genres.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&genres));
    EXPECT_EQ(focused(), u"lvwZanr"_s);
    auto& add = control<QToolButton>(genres, "Command1");
    add.setFocus();
    inModalWindow([&add] { QTest::keyClick(&add, Qt::Key_Return); },
                  [](QWidget& record) {
                      EXPECT_EQ(record.windowTitle(), u"Žánr"_s);
                      record.close();
                  });
}

TEST_F(KeyboardTest, EscapeClosesTheGenresOfTheEditorFirstFromWhereverItIsPressed) {
    frmDVD editor;
    editor.show();
    const auto& genres = control<QWidget>(editor, "picZanr");
    auto& title = control<QLineEdit>(editor, "txtCZName");
    click(editor, "Command1");
    ASSERT_TRUE(genres.isVisible());
    QTest::keyClick(&title, Qt::Key_Escape);
    EXPECT_FALSE(genres.isVisible());
    EXPECT_TRUE(editor.isVisible());
    QTest::keyClick(&title, Qt::Key_Escape);
    EXPECT_FALSE(editor.isVisible());
}

TEST_F(KeyboardTest, ControlAndTabTurnThePagesOfTheEditor) {
    frmDVD editor;
    editor.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&editor));
    const auto& tabs = control<QTabWidget>(editor, "tabMain");
    for (const int page : {1, 2, 3, 0}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab, Qt::ControlModifier);
        EXPECT_EQ(tabs.currentIndex(), page);
    }
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(tabs.currentIndex(), 3);
}

TEST_F(KeyboardTest, ABoxIsAsWideAsItsTitle) {
    WindowOutside real;
    const QString title = u"Vyhledávání výrazu: NEJNEOBHOSPODAŘOVÁVATELNĚJŠÍ"_s;
    inModalWindow([&] { real.messageBox(u"Nic."_s, boxStyle::information, title, nullptr); },
                  [&](QWidget& box) {
                      EXPECT_GT(box.width(), box.fontMetrics().horizontalAdvance(title));
                      box.close();
                  });
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
