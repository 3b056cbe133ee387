#include "platform/adapters/posix/posix_process_runner.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/eventfd.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <optional>
#include <stop_token>
#include <string_view>
#include <system_error>
#include <utility>

namespace tessary {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;
using Failure = ProcessFailure;

constexpr int kFirstOwnDescriptor = STDERR_FILENO + 1;
constexpr std::size_t kPieceSize = std::size_t{64} * 1024;
constexpr double kLongestTimeLimit = 1e9;  // seconds
constexpr int kLongestPoll = 60'000;       // milliseconds
constexpr int kSignalStatus = 128;

std::unexpected<Failure> notStarted(const fs::path& path, int code) {
    return std::unexpected(
        Failure{Failure::Kind::notStarted, path.string() + ": " + std::generic_category().message(code)});
}

std::unexpected<Failure> failure(Failure::Kind kind, const fs::path& program, std::string_view what) {
    return std::unexpected(Failure{kind, program.filename().string() + " " + std::string(what)});
}

class Descriptor {
public:
    Descriptor() = default;
    /// Takes `number`, which may be -1. A program that was started without standard descriptors gets their numbers for
    /// its pipes; those are exchanged for higher ones, since the child's own are put there one after the other.
    explicit Descriptor(int number) : number_(number) {
        if (number < 0 || number >= kFirstOwnDescriptor) return;
        number_ = ::fcntl(number, F_DUPFD_CLOEXEC, kFirstOwnDescriptor);
        ::close(number);
    }
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    ~Descriptor() { close(); }

    void close() {
        if (number_ >= 0) ::close(std::exchange(number_, -1));
    }
    [[nodiscard]] int number() const { return number_; }
    explicit operator bool() const { return number_ >= 0; }

private:
    int number_ = -1;
};

/// A pipe that the child writes to and we read from without waiting.
class OutputPipe {
public:
    /// Zero, or the system's error.
    [[nodiscard]] int open() {
        std::array<int, 2> ends{};
        if (::pipe2(ends.data(), O_CLOEXEC) != 0) return errno;
        readEnd_ = Descriptor(ends[0]);
        writeEnd_ = Descriptor(ends[1]);
        if (!readEnd_ || !writeEnd_ || ::fcntl(readEnd_.number(), F_SETFL, O_NONBLOCK) != 0) return errno;
        return 0;
    }

    [[nodiscard]] int writeEnd() const { return writeEnd_.number(); }
    void closeWriteEnd() { writeEnd_.close(); }
    [[nodiscard]] pollfd toPoll() const { return {readEnd_.number(), POLLIN, 0}; }

    /// Takes one piece; false when there is none now. The pipe is closed at its end.
    bool readPiece() {
        if (!readEnd_) return false;
        std::array<char, kPieceSize> piece;
        const ssize_t count = ::read(readEnd_.number(), piece.data(), piece.size());
        if (count > 0) content_.append(piece.data(), static_cast<std::size_t>(count));
        if (count > 0 || (count < 0 && errno == EINTR)) return true;
        if (count == 0 || errno != EAGAIN) readEnd_.close();
        return false;
    }

    [[nodiscard]] std::size_t size() const { return content_.size(); }
    [[nodiscard]] std::string takeContent() { return std::move(content_); }

private:
    Descriptor readEnd_;
    Descriptor writeEnd_;
    std::string content_;
};

/// A child that leads its own process group. Its number, and with it the group's, stays taken until the destructor has
/// killed the group and reaped the child.
class Child {
public:
    explicit Child(pid_t id)
        : id_(id), handle_(static_cast<int>(::syscall(SYS_pidfd_open, id, 0))), handleError_(handle_ ? 0 : errno) {}
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    ~Child() { end(); }

    [[nodiscard]] int handleError() const { return handleError_; }
    [[nodiscard]] pollfd toPoll() const { return {handle_.number(), POLLIN, 0}; }

    void killGroup() const {
        ::kill(-id_, SIGKILL);
        ::kill(id_, SIGKILL);  // it may have moved to another group
    }

