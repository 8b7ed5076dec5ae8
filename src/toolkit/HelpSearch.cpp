#include "toolkit/HelpSearch.h"

#include <QStringList>
#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

// Characters of context on either side of what was found.
constexpr qsizetype before = 40;
constexpr qsizetype behind = 80;

/// Small letters without accents, letter by letter, so that positions stay those of the text.
QString folded(const QString& text) {
    QString letters = text;
    for (QChar& letter : letters) {
        const QString parts = letter.decomposition();
        if (letter.decompositionTag() == QChar::Canonical && !parts.isEmpty()) letter = parts.front();
        letter = letter == u'\u00a0' ? QChar(u' ') : letter.toCaseFolded();
    }
    return letters;
}

QStringList wordsOf(const QString& query) {
    // An accent typed as a character of its own joins its letter.
    return folded(query.normalized(QString::NormalizationForm_C).simplified())
        .split(u' ', Qt::SkipEmptyParts);
}

std::vector<HelpSearch::Place> placesOf(const QString& letters, const QStringList& words) {
    std::vector<HelpSearch::Place> found;
    for (const QString& word : words) {
        for (qsizetype at = letters.indexOf(word); at >= 0; at = letters.indexOf(word, at + word.size()))
            found.push_back({at, word.size()});
    }
    std::sort(found.begin(), found.end(),
              [](const auto& one, const auto& other) { return one.start < other.start; });
    std::vector<HelpSearch::Place> joined;
    for (const HelpSearch::Place& place : found) {
        if (joined.empty() || joined.back().start + joined.back().length <= place.start) {
            joined.push_back(place);
        } else {
            HelpSearch::Place& last = joined.back();
            last.length = std::max(last.start + last.length, place.start + place.length) - last.start;
        }
    }
    return joined;
}

bool startsWord(const QString& letters, qsizetype at) {
    return at == 0 || !letters[at - 1].isLetterOrNumber();
}

bool hasWordThatStartsWith(const QString& letters, const QString& start) {
    for (qsizetype at = letters.indexOf(start); at >= 0; at = letters.indexOf(start, at + 1)) {
        if (startsWord(letters, at)) return true;
    }
    return false;
}

constexpr std::size_t ranks = 3;

/// 0 with a word in the title, 1 when all words stand at the start of words, 2 when some only inside.
std::size_t rankOf(const QString& title, const QString& letters, const QStringList& words) {
    const auto standsIn = [](const QString& text) {
        return [&text](const QString& word) { return hasWordThatStartsWith(text, word); };
    };
    if (std::any_of(words.begin(), words.end(), standsIn(title))) return 0;
    return std::all_of(words.begin(), words.end(), standsIn(letters)) ? 1 : 2;
}

/// The place whose context tells most: below the heading, which mostly repeats the title, and at the start of
/// a word, as far as there is one.
HelpSearch::Place bestPlace(const QString& letters, const QStringList& words) {
    const std::vector<HelpSearch::Place> found = placesOf(letters, words);
    if (found.empty()) return {0, 0};
    const qsizetype heading = letters.indexOf(u'\n');
    const auto isBelow = [heading](const HelpSearch::Place& place) { return place.start > heading; };
    const auto isWord = [&](const HelpSearch::Place& place) {
        return isBelow(place) && startsWord(letters, place.start);
    };
    auto best = std::find_if(found.begin(), found.end(), isWord);
    if (best == found.end()) best = std::find_if(found.begin(), found.end(), isBelow);
    return best == found.end() ? found.front() : *best;
}

/// Whole words around a place.
QString contextOf(const QString& text, const HelpSearch::Place& place) {
    qsizetype start = std::max<qsizetype>(place.start - before, 0);
    qsizetype end = std::min(place.start + place.length + behind, text.size());
    while (start > 0 && start < place.start && !text[start - 1].isSpace())
        ++start;
    while (end < text.size() && end > place.start + place.length && !text[end].isSpace())
        --end;
    const QString words = text.mid(start, end - start).remove(QChar::ObjectReplacementCharacter).simplified();
    return (start > 0 ? u"… "_s : QString()) + words + (end < text.size() ? u" …"_s : QString());
}

}  // namespace

void HelpSearch::add(const QString& page, const QString& title, const QString& text) {
    pages_.push_back({page, title, text, folded(text)});
}

std::vector<HelpSearch::Hit> HelpSearch::find(const QString& query) const {
    const QStringList words = wordsOf(query);
    if (words.isEmpty()) return {};
    std::array<std::vector<Hit>, ranks> hits;
    for (const Page& page : pages_) {
        const QString title = folded(page.title);
        const bool holdsAll = std::all_of(words.begin(), words.end(), [&](const QString& word) {
            return page.folded.contains(word) || title.contains(word);
        });
        if (!holdsAll) continue;
        const Hit hit{page.name, page.title, contextOf(page.text, bestPlace(page.folded, words))};
        hits[rankOf(title, page.folded, words)].push_back(hit);
    }
    std::vector<Hit> inOrder;
    for (std::vector<Hit>& equal : hits)
        inOrder.insert(inOrder.end(), equal.begin(), equal.end());
    return inOrder;
}

std::vector<HelpSearch::Place> HelpSearch::places(const QString& text, const QString& query) {
    return placesOf(folded(text), wordsOf(query));
}
