#pragma once

#include <QString>
#include <vector>

/// Parses the film database's pages. A field is the text between two fixed markers, searched for from the top
/// of the page, ignoring case.
namespace csfd {

/// A page and its upper-case copy, computed once for all searches.
class Page {
 public:
    Page() = default;
    explicit Page(QString text);

    const QString& text() const noexcept { return text_; }
    /// Has the same positions as text().
    const QString& upper() const noexcept { return upper_; }

 private:
    QString text_;
    QString upper_;
};

/// The text between the first start marker and the next end marker, without line breaks and leading blanks;
/// "" when either is missing.
QString NajdiTextPolozky(const Page& page, const QString& startMarker, const QString& endMarker);

/// The text between a start marker and the next slash; "" when either is missing.
QString NajdiURLPolozky(const Page& page, const QString& startMarker);

/// A film found by a search: its title and its path below `/film/`, both in upper case.
struct FoundFilm {
    QString title;
    QString path;

    friend bool operator==(const FoundFilm&, const FoundFilm&) = default;
};

/// The films on a search page: those whose Czech title matches if the page has such a list, else those whose
/// original title does. Only the first table cell with films is read.
/// @param page is cut down to the part that was read last.
std::vector<FoundFilm> NactiSeznamFilmu(QString& page);

/// The other titles of a film, in page order.
struct OtherTitles {
    bool any = false;  ///< whether the page has a table of titles
    std::vector<QString> titles;
};

/// Parses the block of other titles. A table that begins less than 21 characters into it is ignored. A title
/// without an end tag ends the list.
OtherTitles ZpracujDalsiNazvy(const QString& block);

/// The key by which the film's plain page links to its full page; "" when it has no such link.
QString detailKey(const Page& plainPage);

/// An IMDb title, trimmed, without any year from 1900 to 2100 in parentheses.
QString titleWithoutYear(QString title);

/// Country, year and length.
struct Origin {
    QString country;
    QString year;
    QString length;
};

/// Splits the line of country, year and length.
/// @param origin set if the line has exactly three parts.
/// @return whether it has.
bool cutOrigin(const QString& line, Origin& origin);

/// The names of all links in a piece of a page, each followed by ", ".
QString castOf(const QString& piece);

/// The description in a piece of a page as plain text.
QString descriptionOf(QString piece);

}  // namespace csfd
