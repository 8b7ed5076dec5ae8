#include <QMenu>
#include <QToolButton>

#include "catalogue/masterFixture.h"
#include "core/mFunction.h"
#include "core/mVerze.h"

using namespace Qt::StringLiterals;

using FrmMasterTest = MasterTest;

TEST_F(FrmMasterTest, OnlyCommandsThatNeedARowAreDisabledInAnEmptyList) {
    const QStringList needRow = {u"KeyEdit"_s,       u"KeyPujcitVratit"_s, u"mnuListItem_0"_s,
                                 u"mnuListItem_1"_s, u"mnuListItem_2"_s,   u"mnuListItem_4"_s};
    for (const bool empty : {false, true}) {
        int commands = 0;
        for (const QAction* entry : window().findChildren<QAction*>()) {
            if (entry->isSeparator() || entry->menu() != nullptr || entry->objectName().isEmpty()) continue;
            EXPECT_EQ(entry->isEnabled(), !empty || !needRow.contains(entry->objectName()))
                << entry->objectName().toStdString();
            ++commands;
        }
        EXPECT_GE(commands, 27);
        closeWindow();
        sql("DELETE FROM tDVD");
    }
    for (int column = 0; column < 7; ++column)
        emit list().columnClicked(column);
    EXPECT_EQ(counts(), u"0 0"_s);
}

TEST_F(FrmMasterTest, ButtonsHaveIconsTheListFillsTheWindowAndTheRightButtonOpensItsMenu) {
    EXPECT_EQ(window().windowTitle(), u"Brem DVD Kalvéra "_s + verze::text());
    for (const QToolButton* button : window().findChildren<QToolButton*>()) {
        EXPECT_TRUE(button->text().isEmpty() || !button->icon().pixmap(24).isNull())
            << button->text().toStdString();
    }
    for (const QSize size : {QSize(1000, 700), QSize(600, 300)}) {
        window().resize(size);
        QCoreApplication::processEvents();
        EXPECT_EQ(list().parentWidget()->rect().bottomRight() - list().geometry().bottomRight(),
                  QPoint(4, 1));
    }
    const QPoint second = list().visualRect(list().model()->index(1, 0)).center();
    QTest::mouseClick(list().viewport(), Qt::RightButton, {}, second);
    EXPECT_TRUE(control<QMenu>(window(), "hidMenuListItem").isVisible());
    EXPECT_EQ(list().selectedItem().row(), 1);
    control<QMenu>(window(), "hidMenuListItem").close();
}

TEST_F(FrmMasterTest, SortCommandsReloadTheListAndBackupCommandsDoNothing) {
    const QByteArray before = content(catalogue()) + content(pictures());
    const auto firstAfter = [this](const char* command) {
        action(command)->trigger();
        return list().itemAt(0).text();
    };
    EXPECT_EQ(firstAfter("SortKatNum"), u"10"_s);
    QTest::mouseClick(&control<QToolButton>(window(), "SortCZNameButton"), Qt::LeftButton, {}, {8, 8});
    for (const auto& [command, first] :
         {std::pair("mnuBackup_0", u"9"_s), std::pair("SortKatNum", u"10"_s),
          std::pair("mnuBackup_1", u"10"_s), std::pair("SortCZNameEntry", u"9"_s)})
        EXPECT_EQ(firstAfter(command), first) << command;
    EXPECT_EQ(content(catalogue()) + content(pictures()), before);
    EXPECT_TRUE(outside.boxes.isEmpty());
}

TEST_F(FrmMasterTest, DamagedColumnWidthsAreReportedOnceAndReplacedOnClosing) {
    const std::tuple<const char16_t*, qint32, const char16_t*> cases[] = {
        {u"100|200|x|400|500|600|700|", errors::typeMismatch, u"100|200|"},
        {u"100|200", errors::subscriptOutOfRange, u"100|200|"},
        {u"100||300|400|500|600|700|", errors::typeMismatch, u"100|2500|"},
        {u"-5|200|300|400|500|600|700|", errors::invalidPropertyValue, u"900|2500|"},
        {u"2147483647|2|3|4|5|6|7|", errors::invalidPropertyValue, u"900|2500|"},
        {u"99999999999|2|3|4|5|6|7|", errors::overflow, u"900|2500|"}};
    for (const auto& [stored, failure, applied] : cases) {
        UlozNastaveni(u"ColSie"_s, QString::fromUtf16(stored));
        window().close();
        EXPECT_EQ(CtiNastaveni(u"ColSie"_s, u""_s),
                  QString::fromUtf16(applied) + u"1200|1200|1000|1440|1440|"_s);
        EXPECT_EQ(outside.told(), u"Chyba :"_s + errors::description(failure) +
                                      u"\n\nfrmMaster/Sub:SetColSizeStr|16|Chyba aplikace:"_s);
        closeWindow();
    }
}
