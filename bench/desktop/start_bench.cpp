#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fmt/core.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <map>
#include <sstream>
#include <thread>
#include <vector>

#include "app/system_ports.h"
#include "app/workspace.h"
#include "made_up_library.h"

namespace tessary {
namespace {

constexpr std::size_t kPages = 10'000;
constexpr std::size_t kCards = 100'000;
constexpr int kRuns = 5;
constexpr int kColumn = 22;
constexpr double kKilobytesPerMegabyte = 1024;

using Figures = std::map<std::string, double>;  // milliseconds by stage, megabytes by "… memory"

/// A folder to give as --home, with a library of so many pages and cards; the window opens at `place`.
void makeLibrary(const std::filesystem::path& home, std::size_t pages, std::size_t cards, const char* place) {
    std::filesystem::create_directories(home);
    const AppPaths paths = portablePaths(home, PosixFileSystem()).value();
    SystemPorts ports(paths, kBenchNow, std::cerr);
    EventLoop loop;
    const auto none = [](std::string_view) { return std::optional<std::string>(); };
    const auto made = Workspace::open(paths, ports.forWorkspace(none, loop), WorkspaceUse::change).value();
    if (!ports.settings.setText("tessary.lastPlace", place)) throw std::runtime_error("the place cannot be set");
    if (pages == 0) return;
    const std::filesystem::path base = made->library().folders().base;
    std::ofstream(base / "entries.json") << pagesText(pages);
    std::ofstream(base / "flashcards.json") << cardsText(cards);
}

/// What /proc/PID/status says under `key`, in megabytes.
double memory(pid_t process, const std::string& key) {
    std::ifstream status("/proc/" + std::to_string(process) + "/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(key + ":")) return std::atof(line.c_str() + key.size() + 1) / kKilobytesPerMegabyte;
    }
    return 0;
}

/// Processor time so far, in clock ticks.
long worked(pid_t process) {
    std::string line;
    std::getline(std::ifstream("/proc/" + std::to_string(process) + "/stat"), line);
    std::istringstream fields(line.substr(line.rfind(')') + 1));
    std::string skipped;
    for (int i = 0; i < 11; ++i) fields >> skipped;
    long user = 0;
    long system = 0;
    fields >> user >> system;
    return user + system;
}

/// Until the process has had nothing to do for a while: after its start the window makes the search ready.
void waitForRest(pid_t process) {
    std::this_thread::sleep_for(std::chrono::seconds(3));
    for (int i = 0; i < 30; ++i) {
        const long before = worked(process);
        std::this_thread::sleep_for(std::chrono::seconds(1));
        if (worked(process) - before < 5) return;
    }
}

/// The memory at rest takes seconds to learn and hardly differs from run to run.
enum class Length { untilFirstFrame, untilRest };

/// Starts the window, notes its stages and its memory, and ends it by the signal that saves and closes.
Figures start(const std::filesystem::path& program, const std::filesystem::path& home, Length length) {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDERR_FILENO);
    std::array<std::string, 3> words{program, "--home", home};
    std::array<char*, 4> arguments{words[0].data(), words[1].data(), words[2].data(), nullptr};
    pid_t process = 0;
    if (posix_spawn(&process, program.c_str(), &actions, nullptr, arguments.data(), environ) != 0) {
        throw std::runtime_error(program.string() + " cannot be started");
    }
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
    FILE* const told = fdopen(ends[0], "r");
    Figures figures;
    std::array<char, 1000> line{};
    while (!figures.contains("first frame") && fgets(line.data(), line.size(), told) != nullptr) {
        std::array<char, 100> stage{};
        double milliseconds = 0;
        if (std::sscanf(line.data(), "start: %99[a-z ] %lf ms", stage.data(), &milliseconds) != 2) {
            std::cerr << line.data();
            continue;
        }
        std::string name = stage.data();
        figures[name.substr(0, name.find_last_not_of(' ') + 1)] = milliseconds;
    }
    if (!figures.contains("first frame")) throw std::runtime_error("the window was not shown");
    figures["memory at first frame"] = memory(process, "VmRSS");
    if (length == Length::untilRest) {
        waitForRest(process);
        figures["memory at rest"] = memory(process, "VmRSS");
        figures["memory at most"] = memory(process, "VmHWM");
    }
    kill(process, SIGTERM);
    int status = 0;
    waitpid(process, &status, 0);
    std::fclose(told);
    if (status != 0) throw std::runtime_error("the window did not end well");
    return figures;
}

double median(const std::vector<Figures>& runs, const std::string& name) {
    std::vector<double> values;
    for (const Figures& run : runs) {
        if (run.contains(name)) values.push_back(run.at(name));
    }
    std::ranges::sort(values);
    return values[values.size() / 2];
}

/// One library that is started with, and what its starts were like.
struct Subject {
    const char* title;
    std::filesystem::path home;
    std::vector<Figures> runs;
};

void tell(const std::string& name, const std::vector<Subject>& subjects) {
    fmt::print("{:<26}", name);
    const double least = median(subjects.front().runs, name);
    for (const Subject& subject : subjects) {
        const double value = median(subject.runs, name);
        fmt::print("{:>{}.0f} ({:>4.1f})", value, kColumn - 7, value / least);
    }
    fmt::print("\n");
}

}  // namespace
}  // namespace tessary

/// Starts the real program with an empty library and with one of 10,000 pages and 100,000 cards, in turn. The platform
/// is what QT_QPA_PLATFORM says.
int main(int, char** argv) {
    using namespace tessary;
    setenv("TESSARY_TRACE_START", "1", 1);
    const std::filesystem::path program = std::filesystem::absolute(argv[0]).parent_path() / "tessary";
    const BenchFolder folder;
    std::vector<Subject> subjects{{"empty", folder.path() / "empty", {}},
                                  {"full, today", folder.path() / "today", {}},
                                  {"full, all pages", folder.path() / "pages", {}}};
    makeLibrary(subjects[0].home, 0, 0, "today");
    makeLibrary(subjects[1].home, kPages, kCards, "today");
    makeLibrary(subjects[2].home, kPages, kCards, "pages all");
    for (int run = 0; run <= kRuns; ++run) {
        for (Subject& subject : subjects) {
            const auto length = run < kRuns ? Length::untilFirstFrame : Length::untilRest;
            const Figures figures = start(program, subject.home, length);
            if (run > 0) subject.runs.push_back(figures);  // the first fills the caches
        }
    }
    fmt::print("medians of {} starts; in brackets, against the empty library\n{:<26}", kRuns, "");
    for (const Subject& subject : subjects) fmt::print("{:>{}}", subject.title, kColumn);
    fmt::print("\nmilliseconds since the process began\n");
    for (const char* const stage : {"application made", "library open", "window made", "first frame"}) {
        tell(stage, subjects);
    }
    fmt::print("megabytes\n");
    for (const char* const moment : {"memory at first frame", "memory at rest", "memory at most"}) {
        tell(moment, subjects);
    }
}
