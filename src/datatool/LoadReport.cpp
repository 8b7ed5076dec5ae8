#include "datatool/LoadReport.h"

#include <QDir>

using namespace Qt::StringLiterals;

namespace {

QString list(const QString& heading, const QStringList& items) {
    return items.isEmpty() ? QString() : u"%1: %2\n"_s.arg(heading, items.join(u", "_s));
}

QString separatorName(QChar separator) {
    return separator == u';' ? u"středník"_s : separator == u',' ? u"čárka"_s : u"tabulátor"_s;
}

}  // namespace

QString LoadReport::text() const {
    QString text =
        u"Přidání filmů ze souboru\n\nZe souboru: %1 (kódování %2, oddělovač %3)\nDo složky: %4\n\n"
        "Filmů v souboru: %5\n%6: %7\nOdmítnuto: 0\n"_s.arg(
            QDir::toNativeSeparators(csv), encoding, separatorName(separator),
            QDir::toNativeSeparators(folder), QString::number(read),
            isDryRun ? u"Přidalo by se filmů"_s : u"Přidáno filmů"_s, QString::number(added));
    if (skipped > 0) text += u"Vynecháno, protože v katalogu už jsou: %1\n"_s.arg(skipped);
    if (pictures > 0) text += u"Uloženo obrázků: %1\n"_s.arg(pictures);
    text += list(u"Vynechané sloupce"_s, ignored);
    text += list(u"Nová oddělení"_s, departments);
    text += list(areGenresAdded ? u"Nové žánry v číselníku"_s
                                : u"Žánry, které číselník nemá (přidá je volba --add-genres)"_s,
                 genres);
    if (!known.isEmpty()) text += u"\nUž v katalogu:\n- "_s + known.join(u"\n- "_s) + u'\n';
    return text + u'\n' + verdict() + u'\n';
}

QString LoadReport::verdict() const {
    if (!agrees()) return u"POZOR, nesouhlasí to: v katalogu nepřibylo tolik filmů, kolik je v souboru."_s;
    if (isDryRun) return u"Byla to jen zkouška, nic se nezapsalo."_s;
    return u"Vše souhlasí: v katalogu přibyly všechny filmy ze souboru%1."_s.arg(
        skipped > 0 ? u", které v něm ještě nebyly"_s : QString());
}
