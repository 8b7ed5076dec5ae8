#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <vector>

#include "datatool/PairView.h"
#include "datatool/findings.h"

/// Looks for damage and contradictions in a pair without writing to it.
namespace check {

/// What was found.
struct Report {
    QString folder;
    QStringList notes;
    QStringList damaged;  // one line for each damaged file
    QStringList indexes;  // wrong indexes, with the file
    std::vector<findings::Kind> kinds;

    bool isClean() const;
    /// One line for each finding and the totals, in Czech.
    QString text() const;
};

/// The damaged files of a pair, one line each.
/// @param tell is told what is being looked at, in Czech.
QStringList damaged(const PairView& pair, const std::function<void(const QString&)>& tell);

/// @param tell as above.
/// @throws RuntimeError when the files cannot be looked at.
Report run(const QString& folder, const std::function<void(const QString&)>& tell);

/// Lines of the kinds that have any.
QStringList linesOf(const std::vector<findings::Kind>& kinds);

}  // namespace check
