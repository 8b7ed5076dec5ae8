#include "datatool/LoadReport.h"

#include <QDir>
#include <algorithm>

#include "datatool/shownText.h"

using namespace Qt::StringLiterals;

namespace {

QString list(const QString& heading, const QStringList& items) {
    QStringList shown;
    for (const QString& item : items)
        shown += shownText(item);
    return items.isEmpty() ? QString() : u"%1: %2\n"_s.arg(heading, shown.join(u", "_s));
}

/// @param rest where to find the lines beyond `most`.
QString listing(const QString& heading, const QStringList& lines, qsizetype most, const QString& rest) {
    if (lines.isEmpty()) return {};
    QString text = u"\n%1:\n- "_s.arg(heading) + lines.first(std::min(lines.size(), most)).join(u"\n- "_s);
    if (lines.size() > most) text += u"\n… a dalších: %1%2"_s.arg(QString::number(lines.size() - most), rest);
    return text + u'\n';
}

QString separatorName(QChar separator) {
    return separator == u';'    ? u"středník"_s
           : separator == u','  ? u"čárka"_s
           : separator == u'\t' ? u"tabulátor"_s
                                : u"„%1“"_s.arg(separator);
}

}  // namespace

QString LoadReport::text(qsizetype most) const {
    QString text =
        u"Přidání filmů ze souboru\n\nZe souboru: %1 (kódování %2, oddělovač %3)\nDo složky: %4\n\n"
        "Filmů v souboru: %5\n%6: %7\nOdmítnuto: 0\n"_s.arg(
            QDir::toNativeSeparators(csv), encoding, separatorName(separator),
            QDir::toNativeSeparators(folder), QString::number(read),
            isDryRun ? u"Přidalo by se filmů"_s : u"Přidáno filmů"_s, QString::number(added));
    if (skipped > 0)
        text += u"Vynecháno, protože v katalogu už jsou nebo se v tabulce opakují: %1\n"_s.arg(skipped);
    if (pictures > 0)
        text += u"%1: %2\n"_s.arg(isDryRun ? u"Uložilo by se obrázků"_s : u"Uloženo obrázků"_s).arg(pictures);
    if (unlinked > 0)
        text += u"Vynecháno odkazů na obrázky, které u těchto filmů v katalogu nejsou: %1\n"_s.arg(unlinked);
    if (unlisted > 0) {
        text +=
            u"Filmy bez katalogového čísla nebo jazyka, které seznam neukáže nebo se u nich zastaví "
            "(doplní je kalvera-data repair): %1\n"_s.arg(unlisted);
    }
    if (!foreignTitle.isEmpty())
        text += u"Sloupec „%1“ se vzal jako původní název.\n"_s.arg(shownText(foreignTitle));
    text += list(u"Vynechané sloupce"_s, ignored);
    text += list(u"Nová oddělení"_s, departments);
    text += list(areGenresAdded ? u"Nové žánry v číselníku"_s
                                : u"Žánry, které číselník nemá (přidá je volba --add-genres)"_s,
                 genres);
    const QString rest = isDryRun ? QString() : u" (jmenuje je soubor load.txt)"_s;
    text += listing(u"Řádky, které ve známých sloupcích nic nemají a film z nich není"_s, empty, most, rest);
    text += listing(u"Filmy bez názvu"_s, untitled, most, rest);
    text += listing(u"Už v katalogu"_s, known, most, rest);
    text += listing(u"Opakují se v tabulce"_s, repeated, most, rest);
    return text + u'\n' + verdict() + u'\n';
}

QString LoadReport::verdict() const {
    if (!agrees()) return u"POZOR, nesouhlasí to: v katalogu nepřibylo tolik filmů, kolik je v souboru."_s;
    if (isDryRun) return u"Byla to jen zkouška, nic se nezapsalo."_s;
    if (skipped > 0)
        return u"Vše souhlasí: v katalogu přibyly všechny filmy ze souboru, které v něm ještě nebyly."_s;
    const QString all = u"Vše souhlasí: v katalogu přibyly všechny filmy ze souboru."_s;
    const qsizetype twice = known.size() + repeated.size();
    return twice == 0 ? all
                      : all +
                            u" POZOR, některé jsou v něm teď vícekrát (%1). Příště je vynechá volba "
                            "--skip-known."_s.arg(twice);
}
