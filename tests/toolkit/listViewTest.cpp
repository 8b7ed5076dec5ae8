#include "toolkit/ListView.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QHeaderView>
#include <QSignalSpy>
#include <QTest>

#include "support/TemporaryProgram.h"
#include "toolkit/twips.h"

using namespace Qt::StringLiterals;

namespace {

class ListViewTest : public testing::Test {
 protected:
    ListViewTest() { list.setColumns({{u"Číslo"_s, 900}, {u"Název"_s, 2500}, {u"Žánr"_s, 1000}}); }

    void fill(int rows) {
        const ListView::Fill filling(list);
        list.clear();
        for (int row = 0; row < rows; ++row)
            list.add(u'K' + QString::number(row), QString::number(row));
    }

    ListView list;
    QAbstractItemModelTester tester{list.model(), QAbstractItemModelTester::FailureReportingMode::Fatal};
};

}  // namespace

TEST_F(ListViewTest, RowsAreFoundByTheirKeysHoweverAlike) {
    const QStringList keys = {u"K1"_s,  u"K01"_s,  u"U1"_s,
                              u"1"_s,   u""_s,     u"Kč"_s,
                              u"K65"_s, u"K129"_s, u"K99999999999999999999999"_s};
    for (const QString& key : keys)
        list.add(key, key);
    for (int row = 200; row < 3000; ++row)
        list.add(u"K%1"_s.arg(row * 64), u"x"_s);
    for (int row = 0; row < keys.size(); ++row) {
        EXPECT_EQ(list.item(keys[row]).row(), row);
        EXPECT_EQ(failureOf([&] { list.add(keys[row], u"x"_s); }), errors::duplicateKey);
    }
    EXPECT_EQ(list.count(), 2809);
    EXPECT_EQ(list.item(u"K12800"_s).row(), 9);
    list.item(u"U1"_s).setSubItem(2, u"Drama"_s);
    EXPECT_EQ(list.itemAt(2).text() + list.itemAt(2).subItem(2), u"U1Drama"_s);
    EXPECT_EQ(list.model()->index(2, 2).data().toString(), u"Drama"_s);
    EXPECT_EQ(failureOf([this] { list.item(u"K9"_s); }), errors::elementNotFound);
    EXPECT_EQ(failureOf([this] { list.itemAt(2809); }), errors::subscriptOutOfRange);
    EXPECT_EQ(failureOf([this] { list.item(u"K1"_s).setSubItem(3, u"x"_s); }), errors::invalidPropertyValue);
    EXPECT_EQ(failureOf([this] { list.item(u"K1"_s).subItem(0); }), errors::invalidPropertyValue);
}

TEST_F(ListViewTest, ASortedListTakesRowsWhereTheyBelong) {
    const std::pair<Qt::SortOrder, QString> orders[] = {{Qt::AscendingOrder, u"a b bb c d"_s},
                                                        {Qt::DescendingOrder, u"d c bb b a"_s}};
    for (const auto& [order, expected] : orders) {
        list.setColumns({{u"Název"_s, 900}});
        list.setSort(0, order);
        list.setSorted(true);
        for (const QString& text : {u"b"_s, u"d"_s, u"x"_s, u"a"_s, u"bb"_s})
            list.add(text, text);
        list.item(u"x"_s).setText(u"c"_s);
        QStringList texts;
        for (int row = 0; row < list.count(); ++row)
            texts += list.itemAt(row).text();
        EXPECT_EQ(texts.join(u' '), expected);
    }
}

TEST_F(ListViewTest, CellsKeepTheirTextsWhenOthersGrowOrShrink) {
    fill(3);
    const QStringList texts = {u""_s, u"krátký"_s, u"mnohem delší text než předtím"_s, u"x"_s, u"střední"_s};
    for (const QString& text : texts) {
        list.itemAt(1).setSubItem(1, text);
        list.itemAt(2).setSubItem(1, text + u'!');
        EXPECT_EQ(list.itemAt(1).subItem(1), text);
        EXPECT_EQ(list.itemAt(2).subItem(1), text + u'!');
        EXPECT_EQ(list.itemAt(1).text() + list.itemAt(1).key() + list.itemAt(2).key(), u"1K1K2"_s);
    }
}

