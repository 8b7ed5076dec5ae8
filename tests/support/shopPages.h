#pragma once

#include <QString>

/// Pages of the disc shop, as it sends them.
namespace shopPages {

using namespace Qt::StringLiterals;

/// A list of so many films, numbered from 100 on.
inline QString listPage(int films) {
    QString links;
    for (int film = 0; film < films; ++film) {
        links +=
            u"<p><a class=\"zbozi\" title=\"Film %1\" href=\"zbozi_video.php?id_zbozi=%2&amp;x=1\"><font "
            "style=\"color:green\">Ztracený</font> dům %1</a></p>"_s.arg(film)
                .arg(film + 100);
    }
    return u"<html><head><meta charset=\"utf-8\"></head><body>"_s + links + u"</body></html>"_s;
}

/// The page of one film.
inline QString filmPage() {
    const auto row = [](const char16_t* label, const char16_t* value) {
        return u"<tr><td>%1</td><td width=\"80%\">%2</td></tr>\r\n"_s.arg(QString::fromUtf16(label),
                                                                          QString::fromUtf16(value));
    };
    return u"<html><head><meta charset=\"utf-8\"></head><body><h2 class=\"title1\">Ztracený dům<a "
           "name=\"x\">*</a></h2><table>"_s +
           row(u"Žánr:", u"Drama") + row(u"Originální název:", u"&nbsp;") + row(u"Režie:", u"Jan Novák") +
           row(u"Herci:", u"Žofie Černá") + row(u"Délka (min.):", u"118&nbsp;") +
           row(u"Země původu:", u"USA&nbsp;") + row(u"Rok výroby:", u"1999&nbsp;") +
           row(u"Popis:", u"<table><tr><td>x</td></tr></table>Příběh domu,<br>který se ztratil.") +
           u"</table><a href='javascript:open_wnd_photo(\"1\")'><img "
           "src=\"/images/1.png\"></a></body></html>"_s;
}

}  // namespace shopPages
