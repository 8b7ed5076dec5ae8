#include <QMenu>
#include <QToolButton>

#include "catalogue/masterFixture.h"
#include "core/mFunction.h"

using namespace Qt::StringLiterals;

using FrmMasterTest = MasterTest;

TEST_F(FrmMasterTest, TheRightButtonBringsTheMenuOfTheRow) {
    window().show();
    auto* menu = window().findChild<QMenu*>(u"hidMenuListItem"_s);
    ASSERT_NE(menu, nullptr);
    const QPoint second = list().visualRect(list().model()->index(1, 0)).center();
    QTest::mouseClick(list().viewport(), Qt::RightButton, {}, second);
    EXPECT_TRUE(menu->isVisible());
    EXPECT_EQ(list().selectedItem().row(), 1);
    menu->close();
}

TEST_F(FrmMasterTest, EveryToolButtonHasAnIconAndNoCommandIsADeadClick) {
    for (const QToolButton* button : window().findChildren<QToolButton*>()) {
        EXPECT_TRUE(button->text().isEmpty() || !button->icon().pixmap(24).isNull())
            << button->text().toStdString();
    }
    int commands = 0;
    for (const QAction* entry : window().findChildren<QAction*>()) {
        if (entry->isSeparator() || entry->menu() != nullptr || entry->objectName().isEmpty()) continue;
        EXPECT_TRUE(entry->isEnabled()) << entry->objectName().toStdString();
        ++commands;
    }
    EXPECT_GE(commands, 27);
}

TEST_F(FrmMasterTest, SortCommandsReloadTheListInTheirOrder) {
    window().show();
    action("SortKatNum")->trigger();
    EXPECT_EQ(list().itemAt(0).text(), u"10"_s);
    QTest::mouseClick(&control<QToolButton>(window(), "SortCZNameButton"), Qt::LeftButton, {}, QPoint(8, 8));
    EXPECT_EQ(list().itemAt(0).text(), u"9"_s);
    action("SortKatNum")->trigger();
    action("SortCZNameEntry")->trigger();
    EXPECT_EQ(list().itemAt(0).text(), u"9"_s);
}

TEST_F(FrmMasterTest, BackupEntriesLeaveFilesAndScreenUntouched) {
    window().show();
    const QByteArray before = content(catalogue()) + content(pictures());
    const QStringList rowsBefore = rows();
    action("mnuBackup_0")->trigger();
    action("mnuBackup_1")->trigger();
    EXPECT_EQ(content(catalogue()) + content(pictures()), before);
    EXPECT_EQ(rows(), rowsBefore);
    EXPECT_TRUE(outside.boxes.isEmpty());
}

TEST_F(FrmMasterTest, TheListFollowsTheWindow) {
    window().show();
    for (const QSize size : {QSize(718, 480), QSize(1000, 700), QSize(600, 300)}) {
        window().resize(size);
        QCoreApplication::processEvents();
        const QRect inner(list().parentWidget()->rect());
        EXPECT_EQ(inner.bottomRight() - list().geometry().bottomRight(), QPoint(4, 1));
    }
}

TEST_F(FrmMasterTest, ADamagedWidthTextIsToldOnceAndMendedAtTheEnd) {
    const std::tuple<QString, QString, qint32> cases[] = {
        {u"100|200|x|400|500|600|700|"_s, u"100|200|1200|1200|1000|1440|1440|"_s, errors::typeMismatch},
        {u"100|200"_s, u"100|200|1200|1200|1000|1440|1440|"_s, errors::subscriptOutOfRange},
        {u"100||300|400|500|600|700|"_s, u"100|2500|1200|1200|1000|1440|1440|"_s, errors::typeMismatch},
        {u"-5|200|300|400|500|600|700|"_s, u"900|2500|1200|1200|1000|1440|1440|"_s,
         errors::invalidPropertyValue},
        {u"2147483647|2|3|4|5|6|7|"_s, u"900|2500|1200|1200|1000|1440|1440|"_s, errors::invalidPropertyValue},
        {u"99999999999|2|3|4|5|6|7|"_s, u"900|2500|1200|1200|1000|1440|1440|"_s, errors::overflow}};
    for (const auto& [stored, widths, failure] : cases) {
        SCOPED_TRACE(stored.toStdString());
        UlozNastaveni(u"ColSie"_s, stored);
        EXPECT_EQ(window().GetColSizeStr(), widths);
        EXPECT_EQ(outside.told(), u"Chyba :"_s + errors::description(failure) +
                                      u"\n\nfrmMaster/Sub:SetColSizeStr|16|Chyba aplikace:"_s);
        window().show();
        window().close();
        EXPECT_EQ(CtiNastaveni(u"ColSie"_s, u""_s), widths);
        closeWindow();
    }
}
