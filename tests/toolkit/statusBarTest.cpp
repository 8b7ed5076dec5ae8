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

    StatusBar bar;
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

TEST_F(StatusBarTest, LockPanelsFollowTheKeys) {
    bar.show();
    EXPECT_EQ(bar.panelText(3) + bar.panelText(4), u"CAPSNUM"_s);
    const std::tuple<Qt::Key, bool, bool> presses[] = {{Qt::Key_A, false, false},
                                                       {Qt::Key_CapsLock, true, false},
                                                       {Qt::Key_NumLock, true, true},
                                                       {Qt::Key_CapsLock, false, true},
                                                       {Qt::Key_A, false, true}};
    for (const auto& [key, caps, num] : presses) {
        QTest::keyClick(bar.windowHandle(), key);
        EXPECT_EQ(isOn(3), caps);
        EXPECT_EQ(isOn(4), num);
    }
}
