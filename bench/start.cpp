// From process start to the painted main window with an empty catalogue, beside a bare window in the same
// run. The clock stops at the first report of the X server that something was drawn into the mapped window,
// which is the same event for both programs. Needs a display: `xvfb-run build/release/bench/start_bench`.

#include <X11/Xlib.h>
#include <X11/extensions/Xdamage.h>
#include <benchmark/benchmark.h>
#include <signal.h>
#include <spawn.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

/// A program folder with an empty catalogue and settings of its own.
std::string programFolder() {
    static const std::string folder = [] {
        std::string made = std::filesystem::temp_directory_path() / "kalvera-start-XXXXXX";
        if (mkdtemp(made.data()) == nullptr) std::abort();
        std::filesystem::copy_file(KALVERA, made + "/kalvera");
        if (std::system((std::string(KALVERA_DATA) + " create " + made + "/data >/dev/null").c_str()) != 0)
            std::abort();
        setenv("XDG_CONFIG_HOME", (made + "/settings").c_str(), 1);
        return made;
    }();
    return folder;
}

pid_t spawn(const std::string& program) {
    pid_t process = 0;
    char* arguments[] = {const_cast<char*>(program.c_str()), nullptr};
    if (posix_spawn(&process, program.c_str(), nullptr, nullptr, arguments, environ) != 0) std::abort();
    return process;
}

/// Watches the top-level windows of a display.
class Screen {
 public:
    Screen() : display_(XOpenDisplay(nullptr)) {
        int errorBase = 0;
        if (display_ == nullptr || XDamageQueryExtension(display_, &damageBase_, &errorBase) == 0) {
            std::fputs("start_bench needs an X display with the damage extension\n", stderr);
            std::exit(2);
        }
        // Windows of a program that was just killed can vanish under a request.
        XSetErrorHandler([](Display*, XErrorEvent*) { return 0; });
        XSelectInput(display_, DefaultRootWindow(display_), SubstructureNotifyMask);
    }

    /// Waits until something has been drawn into a window that was mapped since the call began.
    void waitForPaint(const std::string& program, pid_t& process) {
        XSync(display_, 1);
        process = spawn(program);
        for (XEvent event;;) {
            XNextEvent(display_, &event);
            if (event.type == MapNotify) {
                XDamageCreate(display_, event.xmap.window, XDamageReportRawRectangles);
            } else if (event.type == damageBase_ + XDamageNotify) {
                // Qt fills the whole window at once; smaller marks are the server's own (a background).
                const auto* damage = reinterpret_cast<XDamageNotifyEvent*>(&event);
                if (damage->area.width > 300 && damage->area.height > 200) return;
            }
        }
    }

 private:
    Display* display_;
    int damageBase_ = 0;
};

void start(benchmark::State& state, const std::string& program) {
    static Screen screen;
    for (auto _ : state) {
        pid_t process = 0;
        const auto begin = Clock::now();
        screen.waitForPaint(program, process);
        state.SetIterationTime(std::chrono::duration<double>(Clock::now() - begin).count());
        kill(process, SIGKILL);
        waitpid(process, nullptr, 0);
    }
}

/// Collects the median of each benchmark.
class Medians final : public benchmark::ConsoleReporter {
 public:
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (run.run_type == Run::RT_Iteration)
                times_[run.run_name.function_name].push_back(run.GetAdjustedRealTime());
        }
        ConsoleReporter::ReportRuns(runs);
    }

    double operator[](const std::string& name) {
        auto& times = times_[name];
        std::sort(times.begin(), times.end());
        return times.at(times.size() / 2);
    }

 private:
    std::map<std::string, std::vector<double>> times_;
};

}  // namespace

int main(int argc, char** argv) {
    // Starts of both are mixed, so that both meet the same machine.
    std::vector<char*> arguments(argv, argv + argc);
    std::string mixed = "--benchmark_enable_random_interleaving=true";
    arguments.push_back(mixed.data());
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    constexpr int rounds = 15;
    const std::string program = programFolder() + "/kalvera";
    for (const auto& [name, path] :
         {std::pair{"bare", std::string(BARE_WINDOW)}, std::pair{"kalvera", program}}) {
        benchmark::RegisterBenchmark(name, [path = path](benchmark::State& state) { start(state, path); })
            ->Iterations(1)
            ->Repetitions(rounds)
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond);
    }
    Medians medians;
    benchmark::RunSpecifiedBenchmarks(&medians);
    std::printf("start / bare window: %.2f  (at most 2)\n", medians["kalvera"] / medians["bare"]);
    std::filesystem::remove_all(programFolder());
    return 0;
}
