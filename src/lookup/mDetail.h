#pragma once

#include <QString>

#include "core/Sites.h"
#include "lookup/LookupWindow.h"
#include "lookup/mCSFD.h"

/// How the data of one film are read from the film databases.
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

/// The texts of the pages read last. They stay from one reading to the next, so that a page that could not be
/// fetched leaves what there was. A search or another reading begun meanwhile takes their place.
struct Buffers {
    Page page;          ///< of the film database
    QString otherPage;  ///< of the second one
};

/// Fetches the pages of the selected film and cuts its fields out of them. A download that fails is told in a
/// box; what else fails is skipped, up to the line of country, year and length.
/// @throws RuntimeError from there on, when that line had its three parts: 5 for a film without a cast and
/// for
///         a poster address without an end. The wait panel is hidden then as well.
void nactiDetail(const Sites& sites, Buffers& buffers, DetailWindow& window);

/// Downloads a page into the folder `data`; a box tells when that fails.
bool StahniDetail(const QString& url, const QString& fileName);

}  // namespace csfd
