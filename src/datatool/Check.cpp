#include "datatool/Check.h"

#include <QDir>
#include <algorithm>

#include "datatool/Integrity.h"
#include "datatool/Interruption.h"

using namespace Qt::StringLiterals;

namespace {

qsizetype countOf(const std::vector<findings::Kind>& kinds) {
    qsizetype count = 0;
    for (const findings::Kind& kind : kinds)
        count += kind.lines.size();
    return count;
}

}  // namespace

bool check::Report::isClean() const {
    return damaged.isEmpty() && indexes.isEmpty() && countOf(kinds) == 0;
}

QString check::Report::text() const {
    QStringList lines{u"Kontrola složky %1"_s.arg(QDir::toNativeSeparators(folder))};
    lines += notes;
    lines += damaged + indexes + linesOf(kinds);
    lines += QString();
    if (!damaged.isEmpty()) lines += u"Poškozené soubory: %1"_s.arg(damaged.size());
    if (!indexes.isEmpty()) lines += u"Špatné rejstříky: %1"_s.arg(indexes.size());
    for (const findings::Kind& kind : kinds) {
        if (!kind.lines.isEmpty()) lines += u"%1: %2"_s.arg(kind.title).arg(kind.lines.size());
    }
    if (!damaged.isEmpty() && kinds.empty()) lines += u"Obsah poškozených souborů se neprohlížel."_s;
    lines += isClean() ? u"Vše je v pořádku."_s
                       : u"Nálezů celkem: %1"_s.arg(damaged.size() + indexes.size() + countOf(kinds));
    return lines.join(u'\n') + u'\n';
}

QStringList check::damaged(const PairView& pair, const std::function<void(const QString&)>& tell) {
    QStringList files;
    pair.forEach([&](const sqlite::Database& database, const QString& name) {
        tell(u"Kontroluje se soubor %1"_s.arg(name));
        interruption::check();
        if (const qsizetype faults = integrity::damage(database); faults > 0)
            files += u"Soubor %1 je poškozený (nejméně na %2 místech)."_s.arg(name).arg(faults);
    });
    return files;
}

check::Report check::run(const QString& folder, const std::function<void(const QString&)>& tell) {
    const PairView pair(folder);
    Report report{QDir(folder).absolutePath(), pair.notes(), damaged(pair, tell), {}, {}};
    if (!report.damaged.isEmpty()) return report;
    // The tables of a large catalogue are read several times over.
    pair.catalogue().exec("PRAGMA cache_size=-65536");
    pair.forEach([&](const sqlite::Database& database, const QString& name) {
        tell(u"Kontrolují se rejstříky souboru %1"_s.arg(name));
        for (const QString& index : integrity::wrongIndexes(database))
            report.indexes +=
                u"Rejstřík %1 souboru %2 neodpovídá řádkům nebo jejich pořadí."_s.arg(index, name);
    });
    tell(u"Kontroluje se obsah"_s);
    pair.onBoth([&report](const sqlite::Database& catalogue) { report.kinds = findings::of(catalogue); });
    return report;
}

QStringList check::linesOf(const std::vector<findings::Kind>& kinds) {
    QStringList lines;
    for (const findings::Kind& kind : kinds)
        lines += kind.lines;
    return lines;
}
