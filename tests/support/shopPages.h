#pragma once

#include <QString>

/// Pages of the disc shop, as it sends them.
namespace shopPages {

/// A list of so many films, numbered from 100 on.
inline QString listPage(int films) {
    QString links;
    for (int film = 0; film < films; ++film) {
        links +=
            QStringLiteral(
                "<p><a class=\"zbozi\" title=\"Film %1\" href=\"zbozi_video.php?id_zbozi=%2&amp;x=1\"><font "
                "style=\"color:green\">Ztracený</font> dům %1</a></p>")
                .arg(film)
                .arg(film + 100);
    }
    return QStringLiteral("<html><head><meta charset=\"utf-8\"></head><body>") + links +
           QStringLiteral("</body></html>");
}

/// The page of one film.
inline QString filmPage() {
    const auto row = [](const char16_t* label, const char16_t* value) {
        return QStringLiteral("<tr><td>%1</td><td width=\"80%\">%2</td></tr>\r\n")
            .arg(QString::fromUtf16(label), QString::fromUtf16(value));
    };
    return QStringLiteral(
               "<html><head><meta charset=\"utf-8\"></head><body><h2 class=\"title1\">Ztracený dům<a "
               "name=\"x\">*</a></h2><table>") +
           row(u"Žánr:", u"Drama") + row(u"Originální název:", u"&nbsp;") + row(u"Režie:", u"Jan Novák") +
           row(u"Herci:", u"Žofie Černá") + row(u"Délka (min.):", u"118&nbsp;") +
           row(u"Země původu:", u"USA&nbsp;") + row(u"Rok výroby:", u"1999&nbsp;") +
           row(u"Popis:", u"<table><tr><td>x</td></tr></table>Příběh domu,<br>který se ztratil.") +
           QStringLiteral(
               "</table><a href='javascript:open_wnd_photo(\"1\")'><img "
               "src=\"/images/1.png\"></a></body></html>");
}

}  // namespace shopPages
