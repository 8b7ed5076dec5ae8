#pragma once

#include <QString>
#include <QStringList>

/// How the result page of the cover archive is cut.
namespace coverPage {

/// A cover found.
struct Cover {
    QString code;  ///< the archive's own; may hold anything
    QString czechTitle;
    QString originalTitle;
    QString language;  ///< "" when not told

    friend bool operator==(const Cover&, const Cover&) = default;
};

/// The options of the page's list of covers, each from its tag up to its end; none when the list is empty.
/// What stands behind the last one is dropped.
/// @throws RuntimeError 5 for a page without that list.
QStringList ZpracujZaznamy(const QString& page);

/// Cuts one option. A label without "&nbsp" has no Czech title, and all but its first four characters are the
/// original one.
/// @throws RuntimeError 5 for an option without two quotes.
Cover ZiskejData(const QString& option);

}  // namespace coverPage
