#include "datatool/ImportReport.h"

#include <QDir>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int titleWidth = 22;
constexpr int numberWidth = 12;

QString row(const QString& title, const QStringList& cells) {
    QString line = title.leftJustified(titleWidth);
    for (const QString& cell : cells)
        line += cell.rightJustified(numberWidth);
    return line + u'\n';
}

QString section(const QString& heading, const QStringList& lines) {
    if (lines.isEmpty()) return {};
    return u'\n' + heading + u'\n' + u"- "_s + lines.join(u"\n- "_s) + u'\n';
}

}  // namespace

bool ImportReport::agrees() const {
    return refused.isEmpty() && std::all_of(tables.begin(), tables.end(), [](const TableReport& table) {
               return table.counted == table.read && table.read == table.written;
           });
}

QString ImportReport::verdict() const {
    if (agrees()) return u"Vše souhlasí: převedly se všechny řádky starých souborů."_s;
    qint64 missing = 0;
    for (const TableReport& table : tables)
        missing += table.counted - table.written;
    return u"POZOR, nesouhlasí to: ze starých souborů se nepřevedly některé řádky, celkem %1."_s.arg(missing);
}

QString ImportReport::text() const {
    QString text = u"Převod starých souborů\n\nZe složky: %1\nDo složky: %2\nDokončeno: %3\n\n"_s.arg(
        QDir::toNativeSeparators(oldFolder), QDir::toNativeSeparators(newFolder),
        finished.toString(u"d. M. yyyy H:mm:ss"_s));
    text += row(u"Tabulka"_s, {u"má mít"_s, u"přečteno"_s, u"zapsáno"_s, u"odmítnuto"_s, u"příští č."_s});
    for (const TableReport& table : tables) {
        text += row(
            u"%1 (%2)"_s.arg(table.title, table.name),
            {QString::number(table.counted), QString::number(table.read), QString::number(table.written),
             QString::number(table.refused), table.nextKey > 0 ? QString::number(table.nextKey) : u"-"_s});
    }
    text += section(u"Odmítnuté řádky:"_s, refused);
    text += section(u"Na vědomí:"_s, notes);
    return text + u'\n' + verdict() + u'\n';
}
