#include <QMenu>
#include <QSignalSpy>
#include <QTabWidget>
#include <QToolButton>

#include "catalogue/masterFixture.h"
#include "support/everyWindow.h"
#include "toolkit/shades.h"

using KeyboardTest = MasterTest;

TEST_F(KeyboardTest, EnterPressesEveryButtonOnceAndEscapeClosesEveryDialog) {
    EveryWindow windows;
    int buttons = 0;
    for (QWidget* each : windows.all()) {
        each->show();
        for (auto* button : each->findChildren<QAbstractButton*>()) {
            if (!button->isVisible() || !button->isEnabled() || button->isCheckable() ||
                button->focusPolicy() == Qt::NoFocus)
                continue;
            // It must not do its work here.
            for (QAction* action : button->actions())
                action->disconnect(SIGNAL(triggered(bool)));
            button->disconnect(SIGNAL(clicked(bool)));
            const QSignalSpy pressed(button, &QAbstractButton::clicked);
            button->setFocus();
            QTest::keyClick(button, Qt::Key_Return);
            QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, {}, {}, true);
            if (!button->property("autoDefault").toBool()) QApplication::sendEvent(button, &held);
            EXPECT_EQ(pressed.count(), 1) << button->objectName().toStdString();
            ++buttons;
        }
        QTest::keyClick(each, Qt::Key_Escape);
        EXPECT_EQ(each->isVisible(), each == &windows.master) << each->windowTitle().toStdString();
    }
    EXPECT_GE(buttons, 45);
}

TEST_F(KeyboardTest, TabReachesTheBarsInOrderAndDownOpensAMenu) {
    for (const QString& next : {u"KeyAddNew"_s, u"KeyEdit"_s, u"KeyPujcitVratit"_s, u"keyFind"_s,
                                u"SortCZName"_s, u"keyPrint"_s, u""_s}) {
        QTest::keyClick(window().focusWidget(), Qt::Key_Tab);
        const auto* button = qobject_cast<QToolButton*>(window().focusWidget());
        EXPECT_EQ(button == nullptr ? u""_s : button->defaultAction()->objectName(), next);
    }
    EXPECT_EQ(window().focusWidget(), &list());
    auto& find = control<QToolButton>(window(), "keyFindButton");
    qsizetype entries = 0;
    QObject::connect(find.menu(), &QMenu::aboutToShow, find.menu(), [&] {
        entries = find.menu()->actions().size();
        QMetaObject::invokeMethod(find.menu(), &QWidget::close, Qt::QueuedConnection);
    });
    QTest::keyClick(&find, Qt::Key_Down);
    EXPECT_EQ(entries, 3);
}

TEST_F(KeyboardTest, EscapeClosesTheGenresOfTheEditorFirstAndControlTabTurnsItsPages) {
    frmDVD editor(Sites{});
    editor.show();
    click(editor, "Command1");
    control<QLineEdit>(editor, "txtCZName").setFocus();
    QTest::keyClick(editor.focusWidget(), Qt::Key_Escape);
    EXPECT_FALSE(control<QWidget>(editor, "picZanr").isVisible());
    EXPECT_TRUE(editor.isVisible());
    for (const auto& [key, page] :
         {std::pair(Qt::Key_Tab, 1), std::pair(Qt::Key_Tab, 2), std::pair(Qt::Key_Backtab, 1),
          std::pair(Qt::Key_Backtab, 0), std::pair(Qt::Key_Backtab, 3), std::pair(Qt::Key_Tab, 0)}) {
        const bool back = key == Qt::Key_Backtab;
        QTest::keyClick(editor.focusWidget(), key,
                        back ? Qt::ControlModifier | Qt::ShiftModifier : Qt::ControlModifier);
        EXPECT_EQ(control<QTabWidget>(editor, "tabMain").currentIndex(), page);
    }
}

TEST(Shades, OnlyDarkLettersOnADarkGroundAreLightened) {
    const QColor dark(27, 30, 32);
    for (const QColor& letters : {QColor(1, 100, 1), QColor(200, 200, 200)})
        EXPECT_EQ(shades::readable(letters, Qt::white), letters);
    EXPECT_EQ(shades::readable({120, 255, 120}, dark), QColor(120, 255, 120));
    for (const QColor& letters : {QColor(1, 100, 1), QColor(Qt::blue)}) {
        EXPECT_NEAR(shades::readable(letters, dark).hslHue(), letters.hslHue(), 2);
        EXPECT_GT(shades::readable(letters, dark).lightness(), dark.lightness() + 100);
    }
}