TEST_F(ListViewTest, AFillCostsTheViewsOneSignalAndSelectsTheFirstRow) {
    list.show();
    list.add(u"K5"_s, u"starý"_s);
    QSignalSpy inserted(list.model(), &QAbstractItemModel::rowsInserted);
    QSignalSpy changed(list.model(), &QAbstractItemModel::dataChanged);
    QSignalSpy reset(list.model(), &QAbstractItemModel::modelReset);
    QSignalSpy moved(&list, &ListView::selectionMoved);
    {
        const ListView::Fill filling(list);
        list.clear();
        for (int row = 0; row < 100; ++row)
            list.add(u'K' + QString::number(row), u"x"_s);
        list.item(u"K50"_s).setForeColor(91137);
        // A box opened during a fill lets the view paint.
        EXPECT_EQ(list.model()->rowCount(), 0);
        EXPECT_EQ(list.count(), 100);
        QCoreApplication::processEvents();
    }
    EXPECT_EQ(inserted.size(), 0);
    EXPECT_EQ(changed.size(), 0);
    EXPECT_EQ(reset.size(), 2);
    EXPECT_EQ(list.model()->rowCount(), 100);
    EXPECT_EQ(list.selectedItem().key(), u"K0"_s);
    EXPECT_TRUE(list.selectionModel()->isRowSelected(0));
    EXPECT_GE(moved.size(), 1);
    list.item(u"K50"_s).setForeColor(91137);
    list.item(u"K50"_s).setText(u"x"_s);
    EXPECT_EQ(changed.size(), 0);  // nothing has changed
    fill(0);
    EXPECT_FALSE(list.hasSelectedItem());
    EXPECT_EQ(failureOf([this] { list.selectedItem(); }), errors::objectNotSet);
}

TEST_F(ListViewTest, ARowAddedLaterIsNeitherSelectedNorScrolledTo) {
    list.resize(300, 120);
    list.show();
    fill(200);
    list.select(list.itemAt(3));
    const ListItem last = list.add(u"K999"_s, u"poslední"_s);
    EXPECT_EQ(list.selectedItem().key(), u"K3"_s);
    EXPECT_EQ(last.row(), 200);
    const auto place = [this] { return list.visualRect(list.model()->index(200, 0)).center(); };
    EXPECT_FALSE(list.viewport()->rect().contains(place()));
    list.ensureVisible(last);
    EXPECT_TRUE(list.viewport()->rect().contains(place()));
}

TEST_F(ListViewTest, WidthsStayInTwipsUntilTheUserDragsAColumn) {
    EXPECT_EQ(list.columnWidthInTwips(1), 2500);  // 166 2/3 pixels
    EXPECT_EQ(list.columnWidth(1), 167);
    list.header()->resizeSection(1, 120);
    EXPECT_EQ(list.columnWidthInTwips(1), 1800);
    for (const int width : {0, 7, 15, 300}) {
        list.setColumnWidthInTwips(2, width);
        EXPECT_EQ(list.columnWidthInTwips(2), width);
    }
    EXPECT_EQ(failureOf([this] { list.setColumnWidthInTwips(2, -1); }), errors::invalidPropertyValue);
    EXPECT_EQ(list.columnWidthInTwips(2), 300);
}

TEST_F(ListViewTest, NoClickOrKeyDeselectsTheCurrentRow) {
    list.resize(300, 200);
    list.show();
    fill(5);
    const QPoint third = list.visualRect(list.model()->index(2, 0)).center();
    for (int click = 0; click < 2; ++click)
        QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::ControlModifier, third);
    EXPECT_EQ(list.selectedItem().key(), u"K2"_s);
    EXPECT_TRUE(list.selectionModel()->isRowSelected(2));
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Space, Qt::Key_End, Qt::Key_Home}) {
        QTest::keyClick(&list, key, Qt::ControlModifier);
        EXPECT_TRUE(list.selectionModel()->isRowSelected(list.selectedItem().row()));
    }
}

TEST_F(ListViewTest, ReleasingTheRightButtonAsksForTheContextMenu) {
    list.resize(300, 200);
    list.show();
    fill(5);
    QSignalSpy asked(&list, &ListView::contextMenuAsked);
    const QPoint third = list.visualRect(list.model()->index(2, 0)).center();
    QTest::mousePress(list.viewport(), Qt::RightButton, {}, third);
    EXPECT_EQ(asked.size(), 0);
    EXPECT_EQ(list.selectedItem().key(), u"K2"_s);
    QTest::mouseRelease(list.viewport(), Qt::RightButton, {}, third);
    ASSERT_EQ(asked.size(), 1);
    EXPECT_EQ(asked[0][0].toPoint(), list.viewport()->mapToGlobal(third));
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, third);
    QTest::mouseClick(list.viewport(), Qt::MiddleButton, {}, third);
    EXPECT_EQ(asked.size(), 1);
}

TEST(Twips, ArePixelsAtFifteenEach) {
    const std::pair<int, int> cases[] = {{0, 0},       {15, 1},   {50, 3},  {2500, 167},
                                         {10770, 718}, {-30, -2}, {-50, -3}};
    for (const auto& [twips, pixels] : cases)
        EXPECT_EQ(twips::toPixels(twips), pixels);
}
