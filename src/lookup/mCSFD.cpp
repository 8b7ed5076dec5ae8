#include "lookup/mCSFD.h"

#include "lookup/Module1.h"
#include "lookup/webText.h"
#include "platform/text.h"

using namespace Qt::StringLiterals;

csfd::Page::Page(QString text) : text_(std::move(text)), upper_(text::upperCase(text_)) {}

QString csfd::NajdiTextPolozky(const Page& page, const QString& startMarker, const QString& endMarker) {
    const qsizetype found = page.upper().indexOf(text::upperCase(startMarker));
    if (found < 0) return {};
    const qsizetype start = found + startMarker.size();
    const qsizetype end = page.upper().indexOf(text::upperCase(endMarker), start);
    if (end < 0) return {};
    QString field = page.text().sliced(start, end - start);
    field.remove(u'\r').remove(u'\n');
    qsizetype blanks = 0;
    while (blanks < field.size() && field[blanks] == u' ')
        ++blanks;
    return field.sliced(blanks);
}

QString csfd::NajdiURLPolozky(const Page& page, const QString& startMarker) {
    const qsizetype found = page.upper().indexOf(text::upperCase(startMarker));
    if (found < 0) return {};
    const qsizetype start = found + startMarker.size();
    const qsizetype slash = page.text().indexOf(u'/', start);
    return slash < 0 ? QString() : page.text().sliced(start, slash - start);
}

std::vector<csfd::FoundFilm> csfd::NactiSeznamFilmu(QString& page) {
    qsizetype list = page.indexOf(u"v českých názvech");
    if (list < 0) list = page.indexOf(u"v originálních názvech");
    if (list < 0) return {};
    page.remove(0, list);
    const QString upper = text::upperCase(page);
    const qsizetype first = upper.indexOf(u"<A HREF=\"/FILM/");
    if (first < 0) return {};
    // One character of the closing tag stays; without that tag there are no films.
    const qsizetype end = upper.indexOf(u"</TD>", first);
    const qsizetype length = end < 0 ? 0 : end - first + 1;
    page = page.sliced(first, length);

    std::vector<FoundFilm> films;
    constexpr QStringView link = u"HREF=\"/FILM/";
    const auto pieces = QStringView(upper).sliced(first, length).split(u"<BR>");
    for (QStringView piece : pieces) {
        const qsizetype at = piece.indexOf(link);
        if (at < 0) continue;
        piece = piece.sliced(at + link.size());
        const qsizetype quote = piece.indexOf(u'"');
        films.push_back({piece.sliced(piece.indexOf(u'>') + 1).toString().remove(u"</A>"_s),
                         quote < 0 ? QString() : piece.first(quote).toString()});
    }
    return films;
}

csfd::OtherTitles csfd::ZpracujDalsiNazvy(const QString& block) {
    constexpr qsizetype leastBefore = 21;
    constexpr QStringView table = u"<TABLE CELLPADDING='0' CELLSPACING='0' BORDER='0'";
    constexpr QStringView rowEnd = u"</TD></TR>";
    constexpr QStringView flag = u"VSPACE='2' ></TD><TD>";
    OtherTitles result;
    const QString upper = text::upperCase(block);
    const qsizetype start = upper.indexOf(table);
    if (start < leastBefore) return result;
    if (upper.indexOf(rowEnd, start) < 0) return result;
    result.any = true;
    for (qsizetype at = upper.indexOf(flag, start); at >= 0; at = upper.indexOf(flag, at)) {
        at += flag.size();
        const qsizetype end = block.indexOf(u"</", at);
        if (end < 0) break;
        result.titles.push_back(block.sliced(at, end - at));
    }
    return result;
}

QString csfd::detailKey(const Page& plainPage) {
    constexpr QStringView link = u"HREF=\"?TEXT=";
    const qsizetype found = plainPage.upper().indexOf(link);
    if (found < 0) return {};
    const qsizetype start = found + link.size();
    const qsizetype blank = plainPage.text().indexOf(u' ', start);
    // Without a blank the key reaches to the end of the page.
    const QString key = plainPage.text().mid(start, blank < 0 ? -1 : blank - start);
    return QString(key).remove(u'"');
}

QString csfd::titleWithoutYear(QString title) {
    constexpr int firstYear = 1900;
    constexpr int lastYear = 2100;
    for (int year = firstYear; year <= lastYear && title.contains(u'('); ++year)
        title.remove(u'(' + QString::number(year) + u')');
    return text::trim(title);
}

bool csfd::cutOrigin(const QString& line, Origin& origin) {
    const QStringList parts = text::split(line, u',');
    if (parts.size() != 3) return false;
    origin.country = QString(parts[0]).replace(u'/', u',');
    origin.year = text::trim(parts[1]);
    const QString length = text::trim(parts[2]);
    origin.length = length.left(text::inStr(length, u"min") + 2);
    return true;
}

QString csfd::castOf(const QString& piece) {
    QString cast;
    QStringList parts = piece.split(u"</a>"_s);
    parts.removeLast();
    for (const QString& part : parts)
        cast += OdebratTagy(part.sliced(part.indexOf(u'>') + 1)) + u", "_s;
    return cast;
}

QString csfd::descriptionOf(QString piece) {
    constexpr QStringView script = u"</noscript>";
    constexpr QStringView divisions = u"</div></div>";
    piece = OdebratTagy(piece);
    if (const qsizetype at = piece.indexOf(script); at >= 0) {
        piece.remove(0, at);
        if (const qsizetype end = piece.indexOf(divisions); end >= 0) piece.remove(0, end + divisions.size());
    }
    return HtmlNaText(piece);
}
