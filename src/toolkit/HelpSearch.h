#pragma once

#include <QString>
#include <vector>

/// Full-text search in help pages. Letter case and accents are ignored; words may stand inside longer ones.
class HelpSearch final {
 public:
    struct Hit {
        QString page;
        QString title;
        QString context;  ///< some words around the first place found, in one line
    };
    /// A part of a text, in characters.
    struct Place {
        qsizetype start;
        qsizetype length;
    };

    /// Adds a page. Its text is searched, its title too.
    void add(const QString& page, const QString& title, const QString& text);

    /// The pages that hold all words of a query: first those with one in the title, then those where all
    /// stand at the start of words, then the rest, each in the order in which they were added. None for a
    /// query without words.
    std::vector<Hit> find(const QString& query) const;

    /// Where the words of a query stand in a text, in order; places that overlap are joined.
    static std::vector<Place> places(const QString& text, const QString& query);

 private:
    struct Page {
        QString name;
        QString title;
        QString text;
        QString folded;
    };
    std::vector<Page> pages_;
};
