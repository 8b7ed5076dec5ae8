// Searching and sorting the main list with 100,000 films, each beside its yardstick in the same run, and
// deleting a film beside filling the list.

#include <QCollator>
#include <QTextStream>
#include <memory>
#include <numeric>

#include "benchCatalogue.h"
#include "catalogue/frmMaster.h"
#include "catalogue/modSortLvw.h"
#include "platform/collation.h"
#include "platform/index.h"
#include "platform/sqlite.h"
#include "ratios.h"
#include "support/ScriptedOutside.h"
#include "toolkit/Application.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int films = 100000;
constexpr int loans = 1000;
constexpr int numberColumn = 0;
constexpr int titleColumn = 1;
constexpr int dateColumn = 4;

std::unique_ptr<frmMaster> master;  // destroyed before the application

frmMaster& window() {
    static const BenchCatalogue catalogue(films, loans);
    catalogue.use();
    if (master == nullptr) master = std::make_unique<frmMaster>(Sites{});
    return *master;
}

ListView& list() {
    return *window().findChild<ListView*>();
}

std::vector<QString> texts(int column) {
    std::vector<QString> all;
    all.reserve(toSize(list().count()));
    for (int row = 0; row < list().count(); ++row)
        all.push_back(list().cell(row, column).toString());
    return all;
}

void bareSearch(benchmark::State& state) {
    const std::vector<QString> titles = texts(titleColumn);
    const QString wanted = u"NENÍ TU"_s;
    for (auto _ : state) {
        bool found = false;
        for (const QString& title : titles)
            found = found || title.toUpper().contains(wanted);
        benchmark::DoNotOptimize(found);
    }
}

void search(benchmark::State& state) {
    const ListView& searched = list();
    for (auto _ : state)
        benchmark::DoNotOptimize(findRow(searched, FindMode::czechTitle, u"není tu"_s));
}

void bareSort(const std::vector<double>& keys, std::vector<int>& order) {
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(),
                     [&keys](int left, int right) { return elementAt(keys, left) < elementAt(keys, right); });
}

void bareSortByKeys(benchmark::State& state, int column, double (*value)(QStringView)) {
    const std::vector<QString> cells = texts(column);
    std::vector<double> keys(cells.size());
    std::vector<int> order(cells.size());
    for (auto _ : state) {
        for (std::size_t row = 0; row < cells.size(); ++row)
            keys[row] = value(cells[row]);
        bareSort(keys, order);
        benchmark::DoNotOptimize(order.data());
    }
}

void bareNumbers(benchmark::State& state) {
    bareSortByKeys(state, numberColumn, sortNumber);
}

void bareDates(benchmark::State& state) {
    bareSortByKeys(state, dateColumn, sortDate);
}

void bareTexts(benchmark::State& state) {
    const std::vector<QString> cells = texts(titleColumn);
    for (auto _ : state) {
        std::vector<QCollatorSortKey> keys;
        keys.reserve(cells.size());
        for (const QString& cell : cells)
            keys.push_back(collation::sortKey(cell));
        std::vector<int> order(cells.size());
        std::iota(order.begin(), order.end(), 0);
        std::stable_sort(order.begin(), order.end(), [&keys](int left, int right) {
            return elementAt(keys, left) < elementAt(keys, right);
        });
        benchmark::DoNotOptimize(order.data());
    }
}

/// Clicks on a column, each time from the order of a freshly filled list.
void clicks(benchmark::State& state, int column) {
    frmMaster& window = ::window();
    for (auto _ : state) {
        state.PauseTiming();
        list().setSorted(false);
        window.NactiSeznam(u"CZJM"_s);
        state.ResumeTiming();
        emit list().columnClicked(column);
    }
    list().setSorted(false);
}

void clickOnNumber(benchmark::State& state) {
    clicks(state, numberColumn);
}

void clickOnDate(benchmark::State& state) {
    clicks(state, dateColumn);
}

void clickOnTitle(benchmark::State& state) {
    clicks(state, titleColumn);
}

void fill(benchmark::State& state) {
    frmMaster& window = ::window();
    for (auto _ : state)
        window.NactiSeznam(u"CZJM"_s);
}

void deleteFilm(benchmark::State& state) {
    frmMaster& window = ::window();
    qint32 film = films;
    for (auto _ : state)
        window.SmazatZaznam(film--);
}

BENCHMARK(bareSearch)->Unit(benchmark::kMillisecond);
BENCHMARK(search)->Unit(benchmark::kMillisecond);
BENCHMARK(bareNumbers)->Unit(benchmark::kMillisecond);
BENCHMARK(clickOnNumber)->Unit(benchmark::kMillisecond);
BENCHMARK(bareDates)->Unit(benchmark::kMillisecond);
BENCHMARK(clickOnDate)->Unit(benchmark::kMillisecond);
BENCHMARK(bareTexts)->Unit(benchmark::kMillisecond);
BENCHMARK(clickOnTitle)->Unit(benchmark::kMillisecond);
BENCHMARK(fill)->Unit(benchmark::kMillisecond);
BENCHMARK(deleteFilm)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    Application application(argc, argv);
    const ScriptedOutside outside;
    benchmark::Initialize(&argc, argv);
    Ratios ratios;
    benchmark::RunSpecifiedBenchmarks(&ratios);
    master.reset();
    QTextStream(stdout)
        << "Search without a hit / bare loop: " << ratios.ratio("search", "bareSearch")
        << "  (at most 3)\nClick on number / bare sort: " << ratios.ratio("clickOnNumber", "bareNumbers")
        << "  (at most 2)\nClick on date / bare sort: " << ratios.ratio("clickOnDate", "bareDates")
        << "  (at most 2)\nClick on title / bare sort: " << ratios.ratio("clickOnTitle", "bareTexts")
        << "  (at most 2)\nDeleting / filling: " << ratios.ratio("deleteFilm", "fill") << "\n";
    return 0;
}
