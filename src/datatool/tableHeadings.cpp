#include "datatool/tableHeadings.h"

#include <QHash>

#include "datatool/foldedText.h"

using namespace Qt::StringLiterals;

namespace {

const struct {
    QStringView target;
    QString headings;
} table[] = {{u"KatCisl", u"Číslo|Č.|Katalogové číslo|Kat. číslo|Evidenční číslo|Ev. číslo|Inv. číslo"_s},
             {u"CZJm", u"Název|Název filmu|Český název|Titul|Film|Title|Name"_s},
             {u"PuvJm", u"Originální název|Orig. název|Původní název|Original Title"_s},
             {u"Zanr", u"Žánr|Žánry|Genre|Genres"_s},
             {u"DiskPocet", u"Počet disků|Počet DVD|Disků|Disky|Discs|Number of Discs"_s},
             {u"Obsah", u"Popis|Obsah filmu|Děj|Plot|Plot Summary|Description|Synopsis"_s},
             {u"Jazyk", u"Jazyky|Zvuk|Language|Languages|Language Tracks"_s},
             {u"Stat", u"Stát|Země|Země původu|Nationality|Country|Countries"_s},
             {u"Rezie", u"Režie|Režisér|Režiséři|Director|Directors"_s},
             {u"Delka", u"Délka|Délka (min)|Stopáž|Running Time|Runtime|Runtime (mins)|Length"_s},
             {u"Rok", u"Rok výroby|Rok vydání|Rok natočení|Year|Production Year|Release Year"_s},
             {u"Herci", u"Hrají|Účinkují|Obsazení|Cast|Actors"_s},
             {u"Poznamka", u"Poznámka|Poznámky|Comment|Comments|Note|Notes"_s},
             {tableHeadings::department, u"Oddeleni|Oddělení|Umístění|Regál|Department"_s},
             {tableHeadings::cover, u"Obal"_s},
             {tableHeadings::preview, u"Nahled|Náhled"_s}};

constexpr qsizetype targetWidth = 10;

QHash<QString, QString> targets() {
    QHash<QString, QString> result;
    for (const auto& [target, headings] : table) {
        for (const QString& heading : headings.split(u'|'))
            result.insert(foldedText(heading), target.toString());
    }
    return result;
}

}  // namespace

QString tableHeadings::targetOf(const QString& heading) {
    static const QHash<QString, QString> known = targets();
    return known.value(foldedText(heading));
}

bool tableHeadings::isEnglishTitle(const QString& heading) {
    const QString folded = foldedText(heading);
    return folded == u"title"_s || folded == u"name"_s;
}

QString tableHeadings::known() {
    QString text;
    for (const auto& [target, headings] : table) {
        QStringList others = headings.split(u'|');
        others.removeAll(target.toString());
        text += u"  %1 %2\n"_s.arg(target.toString().leftJustified(targetWidth), others.join(u", "_s));
    }
    return text;
}
