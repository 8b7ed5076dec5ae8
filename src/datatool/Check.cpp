#include "datatool/Check.h"

#include <QDir>
#include <algorithm>
#include <future>

#include "datatool/Integrity.h"
#include "datatool/Interruption.h"
#include "datatool/Schema.h"

using namespace Qt::StringLiterals;

namespace {

qsizetype countOf(const std::vector<findings::Kind>& kinds) {
    qsizetype count = 0;
    for (const findings::Kind& kind : kinds)
        count += kind.lines.size();
    return count;
}

QString lackOf(const PairView::File& file) {
    schema::Lacks lacks;
    file.use([&](const sqlite::Database& database) {
        lacks = schema::lacks(database, schema::scriptOf(file.name()));
        if (lacks.all) {
            throw RuntimeError(
                errors::database,
                u"Soubor %1 nemá žádnou ze svých tabulek. Nejsou oba soubory zaměněné?"_s.arg(file.name()));
        }
    });
    return lacks.parts.isEmpty() ? QString()
                                 : u"V souboru %1 chybí: %2."_s.arg(file.name(), lacks.parts.join(u", "_s));
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
    if (!damaged.isEmpty() && kinds.empty()) {
        lines += u"Obsah poškozených souborů se neprohlížel."_s;
        lines +=
            u"Ze zálohy je vrátí příkaz kalvera-data restore, bez ní zachrání, co se dá přečíst, kalvera-data repair."_s;
    }
    lines += isClean() ? u"Vše je v pořádku."_s
                       : u"Nálezů celkem: %1"_s.arg(damaged.size() + indexes.size() + countOf(kinds));
    return lines.join(u'\n') + u'\n';
}

QString check::damageOf(const PairView::File& file, const Progress& progress) {
    if (file.database == nullptr) return file.fault;
    const auto step = [&](qint64 done, qint64 all) {
        interruption::check();
        progress(u"Kontrola souboru "_s + file.name(), done, all);
    };
    step(0, 0);
    qsizetype faults = 0;
    file.use([&](const sqlite::Database& database) { faults = integrity::damage(database, step); });
    constexpr qsizetype mostFaults = 100;  // that the engine tells
    if (faults > 0) {
        return u"Soubor %1 je poškozený (nalezených vad: %2%3)."_s.arg(
            file.name(), faults < mostFaults ? QString() : u"nejméně "_s, QString::number(faults));
    }
    const QString lack = lackOf(file);
    return lack.isEmpty() ? file.condition : lack;
}

QStringList check::damaged(const PairView& pair, const Progress& progress) {
    // The pictures are most of the bytes, and reading them leaves a processor free.
    std::future<QString> catalogue = std::async(std::launch::async, [&pair] {
        return damageOf(pair.files()[0], [](const QString& /*title*/, qint64 /*done*/, qint64 /*all*/) {});
    });
    const QString pictures = damageOf(pair.files()[1], progress);
    progress(u"Kontrola souboru "_s + pair.files()[0].name(), 0, 0);
    QStringList lines{catalogue.get(), pictures};
    lines.removeAll(QString());
    return lines;
}

check::Report check::run(const QString& folder, const Progress& progress) {
    const PairView pair(folder, PairView::Unreadable::damageTold);
    Report report{QDir(folder).absolutePath(), pair.notes(), damaged(pair, progress), {}, {}};
    if (!report.damaged.isEmpty()) return report;
    // The tables of a large catalogue are read several times over.
    pair.catalogue().exec("PRAGMA cache_size=-65536");
    pair.forEach([&](const sqlite::Database& database, const QString& name) {
        const auto step = [&](qint64 done, qint64 all) {
            interruption::check();
            progress(u"Rejstříky souboru "_s + name, done, all);
        };
        for (const schema::Index& index : schema::missingIndexes(database, schema::scriptOf(name)))
            report.indexes += u"Rejstřík %1 souboru %2 chybí."_s.arg(index.name, name);
        for (const QString& index : integrity::wrongIndexes(database, step))
            report.indexes +=
                u"Rejstřík %1 souboru %2 neodpovídá řádkům nebo jejich pořadí."_s.arg(index, name);
    });
    pair.onBoth([&](const sqlite::Database& catalogue) {
        try {
            report.kinds = findings::of(
                catalogue, [&](qint64 done, qint64 all) { progress(u"Kontrola obsahu"_s, done, all); });
        } catch (const sqlite::Failure& failure) {
            // The search goes by the indexes.
            if (report.indexes.isEmpty() || (failure.resultCode() & 0xFF) != SQLITE_CORRUPT) throw;
            report.notes += u"Obsah se prohlédne, až příkaz kalvera-data repair opraví rejstříky."_s;
        }
    });
    return report;
}

QStringList check::linesOf(const std::vector<findings::Kind>& kinds) {
    QStringList lines;
    for (const findings::Kind& kind : kinds)
        lines += kind.lines;
    return lines;
}
