#pragma once

#include <QString>
#include <functional>
#include <vector>

#include "platform/ListEntry.h"

/// How the disc shop's pages are cut. They come as the browser control gives a page's body: tag names in
/// upper case, attribute values bare where they can be.
namespace obchod {

/// The title in the HTML of one link of the list page. @throws RuntimeError 5 when it has no "id_zbozi=".
QString ziskejNazev(const QString& link);

/// The shop's number of the film that a link leads to.
/// @throws RuntimeError 5 when no "&" follows the number, 13 or 6 when it is no 32-bit number.
qint32 GetID(const QString& link);

/// The films on the list page, each title with the shop's number.
/// @throws RuntimeError as the two above do, and 5 for a link without an end.
std::vector<ListEntry> NactiSeznamObchod(const QString& page);

/// The fields of a film's page.
enum class Field {
    czechTitle,
    genre,
    originalTitle,
    director,
    cast,
    length,
    country,
    year,
    description,
    picture
};

/// What a film's page is cut for.
class DetailWindow {
 public:
    DetailWindow() = default;
    virtual ~DetailWindow() = default;
    DetailWindow(const DetailWindow&) = delete;
    DetailWindow& operator=(const DetailWindow&) = delete;

    virtual QString text(Field field) const = 0;
    virtual void setText(Field field, const QString& text) = 0;
    /// Shows a picture file. @throws RuntimeError when it is none.
    virtual void showPicture(const QString& path) = 0;
    virtual void repaintPicture() = 0;
    /// Ends what the browser is doing.
    virtual void stopBrowser() = 0;
    /// Shows that a page is being cut.
    virtual void showWait() = 0;
    virtual void hideWait() = 0;
    /// Lets pending window events run.
    virtual void yield() = 0;
};

/// Cuts all fields out of a film's page and fetches its picture. A row that the page lacks gives an empty
/// field. Whatever fails is skipped.
/// @param shopRoot root address of the shop.
void NactiDetailObchod(const QString& page, const QString& shopRoot, DetailWindow& window);

}  // namespace obchod
