// Lending with 100,000 films, 200,000 closed and 1,000 open loans and 5,000 customers, each operation beside
// its own query or statement run bare in the same run. The ratios are printed at the end.

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <QAction>
#include <QItemSelectionModel>
#include <QPushButton>
#include <QTextStream>
#include <memory>

#include "benchCatalogue.h"
#include "core/mDatabase.h"
#include "platform/password.h"
#include "platform/sqlite.h"
#include "ratios.h"
#include "rental/SharedUser.h"
#include "rental/frmKlienti.h"
#include "rental/mPujcky.h"
#include "support/ScriptedOutside.h"
#include "toolkit/Application.h"
#include "toolkit/ListBox.h"
#include "toolkit/ListView.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int films = 100000;
constexpr int openLoans = 1000;
constexpr int customers = 5000;
constexpr int manyLoans = 200000;
constexpr int fewLoans = 1000;

/// A customer with 2,000 closed loans and 200 open ones, as a rental's best customer has; all others have
/// few.
constexpr qint32 bestCustomer = 17;

const BenchCatalogue& catalogueWith(int closedLoans) {
    static std::map<int, std::unique_ptr<BenchCatalogue>> catalogues;
    auto& catalogue = catalogues[closedLoans];
    if (catalogue == nullptr) {
        catalogue = std::make_unique<BenchCatalogue>(films, 0);
        const sqlite::Database database(catalogue->path(), sqlite::Database::Mode::readWrite);
        sqlite::Transaction filling(database);
        database.exec("DELETE FROM tUser; DELETE FROM sqlite_sequence WHERE name='tUser'");
        // One loan in `share` is the best customer's.
        const auto lend = [&](int count, int share, const char* returned) {
            database.exec(
                ("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<" +
                 QByteArray::number(count) +
                 ") INSERT INTO tPujcky (P_UID, P_DVDID, PDatPujcky, PDatVraceni) SELECT CASE WHEN i%" +
                 QByteArray::number(share) +
                 "=0 THEN 17 ELSE (i*7919)%5000+1 END, (i*104729)%100000+1, "
                 "datetime('2020-01-01', i || ' minutes'), " +
                 returned + " FROM n")
                    .constData());
        };
        database.exec(
            "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<5000) "
            "INSERT INTO tUser (USNAME, USADR, USREGNUM) SELECT substr('ŽCŘAČHŠKL', (i*7)%9+1, 1) "
            "|| 'ákazník ' || i, 'Ulice ' || i || char(13) || char(10) || 'Praha', i FROM n");
        lend(closedLoans, 100, "datetime('2020-02-01', i || ' minutes')");
        lend(openLoans, 5, "NULL");
        filling.commit();
    }
    catalogue->use();
    return *catalogue;
}

/// Opens the catalogue as the program does, steps through a query and takes these columns as texts.
void readBare(const QString& sql, const std::vector<int>& columns) {
    const sqlite::Database database(ActDBPath, sqlite::Database::Mode::readWrite);
    password::checkHeader(database, databasePassword());
    const sqlite::Statement statement(database, sql.toUtf8());
    while (statement.step()) {
        for (const int column : columns) {
            QString text = statement.text(column);
            benchmark::DoNotOptimize(text);
        }
    }
}

const QString freeSql =
    u"SELECT tDVD.DVDID, tDVD.CZJm FROM tDVD  where  NOT EXISTS ( SELECT  *  FROM tPujcky  WHERE  p_dvdid "
    "=DVDID ) or  NOT EXISTS ( SELECT  *  FROM tPujcky  WHERE  p_dvdid =DVDID and pdatvraceni is null) ORDER "
    "BY CZJM;"_s;
const QString returnSql =
    u"SELECT tDVD.DVDID, tDVD.CZJm FROM tDVD  where  EXISTS ( SELECT  *  FROM tPujcky  WHERE  p_dvdid =DVDID "
    "and pdatvraceni is null and P_UID=17) ORDER BY CZJM;"_s;
const QString historySql =
    u"SELECT tDVD.CZJm, tPujcky.PDatPujcky, tPujcky.PDatVraceni, tUser.USID FROM tUser INNER JOIN (tDVD "
    u"INNER "
    "JOIN tPujcky ON tDVD.DVDID = tPujcky.P_DVDID) ON tUser.USID = tPujcky.P_UID Where "
    "(((tPujcky.PDatVraceni) Is Not Null) And ((tUser.USID) = 17)) ORDER BY tPujcky.PDatVraceni DESC;"_s;

template <typename Work>
void measure(benchmark::State& state, Work&& work, int closedLoans = manyLoans) {
    catalogueWith(closedLoans);
    for (auto _ : state)
        work();
}

void bareFree(benchmark::State& state) {
    measure(state, [] { readBare(freeSql, {0, 1}); });
}
void freeList(benchmark::State& state) {
    measure(state, [] { benchmark::DoNotOptimize(freeFilms()); });
}
void bareReturn(benchmark::State& state) {
    measure(state, [] { readBare(returnSql, {0, 1}); });
}
void returnList(benchmark::State& state) {
    measure(state, [] { benchmark::DoNotOptimize(filmsToReturn(u"17"_s)); });
}
void bareHistory(benchmark::State& state) {
    measure(state, [] { readBare(historySql, {0, 2}); });
}
void historyText(benchmark::State& state) {
    measure(state, [] { benchmark::DoNotOptimize(history(bestCustomer)); });
}

