#pragma once

#include <QString>

class ListView;

/// How a column of the main list is sorted.
enum class SortType : qint16 { text = 0, number = 1, date = 2 };

/// -1, 0 or 1 when the first value sorts before, equal to or after the second.
int PorovnejCisla(double first, double second, Qt::SortOrder order);
/// The same for dates, as days.
int PorovnejDatum(double first, double second, Qt::SortOrder order);

/// The sort value of a number cell: the leading number in its first 31 characters; the lowest double for an
/// empty cell.
double sortNumber(QStringView cell);
/// The sort value of a date cell, in days with fraction; 0 for an empty cell and for a text that is no date
/// in the user's regional settings.
double sortDate(QStringView cell);

/// Sorts a list by the numbers or dates in its sort column, in its sort order. Equal rows keep their order.
/// Type `text` does nothing.
void LvwTrid(ListView& list, SortType type);

/// A click on a header: reverses the order, makes the column (from 0) the sort column and sorts. Sorted by
/// text the list keeps itself sorted afterwards; by number or date it does not.
void TridSloupec(ListView& list, int column, SortType type);

/// The column that a search looks in.
enum class FindMode { czechTitle, loanDate, number };

/// The first row in the list's current order that contains the term in the mode's column, ignoring letter
/// case and surrounding blanks; -1 when there is none.
int findRow(const ListView& list, FindMode mode, const QString& term);
