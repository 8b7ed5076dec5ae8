#pragma once

#include <QString>
#include <QStringList>

/// Parser for the result page of the cover archive.
namespace coverPage {

/// A cover found.
struct Cover {
    QString code;  ///< the archive's own; any text
    QString czechTitle;
    QString originalTitle;
    QString language;  ///< "" when not given

    friend bool operator==(const Cover&, const Cover&) = default;
};

/// The options of the page's list of covers, each from its opening up to its closing tag; none when the list
/// is empty.
/// @throws RuntimeError 5 for a page without that list.
QStringList ZpracujZaznamy(const QString& page);

/// Parses one option. A label without "&nbsp" has no Czech title, and everything after its first four
/// characters is the original title.
/// @throws RuntimeError 5 for an option without two quotes.
Cover ZiskejData(const QString& option);

}  // namespace coverPage
