#include "toolkit/StatusBar.h"

#include <QTest>

#include "support/TemporaryProgram.h"

namespace {

class StatusBarTest : public TemporaryProgram {
 protected:
    StatusBarTest() {
        using Kind = StatusBar::Kind;
        for (const Kind kind : {Kind::date, Kind::time, Kind::capsLock, Kind::numLock, Kind::text})
            bar.addPanel(kind, 1440);
    }

    bool isOn(int panel) const { return bar.findChildren<QLabel*>().at(panel - 1)->isEnabled(); }

    StatusBar bar{nullptr, LockKeys::Source::keyEvents};
};

}  // namespace

TEST_F(StatusBarTest, DateAndTimeFollowTheClockAndAPanelGrowsWithItsText) {
    EXPECT_EQ(bar.panelText(1), u"09.03.2026"_s);
    EXPECT_EQ(bar.panelText(2), u"8:05"_s);
    outside.moment = QDateTime(QDate(2026, 12, 31), QTime(23, 59, 59));
    EXPECT_TRUE(QTest::qWaitFor([this] { return bar.panelText(2) == u"23:59"_s; }));
    EXPECT_EQ(bar.panelText(1), u"31.12.2026"_s);
    bar.resize(900, 24);
    bar.show();
    bar.setPanelText(5, u"  Vypůjčených záznamů : 1234567  "_s);
    QCoreApplication::processEvents();
    const auto* panel = bar.findChildren<QLabel*>().at(4);
    EXPECT_GE(panel->width(), panel->sizeHint().width());
}

TEST_F(StatusBarTest, LockPanelsSayWhatTheKeyEventsSayAndNothingElse) {
    // Pressed, the modifiers that the keyboard sends along, and the panels then: empty, off or on.
    const struct {
        Qt::Key key;
        quint32 scanCode;
        quint32 modifiers;
        QString caps;
        QString num;
    } presses[] = {{Qt::Key_A, 0, 0x12, u""_s, u""_s},  // not from a keyboard
                   {Qt::Key_A, 38, 0x1, u"caps"_s, u"num"_s},
                   {Qt::Key_A, 38, 0x13, u"CAPS"_s, u"NUM"_s},
                   {Qt::Key_CapsLock, 66, 0x10, u"CAPS"_s, u"NUM"_s},
                   {Qt::Key_NumLock, 77, 0x12, u"CAPS"_s, u"num"_s},
                   {Qt::Key_CapsLock, 66, 0x2, u"caps"_s, u"num"_s},
                   {Qt::Key_NumLock, 77, 0, u"caps"_s, u"NUM"_s}};
    const auto shown = [this](int panel) {
        return isOn(panel) ? bar.panelText(panel) : bar.panelText(panel).toLower();
    };
    bar.show();
    for (const auto& [key, scanCode, modifiers, caps, num] : presses) {
        for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease}) {
            QKeyEvent event(type, key, {}, scanCode, 0, modifiers);
            QCoreApplication::sendEvent(bar.windowHandle(), &event);
            EXPECT_EQ(shown(3), caps);
            EXPECT_EQ(shown(4), num);
        }
    }
    emit qGuiApp->applicationStateChanged(Qt::ApplicationInactive);
    EXPECT_EQ(bar.panelText(3) + bar.panelText(4), u""_s);
    StatusBar plain(nullptr, LockKeys::Source::presses);
    plain.addPanel(StatusBar::Kind::capsLock, 600);
    plain.show();
    for (const bool on : {true, false}) {
        QTest::keyClick(plain.windowHandle(), Qt::Key_CapsLock);
        EXPECT_EQ(plain.panelText(1), u"CAPS"_s);
        EXPECT_EQ(plain.findChild<QLabel*>()->isEnabled(), on);
    }
}