    /// Waits for a child that has ended, or is killed by this.
    int end() {
        if (reaped_) return exitStatus_;
        killGroup();
        siginfo_t info{};
        int result = 0;
        do result = ::waitid(P_PID, static_cast<id_t>(id_), &info, WEXITED);
        while (result != 0 && errno == EINTR);
        reaped_ = true;
        exitStatus_ = info.si_code == CLD_EXITED ? info.si_status : kSignalStatus + info.si_status;
        return exitStatus_;
    }

private:
    pid_t id_;
    Descriptor handle_;
    int handleError_;
    bool reaped_ = false;
    int exitStatus_ = 0;
};

/// Becomes readable when a stop is requested.
class StopEvent {
public:
    explicit StopEvent(std::stop_token stop)
        : event_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)),
          error_(event_ ? 0 : errno),
          onStop_(std::move(stop), Raise{this}) {}

    [[nodiscard]] int error() const { return error_; }
    [[nodiscard]] pollfd toPoll() const { return {event_.number(), POLLIN, 0}; }

private:
    struct Raise {
        StopEvent* owner;
        void operator()() const { ::eventfd_write(owner->event_.number(), 1); }
    };

    Descriptor event_;
    int error_;
    std::stop_callback<Raise> onStop_;
};

/// "NAME=value" lines: ours with the request's in the place of those of the same name.
std::vector<std::string> environmentFor(const ProcessRequest& request) {
    std::vector<std::string> lines;
    for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
        const std::string_view line = *entry;
        if (!request.environment.contains(std::string(line.substr(0, line.find('='))))) lines.emplace_back(line);
    }
    for (const auto& [name, value] : request.environment) lines.push_back(name + "=" + value);
    return lines;
}

/// Pointers into `texts`, with a null at the end.
std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (std::string& text : texts) pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

struct Streams {
    Descriptor input;
    OutputPipe output;
    OutputPipe errors;
};

