#include <QAbstractItemModelTester>
#include <QHeaderView>
#include <QTest>
#include <limits>

#include "catalogue/modSortLvw.h"
#include "support/TemporaryProgram.h"
#include "toolkit/ListView.h"

using namespace Qt::StringLiterals;

namespace {

class SortTest : public TemporaryProgram {
 protected:
    SortTest() { list.setColumns({{u"Číslo"_s, 900}, {u"Název"_s, 900}, {u"Datum"_s, 900}}); }

    void fill(const QList<QStringList>& rows) {
        const ListView::Fill filling(list);
        list.clear();
        for (const QStringList& row : rows) {
            const ListItem item = list.add(u'K' + QString::number(list.count() + 1), row.value(0));
            item.setSubItem(1, row.value(1));
            item.setSubItem(2, row.value(2));
        }
    }

    QString keys() {
        QString all;
        for (int row = 0; row < list.count(); ++row)
            all += list.itemAt(row).key().mid(1);
        return all;
    }

    ListView list;
    QAbstractItemModelTester tester{list.model(), QAbstractItemModelTester::FailureReportingMode::Fatal};
};

}  // namespace

TEST_F(SortTest, CellsHaveTheirNumbersAndDates) {
    const std::pair<QString, double> numbers[] = {
        {u"12a"_s, 12},     {u"abc"_s, 0},   {u" 7"_s, 7},
        {u"-3.5x"_s, -3.5}, {u"1e2"_s, 100}, {u""_s, -std::numeric_limits<double>::max()}};
    for (const auto& [cell, number] : numbers)
        EXPECT_EQ(sortNumber(cell), number) << cell.toStdString();
    EXPECT_EQ(sortDate(u"30.12.1899"), 0);
    EXPECT_EQ(sortDate(u"01.01.1900 12:00:00"), 2.5);
    EXPECT_EQ(sortDate(u"31.12.1899"), 1);
    EXPECT_EQ(sortDate(u""), 0);
    EXPECT_EQ(sortDate(u"zítra"), 0);
}

TEST_F(SortTest, EachClickTurnsTheOrderRoundWhateverTheColumn) {
    fill({{u"9"_s, u"chata"_s},
          {u"100"_s, u"hora"_s},
          {u""_s, u"Čáp"_s},
          {u"10"_s, u"cesta"_s},
          {u"9x"_s, u"Hora"_s}});
    TridSloupec(list, 0, SortType::number);
    EXPECT_EQ(keys(), u"24153"_s);  // descending first; equal numbers keep their order
    EXPECT_FALSE(list.sorted());
    TridSloupec(list, 0, SortType::number);
    EXPECT_EQ(keys(), u"31542"_s);
    TridSloupec(list, 1, SortType::text);
    EXPECT_EQ(keys(), u"15234"_s);  // chata, then both horas as they stood (5 before 2), čáp, cesta
    EXPECT_TRUE(list.sorted());
    EXPECT_EQ(list.header()->sortIndicatorSection(), 1);
    EXPECT_EQ(list.header()->sortIndicatorOrder(), Qt::DescendingOrder);
    TridSloupec(list, 1, SortType::text);
    EXPECT_EQ(keys(), u"43521"_s);
}

TEST_F(SortTest, OnlyTheFirstThirtyOneCharactersOfACellAreRead) {
    fill({{u"2"_s}, {QString(31, u'0') + u"5"_s}, {u"1"_s}});
    TridSloupec(list, 0, SortType::number);
    EXPECT_EQ(keys(), u"132"_s);
}

TEST_F(SortTest, DatesSortByTimeAndFilmsInTheShelfStandTogetherAtTheLowEnd) {
    fill({{u"1"_s, u""_s, u"02.02.2026 9:00:00"_s},
          {u"2"_s, u""_s, u""_s},
          {u"3"_s, u""_s, u"02.02.2026"_s},
          {u"4"_s, u""_s, u"nesmysl"_s},
          {u"5"_s, u""_s, u"10.01.2026 10:00:00"_s}});
    TridSloupec(list, 2, SortType::date);
    EXPECT_EQ(keys(), u"13524"_s);
    TridSloupec(list, 2, SortType::date);
    EXPECT_EQ(keys(), u"24531"_s);
}

TEST_F(SortTest, ASortedListKeepsItsOrderThroughFillsAndChanges) {
    fill({{u"1"_s, u"b"_s}, {u"2"_s, u"a"_s}, {u"3"_s, u"c"_s}});
    list.select(list.item(u"K3"));
    TridSloupec(list, 1, SortType::text);
    TridSloupec(list, 1, SortType::text);
    EXPECT_EQ(keys(), u"213"_s);
    EXPECT_EQ(list.selectedItem().key(), u"K3"_s);
    fill({{u"1"_s, u"z"_s}, {u"2"_s, u"č"_s}, {u"3"_s, u"d"_s}});
    EXPECT_EQ(keys(), u"231"_s);
    EXPECT_EQ(list.selectedItem().key(), u"K2"_s);
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
    TridSloupec(list, 0, SortType::number);
    fill({{u"3"_s, u"z"_s}, {u"1"_s, u"č"_s}});
    EXPECT_EQ(keys(), u"12"_s);  // in the order of the fill again, and the header says nothing of another
    EXPECT_FALSE(list.header()->isSortIndicatorShown());
}

TEST_F(SortTest, ASecondClickSoonAfterTheFirstTellsItsColumnToo) {
    list.resize(400, 200);
    list.show();
    QList<int> clicked;
    QObject::connect(&list, &ListView::columnClicked, &list, [&clicked](int column) { clicked += column; });
    QTest::mouseDClick(list.header()->viewport(), Qt::LeftButton, {},
                       QPoint(list.header()->sectionPosition(2) + 20, 8));
    EXPECT_EQ(clicked, QList<int>{2});
}

TEST_F(SortTest, ASearchFindsTheFirstRowThatHoldsTheTerm) {
    ListView films;
    films.setColumns({{u"a"_s, 1}, {u"b"_s, 1}, {u"c"_s, 1}, {u"d"_s, 1}, {u"e"_s, 1}, {u"f"_s, 1}});
    const auto add = [&films](const QString& number, const QString& title, const QString& date) {
        const ListItem item = films.add(u'K' + number, number);
        item.setSubItem(1, title);
        item.setSubItem(4, date);
        item.setSubItem(5, u"Original"_s);
    };
    add(u"120"_s, u"   "_s, u""_s);
    add(u"12"_s, u" Ábel a straße"_s, u"03.02.2008"_s);
    add(u"5"_s, u"Žena"_s, u"04.05.2026 9:00:00"_s);
    const std::tuple<FindMode, QString, int> cases[] = {
        {FindMode::czechTitle, u"á"_s, 1},        {FindMode::czechTitle, u" žEn "_s, 2},
        {FindMode::czechTitle, u"zena"_s, -1},    {FindMode::czechTitle, u""_s, 1},
        {FindMode::czechTitle, u"STRASSE"_s, -1}, {FindMode::czechTitle, u"straße"_s, 1},
        {FindMode::number, u"12"_s, 0},           {FindMode::number, u""_s, 0},
        {FindMode::number, u"7"_s, -1},           {FindMode::loanDate, u"2008"_s, 1},
        {FindMode::loanDate, u"9:00"_s, 2},       {FindMode::loanDate, u"Original"_s, -1}};
    for (const auto& [mode, term, row] : cases)
        EXPECT_EQ(findRow(films, mode, term), row) << term.toStdString();
    films.clear();
    EXPECT_EQ(findRow(films, FindMode::number, u""_s), -1);
}
