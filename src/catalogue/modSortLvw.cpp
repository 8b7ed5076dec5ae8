#include "catalogue/modSortLvw.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <vector>

#include "platform/dates.h"
#include "platform/index.h"
#include "platform/text.h"
#include "toolkit/ListView.h"

namespace {

constexpr qsizetype charactersRead = 31;

int compare(double first, double second, Qt::SortOrder order) {
    if (first == second) return 0;
    return (first < second) == (order == Qt::AscendingOrder) ? -1 : 1;
}

/// Sorts by values computed once for each row.
template <typename Value, typename Compare>
void sortBy(ListView& list, Value&& value, Compare&& compare) {
    std::vector<double> values;
    values.reserve(toSize(list.count()));
    for (int row = 0; row < list.count(); ++row)
        values.push_back(value(list.cell(row, list.sortKey()).left(charactersRead)));
    std::vector<int> order(values.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&, direction = list.sortOrder()](int left, int right) {
        return compare(elementAt(values, left), elementAt(values, right), direction) < 0;
    });
    list.rearrange(order);
}

int columnOf(FindMode mode) {
    switch (mode) {
        case FindMode::czechTitle:
            return 1;
        // The search "v původním názvu" looks in the loan date.
        case FindMode::loanDate:
            return 4;
        case FindMode::number:
            break;
    }
    return 0;
}

}  // namespace

int PorovnejCisla(double first, double second, Qt::SortOrder order) {
    return compare(first, second, order);
}

int PorovnejDatum(double first, double second, Qt::SortOrder order) {
    return compare(first, second, order);
}

double sortNumber(QStringView cell) {
    return cell.isEmpty() ? std::numeric_limits<double>::lowest() : text::Val(cell);
}

double sortDate(QStringView cell) {
    if (cell.isEmpty()) return 0;
    const QDateTime moment = dates::fromShown(cell.toString());
    if (!moment.isValid()) return 0;
    static const QDateTime dayZero(QDate(1899, 12, 30), QTime(0, 0), Qt::UTC);
    constexpr double secondsOfADay = 86400;
    return static_cast<double>(dayZero.secsTo(moment)) / secondsOfADay;
}

void LvwTrid(ListView& list, SortType type) {
    // Lambdas rather than function pointers, so that comparisons are inlined.
    if (type == SortType::number) {
        sortBy(list, sortNumber,
               [](double a, double b, Qt::SortOrder order) { return PorovnejCisla(a, b, order); });
    } else if (type == SortType::date) {
        sortBy(list, sortDate,
               [](double a, double b, Qt::SortOrder order) { return PorovnejDatum(a, b, order); });
    }
}

void TridSloupec(ListView& list, int column, SortType type) {
    if (type != SortType::text) list.setSorted(false);
    list.setSort(column, list.sortOrder() == Qt::AscendingOrder ? Qt::DescendingOrder : Qt::AscendingOrder);
    if (type != SortType::text) {
        LvwTrid(list, type);
    } else if (!list.sorted()) {
        list.setSorted(true);
    }
}

int findRow(const ListView& list, FindMode mode, const QString& term) {
    const QString wanted = text::trim(text::upperCase(term));
    const int column = columnOf(mode);
    for (int row = 0; row < list.count(); ++row) {
        const QStringView cell = list.cell(row, column);
        // Nothing is found in an empty text, not even an empty term.
        if (!cell.isEmpty() && text::inStr(text::trim(text::upperCase(cell)), wanted) > 0) return row;
    }
    return -1;
}