class SpawnSettings {
public:
    explicit SpawnSettings(const Streams& streams) {
        ::posix_spawn_file_actions_init(&actions_);
        ::posix_spawnattr_init(&attributes_);
        ::posix_spawn_file_actions_adddup2(&actions_, streams.input.number(), STDIN_FILENO);
        ::posix_spawn_file_actions_adddup2(&actions_, streams.output.writeEnd(), STDOUT_FILENO);
        ::posix_spawn_file_actions_adddup2(&actions_, streams.errors.writeEnd(), STDERR_FILENO);
        ::posix_spawn_file_actions_addclosefrom_np(&actions_, kFirstOwnDescriptor);
        sigset_t signals;
        sigemptyset(&signals);
        ::posix_spawnattr_setsigmask(&attributes_, &signals);
        sigfillset(&signals);
        ::posix_spawnattr_setsigdefault(&attributes_, &signals);
        ::posix_spawnattr_setpgroup(&attributes_, 0);
        ::posix_spawnattr_setflags(&attributes_,
                                   POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
    SpawnSettings(const SpawnSettings&) = delete;
    SpawnSettings& operator=(const SpawnSettings&) = delete;
    ~SpawnSettings() {
        ::posix_spawn_file_actions_destroy(&actions_);
        ::posix_spawnattr_destroy(&attributes_);
    }

    [[nodiscard]] const posix_spawn_file_actions_t* actions() const { return &actions_; }
    [[nodiscard]] const posix_spawnattr_t* attributes() const { return &attributes_; }

private:
    posix_spawn_file_actions_t actions_{};
    posix_spawnattr_t attributes_{};
};

std::expected<pid_t, Failure> spawn(const ProcessRequest& request, const Streams& streams) {
    std::vector<std::string> arguments = request.arguments;
    arguments.insert(arguments.begin(), request.program.string());
    std::vector<std::string> environment = environmentFor(request);
    const SpawnSettings settings(streams);
    pid_t id = 0;
    const int error = ::posix_spawn(&id, request.program.c_str(), settings.actions(), settings.attributes(),
                                    pointersTo(arguments).data(), pointersTo(environment).data());
    if (error != 0) return notStarted(request.program, error);
    return id;
}

Clock::time_point deadlineOf(const ProcessRequest& request) {
    const std::chrono::duration<double> limit(std::clamp(request.timeLimit, 0.0, kLongestTimeLimit));
    return Clock::now() + std::chrono::ceil<Clock::duration>(limit);
}

int millisecondsUntil(Clock::time_point deadline) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
    return static_cast<int>(std::clamp<std::int64_t>(left, 0, kLongestPoll));
}

/// Collects what the child prints until it ends by itself; why it must be ended otherwise.
std::optional<Failure::Kind> attend(const Child& child, Streams& streams, const StopEvent& stop,
                                    Clock::time_point deadline) {
    const auto tooMuch = [&] { return streams.output.size() + streams.errors.size() > kLargestProcessOutput; };
    while (true) {
        std::array<pollfd, 4> polled = {stop.toPoll(), child.toPoll(), streams.output.toPoll(),
                                        streams.errors.toPoll()};
        ::poll(polled.data(), polled.size(), millisecondsUntil(deadline));
        if (polled[0].revents != 0) return Failure::Kind::cancelled;
        const bool ended = polled[1].revents != 0;
        if (ended) child.killGroup();  // else a grandchild could print on and on
        for (OutputPipe* pipe : {&streams.output, &streams.errors}) {
            while (pipe->readPiece() && ended && !tooMuch()) {
            }
        }
        if (tooMuch()) return Failure::Kind::tooMuchOutput;
        if (ended) return std::nullopt;
        if (Clock::now() >= deadline) return Failure::Kind::timedOut;
    }
}

std::string_view explanationOf(Failure::Kind kind) {
    switch (kind) {
        case Failure::Kind::cancelled: return "was cancelled.";
        case Failure::Kind::timedOut: return "took too long.";
        case Failure::Kind::tooMuchOutput: return "printed too much.";
        case Failure::Kind::notStarted: return "could not be started.";
    }
    return {};
}

/// Zero, or the system's error.
int openPipes(Streams& streams) {
    const int error = streams.output.open();
    return error != 0 ? error : streams.errors.open();
}

}  // namespace

std::expected<ProcessResult, ProcessFailure> PosixProcessRunner::run(const ProcessRequest& request,
                                                                     std::stop_token stop) {
    const auto failed = [&](Failure::Kind kind) { return failure(kind, request.program, explanationOf(kind)); };
    if (stop.stop_requested()) return failed(Failure::Kind::cancelled);
    const Clock::time_point deadline = deadlineOf(request);
    Streams streams;
    const fs::path input = request.standardInput.empty() ? "/dev/null" : request.standardInput;
    streams.input = Descriptor(::open(input.c_str(), O_RDONLY | O_CLOEXEC));
    if (!streams.input) return notStarted(input, errno);
    if (const int error = openPipes(streams); error != 0) return notStarted(request.program, error);
    const StopEvent stopEvent(std::move(stop));
    if (stopEvent.error() != 0) return notStarted(request.program, stopEvent.error());

    const std::expected<pid_t, Failure> id = spawn(request, streams);
    if (!id) return std::unexpected(id.error());
    Child child(*id);
    if (child.handleError() != 0) return notStarted(request.program, child.handleError());
    streams.input.close();
    streams.output.closeWriteEnd();
    streams.errors.closeWriteEnd();
    if (const auto kind = attend(child, streams, stopEvent, deadline)) return failed(*kind);
    const int exitStatus = child.end();
    return ProcessResult{exitStatus, streams.output.takeContent(), streams.errors.takeContent()};
}

bool PosixProcessRunner::isExecutable(const fs::path& program) const {
    struct stat status{};
    return ::stat(program.c_str(), &status) == 0 && S_ISREG(status.st_mode) && ::access(program.c_str(), X_OK) == 0;
}

}  // namespace tessary
