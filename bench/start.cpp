// From process start to the painted splash picture and to the painted main window with an empty catalogue,
// beside a bare window in the same run. The splash picture is ended by a key as soon as it is there. The
// clock stops at the first report of the X server that something was drawn into the mapped window, which is
// the same event for both programs. Needs a display: `xvfb-run build/release/bench/start_bench`.

#include <X11/Xlib.h>
#include <X11/extensions/Xdamage.h>
#include <X11/keysym.h>
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
#include <fstream>
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
        // The question for a newer version follows the paint, and would ask a host that is not there.
        std::filesystem::create_directory(made + "/settings");
        std::ofstream(made + "/settings/BremDVDKalvera.conf") << "[Settings]\nShowNewVer=N\n";
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

    /// Forgets all windows that were mapped so far.
    void begin() { XSync(display_, 1); }

    /// Waits until something has been drawn into a window that is mapped from now on.
    /// @return that window.
    Window waitForPaint() {
        for (XEvent event;;) {
            XNextEvent(display_, &event);
            if (event.type == MapNotify) {
                XDamageCreate(display_, event.xmap.window, XDamageReportRawRectangles);
            } else if (event.type == damageBase_ + XDamageNotify) {
                // Qt fills the whole window at once; smaller marks are the server's own (a background).
                const auto* damage = reinterpret_cast<XDamageNotifyEvent*>(&event);
                if (damage->area.width > 300 && damage->area.height > 200) return damage->drawable;
            }
        }
    }

    /// Sends the key of a blank to a window, and ignores what is drawn into it from then on.
    void press(Window window) {
        XEvent event = {};
        event.xkey.type = KeyPress;
        event.xkey.display = display_;
        event.xkey.window = window;
        event.xkey.root = DefaultRootWindow(display_);
        event.xkey.keycode = XKeysymToKeycode(display_, XK_space);
        event.xkey.same_screen = 1;
        XSendEvent(display_, window, 1, KeyPressMask, &event);
        event.xkey.type = KeyRelease;
        XSendEvent(display_, window, 1, KeyReleaseMask, &event);
        XFlush(display_);
    }

 private:
    Display* display_;
    int damageBase_ = 0;
};

enum class Until { firstWindow, secondWindow };

void start(benchmark::State& state, const std::string& program, Until until) {
    static Screen screen;
    for (auto _ : state) {
        screen.begin();
        const auto begin = Clock::now();
        const pid_t process = spawn(program);
        const Window first = screen.waitForPaint();
        if (until == Until::secondWindow) {
            screen.press(first);
            // The first one can be redrawn before it closes.
            while (screen.waitForPaint() == first) {
            }
        }
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
    // Starts of both alternate, so that both run under the same conditions.
    std::vector<char*> arguments(argv, argv + argc);
    std::string mixed = "--benchmark_enable_random_interleaving=true";
    arguments.push_back(mixed.data());
    int count = static_cast<int>(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    constexpr int rounds = 15;
    const std::string program = programFolder() + "/kalvera";
    const struct {
        const char* name;
        std::string path;
        Until until;
    } starts[] = {{"bare", BARE_WINDOW, Until::firstWindow},
                  {"splash", program, Until::firstWindow},
                  {"main", program, Until::secondWindow}};
    for (const auto& it : starts) {
        benchmark::RegisterBenchmark(it.name,
                                     [it](benchmark::State& state) { start(state, it.path, it.until); })
            ->Iterations(1)
            ->Repetitions(rounds)
            ->UseManualTime()
            ->Unit(benchmark::kMillisecond);
    }
    Medians medians;
    benchmark::RunSpecifiedBenchmarks(&medians);
    const double bare = medians["bare"];
    std::printf("start to splash picture / bare window: %.2f\n", medians["splash"] / bare);
    std::printf("start to main window, splash ended by a key / bare window: %.2f  (at most 2)\n",
                medians["main"] / bare);
    std::filesystem::remove_all(programFolder());
    return 0;
}
