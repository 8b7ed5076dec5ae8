#pragma once

#include <QString>
#include <vector>

/// How fields are cut out of the film database's pages. A page is one long text; a field stands between two
/// fixed markers, looked for from the top of the page, whatever their letter case.
namespace csfd {

/// A page with what searches in it need, worked out once.
class Page {
 public:
    Page() = default;
    explicit Page(QString text);

    const QString& text() const noexcept { return text_; }
    /// Letter by letter, so that positions are the same in both.
    const QString& upper() const noexcept { return upper_; }

 private:
    QString text_;
    QString upper_;
};

/// What stands between the first start marker and the first end marker behind it, without line ends and
/// leading blanks; "" when either is missing.
QString NajdiTextPolozky(const Page& page, const QString& startMarker, const QString& endMarker);

/// What stands between a start marker and the next slash; "" when either is missing.
QString NajdiURLPolozky(const Page& page, const QString& startMarker);

/// A film that the search has found: its title and its path below `/film/`, both in capitals.
struct FoundFilm {
    QString title;
    QString path;

    friend bool operator==(const FoundFilm&, const FoundFilm&) = default;
};

/// The films on a search page: those with a match in the Czech title when the page has such a list, else
/// those in the original title. Only the first table cell with films is read.
/// @param page is cut down to the part that was read last.
std::vector<FoundFilm> NactiSeznamFilmu(QString& page);

/// The further titles of a film, in the order of their block.
struct OtherTitles {
    bool any = false;  ///< whether there is a block of titles at all
    std::vector<QString> titles;
};

/// Reads the block of further titles. A table that stands less than 21 characters into it counts as none. A
/// title without an end ends the list.
OtherTitles ZpracujDalsiNazvy(const QString& block);

/// The key by which the film's plain page links to its full page; "" when it has no such link.
QString detailKey(const Page& plainPage);

/// An IMDb title without every year from 1900 to 2100 in brackets, and without blanks around it.
QString titleWithoutYear(QString title);

/// Country, year and length.
struct Origin {
    QString country;
    QString year;
    QString length;
};

/// Reads the line of country, year and length.
/// @param origin set when the line has exactly three parts.
/// @return whether it has.
bool cutOrigin(const QString& line, Origin& origin);

/// The names of all links in a piece of a page, each followed by ", ".
QString castOf(const QString& piece);

/// The description in a piece of a page as plain text.
QString descriptionOf(QString piece);

}  // namespace csfd
