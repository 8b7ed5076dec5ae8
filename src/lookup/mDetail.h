#pragma once

#include <QString>

#include "core/Sites.h"
#include "lookup/LookupWindow.h"
#include "lookup/mCSFD.h"

/// Reads the data of one film from the film databases.
namespace csfd {

/// The window that a reading was started from.
class DetailWindow : public LookupWindow {
 public:
    /// Index of the selected film; -1 when the list has none selected.
    /// @throws RuntimeError 91 when there is no row at all.
    virtual int selectedRow() const = 0;
    /// Path of the selected film. @throws RuntimeError 91 when there is none.
    virtual QString selectedPath() const = 0;

    /// The drop-down list of the original title.
    virtual void clearOtherTitles() = 0;
    virtual void addOtherTitle(const QString& title) = 0;
    virtual void showPosterChoice() = 0;
    virtual void untickPosterChoice() = 0;

    virtual void showStage(const QString& caption) = 0;
    virtual void repaintFields() = 0;
};

/// The pages read last. They are kept between readings, so that a page that cannot be fetched leaves the
/// previous one. A search or another reading that starts meanwhile replaces them.
struct Buffers {
    Page page;          ///< of the film database
    QString otherPage;  ///< of the second one
};

/// Fetches the pages of the selected film and fills the fields from them. A failed download is reported in a
/// message box; other failures are skipped until the line of country, year and length has been read.
/// @throws RuntimeError after that line, if it had its three parts: 5 for a film without a cast and for a
///         poster address without an end. The wait panel is hidden then as well.
void nactiDetail(const Sites& sites, Buffers& buffers, DetailWindow& window);

/// Downloads a page into the folder `data`; a failure is reported in a message box.
bool StahniDetail(const QString& url, const QString& fileName);

}  // namespace csfd
