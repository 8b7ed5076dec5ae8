#pragma once

#include <QString>

#include "core/Sites.h"
#include "lookup/mCSFD.h"

/// How the data of one film are read from the film databases.
namespace csfd {

/// The fields that a reading fills.
enum class Field {
    czechTitle,
    originalTitle,
    genre,
    country,
    year,
    length,
    director,
    cast,
    description,
    poster
};

/// What a reading works on: the window that it was started from.
class DetailWindow {
 public:
    DetailWindow() = default;
    virtual ~DetailWindow() = default;
    DetailWindow(const DetailWindow&) = delete;
    DetailWindow& operator=(const DetailWindow&) = delete;

    /// Index of the selected film; -1 when the list has none selected.
    /// @throws RuntimeError 91 when there is no row at all.
    virtual int selectedRow() const = 0;
    /// Path of the selected film. @throws RuntimeError 91 when there is none.
    virtual QString selectedPath() const = 0;

    virtual QString text(Field field) const = 0;
    virtual void setText(Field field, const QString& text) = 0;
    /// The list beside the original title.
    virtual void clearOtherTitles() = 0;
    virtual void addOtherTitle(const QString& title) = 0;
    /// Shows a picture file. @throws RuntimeError when it is none.
    virtual void showPoster(const QString& path) = 0;
    virtual void showPosterChoice() = 0;
    virtual void untickPosterChoice() = 0;

    virtual void showStage(const QString& caption) = 0;
    /// Makes room for the fields and shows that a reading runs.
    virtual void showWait() = 0;
    virtual void hideWait() = 0;
    virtual void repaintFields() = 0;
    /// Lets pending window events run.
    virtual void yield() = 0;
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
