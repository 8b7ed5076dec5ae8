#pragma once

#include <QString>
#include <QStringList>
#include <vector>

#include "datatool/PairView.h"
#include "datatool/Progress.h"
#include "datatool/findings.h"

/// Looks for damage and contradictions in a pair without writing to it.
namespace check {

/// What was found.
struct Report {
    QString folder;
    QStringList notes;
    QStringList damaged;  // one line for each damaged file
    QStringList indexes;  // wrong or missing indexes, with the file
    std::vector<findings::Kind> kinds;

    bool isClean() const;
    /// One line for each finding and the totals, in Czech.
    QString text() const;
};

/// A line about a file that is damaged, lacks a table or column, or cannot be opened; "" for a sound one.
/// @throws RuntimeError when the file has none of its tables, as one in the place of the other has.
QString damageOf(const PairView::File& file, const Progress& progress);

/// The damaged files of a pair, one line each.
QStringList damaged(const PairView& pair, const Progress& progress);

/// @throws RuntimeError when the files cannot be looked at.
Report run(const QString& folder, const Progress& progress);

/// Lines of the kinds that have any.
QStringList linesOf(const std::vector<findings::Kind>& kinds);

}  // namespace check