void insertBare(const char* synchronous) {
    const sqlite::Database database(ActDBPath, sqlite::Database::Mode::readWrite);
    password::checkHeader(database, databasePassword());
    database.exec(synchronous);
    database.exec(
        "INSERT INTO tPujcky (P_UID, P_DVDID, PDatPujcky) VALUES (4999, 99999, '2026-02-03 10:20:30')");
}
void bareLending(benchmark::State& state) {
    measure(state, [] { insertBare("PRAGMA synchronous=FULL"); });
}
void bareExtra(benchmark::State& state) {
    measure(state, [] { insertBare("PRAGMA synchronous=EXTRA"); });
}
void lending(benchmark::State& state) {
    measure(
        state, [] { PujcDVD(4998, 99998); }, static_cast<int>(state.range(0)));
}
void returning(benchmark::State& state) {
    catalogueWith(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        state.PauseTiming();
        PujcDVD(4997, 99997);
        state.ResumeTiming();
        VratDVD(4997, 99997);
    }
}

/// Lends that many free films at once, as the user does: the list of free films is opened, they are marked
/// and lent with the button.
void bulk(benchmark::State& state) {
    catalogueWith(manyLoans);
    frmKlienti window(std::make_shared<SharedUser>());
    window.show();
    auto* free = window.findChild<ListBox*>(u"lstPujcit"_s);
    for (auto _ : state) {
        window.findChild<QAction*>(u"keyHpujcka"_s)->trigger();
        const QModelIndex first = free->model()->index(0, 0);
        const QModelIndex last = free->model()->index(static_cast<int>(state.range(0)) - 1, 0);
        free->selectionModel()->select({first, last}, QItemSelectionModel::ClearAndSelect);
        window.findChild<QPushButton*>(u"Command8"_s)->click();
        QCoreApplication::processEvents();
    }
}

void bareCustomers(benchmark::State& state) {
    catalogueWith(manyLoans);
    for (auto _ : state) {
        ListView list;
        list.setColumns({{u"a"_s, 700}, {u"b"_s, 2500}, {u"c"_s, 3000}});
        list.resize(432, 201);
        {
            const ListView::Fill fill(list);
            const sqlite::Database database(ActDBPath, sqlite::Database::Mode::readWrite);
            const sqlite::Statement statement(database, "SELECT * from tUser order by USNAME");
            while (statement.step()) {
                const ListItem row = list.add(u'U' + statement.text(0), statement.text(6));
                row.setSubItem(1, statement.text(1));
                row.setSubItem(2, statement.text(2));
            }
        }
        list.show();
        QCoreApplication::processEvents();
    }
}
void rentalWindow(benchmark::State& state) {
    catalogueWith(manyLoans);
    for (auto _ : state) {
        frmKlienti window(std::make_shared<SharedUser>());
        window.show();
        QCoreApplication::processEvents();
    }
}

BENCHMARK(bareFree)->Unit(benchmark::kMillisecond);
BENCHMARK(freeList)->Unit(benchmark::kMillisecond);
BENCHMARK(bareReturn)->Unit(benchmark::kMillisecond);
BENCHMARK(returnList)->Unit(benchmark::kMillisecond);
BENCHMARK(bareHistory)->Unit(benchmark::kMillisecond);
BENCHMARK(historyText)->Unit(benchmark::kMillisecond);
BENCHMARK(bareCustomers)->Unit(benchmark::kMillisecond);
BENCHMARK(rentalWindow)->Unit(benchmark::kMillisecond);
BENCHMARK(bareLending)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(bareExtra)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(lending)->Arg(fewLoans)->Arg(manyLoans)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(returning)
    ->Arg(fewLoans)
    ->Arg(manyLoans)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(100);
BENCHMARK(bulk)->Arg(50)->Arg(500)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(4);

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // A window that is opened and closed returns its memory to the system each time; allocating it again
    // would cost more than what is measured, on both sides.
    constexpr int keep = 500'000'000;
    mallopt(M_TRIM_THRESHOLD, keep);
    mallopt(M_MMAP_THRESHOLD, keep);
    Application application(argc, argv);
    const ScriptedOutside outside;
    benchmark::Initialize(&argc, argv);
    Ratios ratios;
    benchmark::RunSpecifiedBenchmarks(&ratios);
    QTextStream out(stdout);
    const auto tell = [&](const char* what, double ratio, const char* limit) {
        out << what << ": " << ratio << "  (at most " << limit << ")\n";
    };
    tell("Free list / bare query", ratios.ratio("freeList", "bareFree"), "1.5");
    tell("Return list / bare query", ratios.ratio("returnList", "bareReturn"), "1.5");
    tell("History / bare query", ratios.ratio("historyText", "bareHistory"), "1.5");
    tell("Lending / bare insert", ratios.ratio("lending200000", "bareLending"), "1.5");
    out << "Bare insert with EXTRA / with FULL: " << ratios.ratio("bareExtra", "bareLending") << '\n';
    tell("Rental window / list filled bare", ratios.ratio("rentalWindow", "bareCustomers"), "1.5");
    tell("Lending at 200,000 / 1,000 loans", ratios.ratio("lending200000", "lending1000"), "3");
    tell("Returning at 200,000 / 1,000 loans", ratios.ratio("returning200000", "returning1000"), "3");
    tell("One film in 500 / in 50", ratios.ratio("bulk500", "bulk50") / 10, "1");
    return 0;
}
