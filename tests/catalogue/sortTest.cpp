#include <QAbstractItemModelTester>
#include <QHeaderView>

#include "catalogue/modSortLvw.h"
#include "support/TemporaryProgram.h"
#include "support/conversions.h"
#include "toolkit/ListView.h"

namespace {

class SortTest : public TemporaryProgram {
 protected:
    SortTest() {
        list.setColumns({{u"Číslo"_s, 9}, {u"Název"_s, 9}, {u""_s, 9}, {u""_s, 9}, {u"Datum"_s, 9}});
    }

    /// Fills the list anew, each row with the number, title and date that a text joins by "|".
    void fill(const QStringList& rows) {
        const ListView::Fill filling(list);
        list.clear();
        for (const QString& row : rows) {
            const ListItem item = list.add(u'K' + QString::number(list.count() + 1), row.section(u'|', 0, 0));
            item.setSubItem(1, row.section(u'|', 1, 1));
            item.setSubItem(4, row.section(u'|', 2));
        }
    }
    QString keys() {
        QString all;
        for (int row = 0; row < list.count(); ++row)
            all += rowCode(list.itemAt(row).key());
        return all;
    }

    ListView list;
    QAbstractItemModelTester tester{list.model(), QAbstractItemModelTester::FailureReportingMode::Fatal};
};

}  // namespace

TEST(SortValues, CellsHaveTheirNumbersAndDates) {
    expectEach([](const QString& cell) { return QString::number(sortNumber(cell)); },
               {u"12a→12", u"abc→0", u" 7→7", u"-3.5x→-3.5", u"1e2→100", u"→-1.79769e+308"});
    expectEach([](const QString& cell) { return QString::number(sortDate(cell)); },
               {u"30.12.1899→0", u"01.01.1900 12:00:00→2.5", u"31.12.1899→1", u"→0", u"zítra→0"});
}

TEST_F(SortTest, EachSortReversesTheDirectionAndIsStable) {
    // Only the first 31 characters of a cell count.
    fill({u"9|chata|02.02.2026 9:00:00"_s, u"100|hora|"_s, u"|Čáp|02.02.2026"_s, u"10|cesta|nesmysl"_s,
          u"9x|Hora|10.01.2026 10:00:00"_s, QString(31, u'0') + u"5000|alibi|03.02.2026"_s});
    const std::tuple<int, SortType, QString> sorts[] = {
        {4, SortType::date, u"613524"_s},   {4, SortType::date, u"245316"_s},
        {0, SortType::number, u"245163"_s}, {0, SortType::number, u"365142"_s},
        {1, SortType::text, u"152346"_s},   {1, SortType::text, u"643521"_s}};
    for (const auto& [column, type, sorted] : sorts) {
        TridSloupec(list, column, type);
        EXPECT_EQ(keys(), sorted);
        EXPECT_EQ(list.sorted(), type == SortType::text);
        EXPECT_EQ(list.header()->sortIndicatorSection(), column);
    }
    EXPECT_EQ(list.header()->sortIndicatorOrder(), Qt::AscendingOrder);
}

TEST_F(SortTest, AListSortedByTextStaysSortedWhenItChanges) {
    fill({u"1|b"_s, u"2|a"_s, u"3|c"_s});
    list.select(list.item(u"K1"));
    TridSloupec(list, 1, SortType::text);
    TridSloupec(list, 1, SortType::text);
    EXPECT_EQ(keys() + list.selectedItem().key(), u"213K1"_s);
    fill({u"1|z"_s, u"2|č"_s, u"3|d"_s});
    EXPECT_EQ(keys() + list.selectedItem().key(), u"231K1"_s);
    EXPECT_TRUE(list.header()->isSortIndicatorShown());
    const ListItem moving = list.item(u"K1");
    moving.setSubItem(1, u"cc"_s);
    EXPECT_EQ(keys(), u"123"_s);
    EXPECT_EQ(moving.row(), 0);
    moving.setSubItem(1, u"čč"_s);
    EXPECT_EQ(keys(), u"213"_s);
    const ListItem added = list.add(u"K4", u"4");
    EXPECT_EQ(keys(), u"4213"_s);
    added.setSubItem(1, u"dd"_s);
    EXPECT_EQ(keys(), u"2134"_s);
    TridSloupec(list, 1, SortType::text);
    list.add(u"K5", u"5").setSubItem(1, u"d"_s);
    EXPECT_EQ(keys(), u"43512"_s);
    TridSloupec(list, 0, SortType::number);
    fill({u"3|z"_s, u"1|č"_s});
    EXPECT_EQ(keys(), u"12"_s);  // numbers are sorted once only
    EXPECT_FALSE(list.header()->isSortIndicatorShown());
}

TEST_F(SortTest, ASearchFindsTheFirstRowThatContainsTheTerm) {
    const auto rowFound = [this](FindMode mode) {
        return [this, mode](const QString& term) { return QString::number(findRow(list, mode, term)); };
    };
    expectEach(rowFound(FindMode::number), {u"→-1"});
    fill({u"120|   |"_s, u"12| Ábel a straße|03.02.2008"_s, u"5|Žena|04.05.2026 9:00:00"_s});
    expectEach(rowFound(FindMode::czechTitle),
               {u"á→1", u" žEn →2", u"zena→-1", u"→1", u"STRASSE→-1", u"straße→1"});
    expectEach(rowFound(FindMode::number), {u"12→0", u"→0", u"7→-1"});
    expectEach(rowFound(FindMode::loanDate), {u"2008→1", u"9:00→2", u"Žena→-1"});
}
