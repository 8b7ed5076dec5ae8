#pragma once

#include <QString>

class ListView;

/// How a column of the main list is sorted.
enum class SortType : qint16 { text = 0, number = 1, date = 2 };

/// -1, 0 or 1 as the first value stands before, with or behind the second in the order.
int PorovnejCisla(double first, double second, Qt::SortOrder order);
/// The same for dates, as days.
int PorovnejDatum(double first, double second, Qt::SortOrder order);

/// The number that a cell is sorted by: its leading number, of the first 31 characters; the lowest number
/// there is for an empty cell.
double sortNumber(QStringView cell);
/// The date that a cell is sorted by, in days with their fractions; 0 for a text that is no date by the
/// user's regional settings, as for an empty one.
double sortDate(QStringView cell);

/// Sorts a list by the numbers or dates in its sort column, in its sort order. Equal rows keep their order.
/// Type `text` does nothing.
void LvwTrid(ListView& list, SortType type);

/// A click on a header: turns the order round, makes the column (from 0) the sort column and sorts. By text
/// the list stays sorted from then on; by number or date it does not.
void TridSloupec(ListView& list, int column, SortType type);

/// Which text a search looks at.
enum class FindMode { czechTitle, loanDate, number };

/// The first row, in the list's present order, whose text for the mode holds the term, letter case and blanks
/// at both ends ignored; -1 when there is none.
int findRow(const ListView& list, FindMode mode, const QString& term);
