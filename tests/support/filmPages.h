#pragma once

#include <QString>
#include <QStringList>

/// Pages of the film databases in the shape that they are cut in.
namespace filmPages {

/// A search page; each film is its path and its title.
inline QString searchPage(const QList<std::pair<QString, QString>>& films,
                          const QString& heading = QStringLiteral("v českých názvech")) {
    QStringList links;
    for (const auto& [path, title] : films)
        links += QStringLiteral("<a href=\"/film/%1\">%2</a> (1999)").arg(path, title);
    return QStringLiteral(
               "<html><body><a href=\"/film/0-REKLAMA/\">Reklama</a><h3>Hledání %1</h3>\r\n<table><tr><td>"
               "%2<br></td><td><a href=\"/film/9-HEREC/\">Herec</a></td></tr></table></body></html>")
        .arg(heading, links.join(QStringLiteral("<br>\r\n")));
}

/// The plain page of a film, which links to the full one.
inline QString plainPage(const QString& key) {
    return QStringLiteral("<html><body><a href=\"?text=%1\" class=\"vice\">více</a></body></html>").arg(key);
}

/// What a film's full page says. Whatever is empty is left out with its markers.
struct Film {
    QString czechTitle = QStringLiteral("Ztracený dům");
    QString imdb = QStringLiteral("tt0123456");
    QStringList otherTitles = {};
    QString genre = QStringLiteral("Drama / Komedie");
    QString origin = QStringLiteral("USA / Kanada, 1999, 118 min (DVD)");
    QStringList directors = {QStringLiteral("Jan Novák"), QStringLiteral("Petr Malý")};
    QStringList cast = {QStringLiteral("Žofie Černá"), QStringLiteral("Ren&eacute; &amp; syn")};
    QString description = QStringLiteral("Příběh <b>domu</b>,<br>který se ztratil.");
    QString poster = QStringLiteral("posters/1/123.png");
};

inline QString linked(const QStringList& names) {
    QStringList links;
    for (const QString& name : names)
        links += QStringLiteral("<a href=\"/osoba/1\">%1</a>").arg(name);
    return links.join(QStringLiteral(", "));
}

inline QString fullPage(const Film& film, const QString& imdbRoot) {
    const auto unlessEmpty = [](const QString& text, const QString& markup) {
        return text.isEmpty() ? QString() : QString(markup).replace(QStringLiteral("@"), text);
    };
    QString titles;
    for (const QString& title : film.otherTitles)
        titles += QStringLiteral("<tr><td><img src='cz.gif' vspace='2' ></td><td>%1</td></tr>").arg(title);
    return QStringLiteral("<html><body>\r\n") +
           unlessEmpty(
               film.czechTitle,
               QStringLiteral("<h1 style='font-size: 18px;font-weight:bold;color: #000000;font-family: "
                              "Tahoma;display:inline'>\r\n  @</h1>")) +
           unlessEmpty(
               titles,
               QStringLiteral("<span style='font-size: 18px;font-weight:bold;color: #000000;font-family: "
                              "Tahoma;'>Ztracený dům, další</span> <table cellpadding='0' cellspacing='0' "
                              "border='0'>@</table>             <br>")) +
           unlessEmpty(film.genre, QStringLiteral("<br>   <b>@&nbsp;<br>")) +
           unlessEmpty(film.origin, QStringLiteral("@<br>")) +
           unlessEmpty(linked(film.directors), QStringLiteral("<b>Režie:</b> @<br>")) +
           unlessEmpty(linked(film.cast), QStringLiteral("<b>Hrají: </b>@<br>&nbsp;<br></td>")) +
           unlessEmpty(film.description, QStringLiteral("<span class='komentar_font' "
                                                        "style='text-align:justify;width:700px;'>@</span>")) +
           unlessEmpty(film.imdb, QStringLiteral("<a href=\"%1/title/@/combined\">IMDb</a>").arg(imdbRoot)) +
           unlessEmpty(film.poster, QStringLiteral("<img src='/@' width='100'>")) +
           QStringLiteral("</body></html>");
}

inline QString imdbPage(const QString& title) {
    return QStringLiteral("<html><head><title>%1</title></head><body></body></html>").arg(title);
}

}  // namespace filmPages
