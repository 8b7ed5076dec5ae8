// Reading web pages of 1 and 10 MB: HTML to text beside a loop that copies each character, and the list of
// films and a whole reading of a film beside pages a tenth as long. The ratios are printed at the end.

#include <benchmark/benchmark.h>

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>
#include <QTextStream>

#include "lookup/Module1.h"
#include "lookup/mCSFD.h"
#include "lookup/mDetail.h"
#include "platform/paths.h"
#include "ratios.h"
#include "support/ScriptedOutside.h"
#include "support/detailWindow.h"
#include "support/filmPages.h"

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype megabyte = 1'000'000;

/// Seconds for each benchmark, so that the first touch of fresh memory does not count.
constexpr double steady = 3;

/// Text, tags, entities and line ends as a page mixes them, of so many characters.
QString mixedText(qsizetype length) {
    const QString piece =
        u"<p class=x>Příběh &egrave;esk&yacute; o domě,<br>který se   ztratil.</p>\r\n<div>1 < 2 &foo; "
        u"&amp;\r\n"
        "</div><td>a</td> tři & čtyři </tr> bez konce "_s;
    return piece.repeated(length / piece.size() + 1).left(length);
}

/// One that never closes a tag or an entity.
QString hostileText(qsizetype length) {
    return u"<&"_s.repeated(length / 2);
}

void plainCopy(benchmark::State& state) {
    const QString text = mixedText(megabyte);
    for (auto _ : state) {
        QString copy;
        copy.reserve(text.size());
        for (const QChar letter : text) {
            if (letter != u'\0') copy += letter;
        }
        benchmark::DoNotOptimize(copy);
    }
}

void htmlText(benchmark::State& state) {
    const QString text = mixedText(state.range(0) * megabyte);
    for (auto _ : state)
        benchmark::DoNotOptimize(HtmlNaText(text));
}

void hostileHtmlText(benchmark::State& state) {
    const QString text = hostileText(state.range(0) * megabyte);
    for (auto _ : state)
        benchmark::DoNotOptimize(HtmlNaText(text));
}

void filmList(benchmark::State& state) {
    QList<std::pair<QString, QString>> films;
    while (films.size() < state.range(0) * 20000)
        films += {u"12345-ZTRACENY-DUM/"_s, u"Ztracený dům"_s};
    const QString page = filmPages::searchPage(films);
    for (auto _ : state) {
        QString rest = page;
        benchmark::DoNotOptimize(csfd::NactiSeznamFilmu(rest));
    }
}

void filmDetail(benchmark::State& state) {
    const QTemporaryDir folder;
    QDir(folder.path()).mkpath(u"data"_s);
    paths::setProgramFolder(folder.path());
    const Sites sites{.filmDb = u"http://film"_s, .filmDb2 = u"http://other"_s};
    const QString address = u"http://film/film/1-DUM/"_s;
    filmPages::Film film;
    while (film.otherTitles.size() < state.range(0) * 1000)
        film.otherTitles += u"Lost House"_s;
    film.description = mixedText(state.range(0) * megabyte / 2);
    ScriptedOutside outside;
    outside.pages = {
        {address, filmPages::plainPage(u"8"_s).toUtf8()},
        {address + u"?text=8"_s,
         (mixedText(state.range(0) * megabyte / 2) + filmPages::fullPage(film, sites.filmDb2)).toUtf8()},
        {u"http://other/title/tt0123456"_s, filmPages::imdbPage(u"Lost (1999)"_s).toUtf8()}};
    for (auto _ : state) {
        RecordingDetailWindow window;
        csfd::Buffers buffers;
        csfd::nactiDetail(sites, buffers, window);
        if (window.titles.size() != film.otherTitles.size()) std::abort();
    }
}

BENCHMARK(plainCopy)->Unit(benchmark::kMillisecond);
BENCHMARK(htmlText)->Arg(1)->Arg(10)->MinTime(steady)->Unit(benchmark::kMillisecond);
BENCHMARK(hostileHtmlText)->Arg(1)->Arg(10)->MinTime(steady)->Unit(benchmark::kMillisecond);
BENCHMARK(filmList)->Arg(1)->Arg(10)->MinTime(steady)->Unit(benchmark::kMillisecond);
BENCHMARK(filmDetail)->Arg(1)->Arg(10)->MinTime(steady)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    Ratios ratios;
    benchmark::RunSpecifiedBenchmarks(&ratios);
    QTextStream out(stdout);
    out << "HTML to text, 1 MB / plain copy: " << ratios.ratio("htmlText1", "plainCopy")
        << "  (at most 10)\n";
    for (const char* name : {"htmlText", "hostileHtmlText", "filmList", "filmDetail"}) {
        out << name << ", 10 MB / 1 MB: " << ratios.ratio(std::string(name) + "10", std::string(name) + "1")
            << "  (at most 12)\n";
    }
    return 0;
}
