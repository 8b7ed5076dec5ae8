#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

/// Pages as the film databases send them.
namespace filmPages {

using namespace Qt::StringLiterals;

/// A search page; each film is its path and its title.
inline QString searchPage(const QList<std::pair<QString, QString>>& films,
                          const QString& heading = u"v českých názvech"_s) {
    QStringList links;
    for (const auto& [path, title] : films)
        links += u"<a href=\"/film/%1\">%2</a> (1999)"_s.arg(path, title);
    return u"<html><body><a href=\"/film/0-REKLAMA/\">Reklama</a><h3>Hledání %1</h3>\r\n<table><tr><td>"
           "%2<br></td><td><a href=\"/film/9-HEREC/\">Herec</a></td></tr></table></body></html>"_s.arg(
               heading, links.join(u"<br>\r\n"_s));
}

/// The plain page of a film, which links to the full one.
inline QString plainPage(const QString& key) {
    return u"<html><body><a href=\"?text=%1\" class=\"vice\">více</a></body></html>"_s.arg(key);
}

/// What the full page of a film shows; an empty value is left out with its markup.
struct Film {
    QString czechTitle = u"Ztracený dům"_s;
    QString imdb = u"tt0123456"_s;
    QStringList otherTitles = {};
    QString genre = u"Drama / Komedie"_s;
    QString origin = u"USA / Kanada, 1999, 118 min (DVD)"_s;
    QStringList directors = {u"Jan Novák"_s, u"Petr Malý"_s};
    QStringList cast = {u"Žofie Černá"_s, u"Ren&eacute; &amp; syn"_s};
    QString description = u"Příběh <b>domu</b>,<br>který se ztratil."_s;
    QString poster = u"posters/1/123.png"_s;
};

inline QString linked(const QStringList& names) {
    QStringList links;
    for (const QString& name : names)
        links += u"<a href=\"/osoba/1\">%1</a>"_s.arg(name);
    return links.join(u", "_s);
}

inline QString fullPage(const Film& film, const QString& imdbRoot) {
    QString titles;
    for (const QString& title : film.otherTitles)
        titles += u"<tr><td><img src='cz.gif' vspace='2' ></td><td>%1</td></tr>"_s.arg(title);
    const QString style = u"font-size: 18px;font-weight:bold;color: #000000;font-family: Tahoma;"_s;
    const std::pair<QString, QString> parts[] = {
        {film.czechTitle, u"<h1 style='"_s + style + u"display:inline'>\r\n  @</h1>"_s},
        {titles, u"<span style='"_s + style +
                     u"'>Ztracený dům, další</span> <table cellpadding='0' "
                     "cellspacing='0' border='0'>@</table>             <br>"_s},
        {film.genre, u"<br>   <b>@&nbsp;<br>"_s},
        {film.origin, u"@<br>"_s},
        {linked(film.directors), u"<b>Režie:</b> @<br>"_s},
        {linked(film.cast), u"<b>Hrají: </b>@<br>&nbsp;<br></td>"_s},
        {film.description, u"<span class='komentar_font' style='text-align:justify;width:700px;'>@</span>"_s},
        {film.imdb, u"<a href=\"%1/title/@/combined\">IMDb</a>"_s.arg(imdbRoot)},
        {film.poster, u"<img src='/@' width='100'>"_s}};
    QString page;
    for (const auto& [content, markup] : parts)
        page += content.isEmpty() ? QString() : QString(markup).replace(u"@"_s, content);
    return u"<html><body>\r\n"_s + page + u"</body></html>"_s;
}

inline QString imdbPage(const QString& title) {
    return u"<html><head><title>%1</title></head><body></body></html>"_s.arg(title);
}

/// The pages of the film 1-DUM and its poster, each under its address.
inline QHash<QString, QByteArray> site(const Film& film, const QString& root, const QString& imdbRoot) {
    const QString address = root + u"/film/1-DUM/"_s;
    return {{address, plainPage(u"87"_s).toUtf8()},
            {address + u"?text=87"_s, fullPage(film, imdbRoot).toUtf8()},
            {imdbRoot + u"/title/tt0123456"_s, imdbPage(u" Lost House (1999) "_s).toUtf8()},
            {root + u"/posters/1/123.png"_s, "png"}};
}

}  // namespace filmPages
