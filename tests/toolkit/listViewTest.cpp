#include "toolkit/ListView.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QHeaderView>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

#include "support/TemporaryProgram.h"

namespace {

class ListViewTest : public testing::Test {
 protected:
    ListViewTest() {
        list.setColumns({{u"Číslo"_s, 900}, {u"Název"_s, 2500}, {u"Žánr"_s, 1000}});
        list.resize(300, 200);
        list.show();
    }

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

TEST_F(ListViewTest, AFillCostsTheViewsOneSignalAndSelectsTheFirstRow) {
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

TEST_F(ListViewTest, AFillKeepsTheSelectedRowOrItsNeighbourInView) {
    const auto refill = [this](const QList<int>& rows,
                               ListView::Selected selected = ListView::Selected::same) {
        {
            const ListView::Fill filling(list, selected);
            list.clear();
            for (const int row : rows)
                list.add(u'K' + QString::number(row), u"x"_s);
        }
        if (!list.hasSelectedItem()) return u"none"_s;
        EXPECT_TRUE(list.viewport()->rect().contains(list.visualRect(list.currentIndex()).center()));
        EXPECT_TRUE(list.selectionModel()->isRowSelected(list.selectedItem().row()));
        return list.selectedItem().key();
    };
    QList<int> rows;
    for (int row = 0; row < 200; ++row)
        rows += row;
    EXPECT_EQ(refill(rows), u"K0"_s);
    list.select(list.item(u"K120"_s));
    list.verticalScrollBar()->setValue(118);
    EXPECT_EQ(refill(rows), u"K120"_s);
    EXPECT_EQ(list.verticalScrollBar()->value(), 118);
    std::reverse(rows.begin(), rows.end());
    EXPECT_EQ(refill(rows), u"K120"_s);
    rows.removeAll(120);
    std::reverse(rows.begin(), rows.end());
    EXPECT_EQ(refill(rows), u"K119"_s);  // the next one in the order before
    list.select(list.item(u"K199"_s));
    rows.removeAll(199);
    EXPECT_EQ(refill(rows), u"K198"_s);
    EXPECT_EQ(refill({5, 6}), u"K6"_s);
    EXPECT_EQ(refill({}), u"none"_s);
    EXPECT_EQ(refill({4, 5, 6, 7}), u"K6"_s);
    EXPECT_EQ(refill({4, 5, 6, 7}, ListView::Selected::first), u"K4"_s);
}

TEST_F(ListViewTest, ARowAddedLaterIsNeitherSelectedNorScrolledTo) {
    fill(200);
    list.select(list.itemAt(3));
    const ListItem last = list.add(u"K999"_s, u"poslední"_s);
    EXPECT_EQ(list.selectedItem().key(), u"K3"_s);
    EXPECT_EQ(last.row(), 200);
    const auto place = [this] { return list.visualRect(list.model()->index(200, 0)).center(); };
    EXPECT_FALSE(list.viewport()->rect().contains(place()));
    list.horizontalScrollBar()->setValue(9);
    list.ensureVisible(last);
    EXPECT_EQ(list.horizontalScrollBar()->value(), 9);
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
