#include "toolkit/StatusBar.h"

#include <QTest>

#include "support/TemporaryProgram.h"

using namespace Qt::StringLiterals;

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

TEST_F(StatusBarTest, DateAndTimeFollowTheClock) {
    EXPECT_EQ(bar.panelText(1), u"09.03.2026"_s);
    EXPECT_EQ(bar.panelText(2), u"8:05"_s);
    outside.moment = QDateTime(QDate(2026, 12, 31), QTime(23, 59, 59));
    EXPECT_TRUE(QTest::qWaitFor([this] { return bar.panelText(2) == u"23:59"_s; }));
    EXPECT_EQ(bar.panelText(1), u"31.12.2026"_s);
}

TEST_F(StatusBarTest, LockPanelsFollowTheKeys) {
    bar.show();
    EXPECT_EQ(bar.panelText(3), u"CAPS"_s);
    EXPECT_EQ(bar.panelText(4), u"NUM"_s);
    EXPECT_FALSE(isOn(3));
    EXPECT_FALSE(isOn(4));
    QTest::keyClick(bar.windowHandle(), Qt::Key_CapsLock);
    EXPECT_TRUE(isOn(3));
    EXPECT_FALSE(isOn(4));
    QTest::keyClick(bar.windowHandle(), Qt::Key_NumLock);
    QTest::keyClick(bar.windowHandle(), Qt::Key_CapsLock);
    EXPECT_FALSE(isOn(3));
    EXPECT_TRUE(isOn(4));
    QTest::keyClick(bar.windowHandle(), Qt::Key_A);
    EXPECT_TRUE(isOn(4));
}

TEST_F(StatusBarTest, APanelGrowsWithItsText) {
    bar.resize(900, 24);
    bar.show();
    auto* panel = bar.findChildren<QLabel*>().at(0);
    bar.setPanelText(1, u"  Vypůjčených záznamů : 1234567  "_s);
    QCoreApplication::processEvents();
    EXPECT_GE(panel->width(), panel->sizeHint().width());
}
