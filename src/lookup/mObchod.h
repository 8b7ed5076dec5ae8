#pragma once

#include <QString>
#include <vector>

#include "lookup/LookupWindow.h"
#include "platform/ListEntry.h"

/// Parses the disc shop's pages as the browser control serializes a page's body: tag names in upper case,
/// attribute values unquoted where possible.
namespace obchod {

/// The title in the HTML of one link of the list page. @throws RuntimeError 5 when it has no "id_zbozi=".
QString ziskejNazev(const QString& link);

/// The shop's number of the film that a link leads to.
/// @throws RuntimeError 5 when no "&" follows the number, 13 or 6 when it is no 32-bit number.
qint32 GetID(const QString& link);

/// The films on the list page, each title with the film's number in the shop.
/// @throws RuntimeError as the two above do, and 5 for a link without an end.
std::vector<ListEntry> NactiSeznamObchod(const QString& page);

/// The window that a film's page is read for.
class DetailWindow : public LookupWindow {
 public:
    virtual void repaintPicture() = 0;
    /// Stops loading the page.
    virtual void stopBrowser() = 0;
};

/// Fills all fields from a film's page and downloads its picture. A row missing on the page gets what is left
/// of the previous field, usually nothing. Failures are skipped.
/// @param shopRoot root address of the shop.
void NactiDetailObchod(const QString& page, const QString& shopRoot, DetailWindow& window);

}  // namespace obchod
