#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <iterator>
#include <optional>
#include <stop_token>
#include <string>
#include <thread>

#include "contract/folder_fixture.h"
#include "platform/adapters/posix/posix_process_runner.h"

namespace tessary {
namespace {

using Failure = ProcessFailure::Kind;

std::ptrdiff_t openDescriptors() { return std::distance(fs::directory_iterator("/proc/self/fd"), {}); }

/// Waits for the end of a grandchild. This process inherits it, unless its parent still came to reap it.
bool wasKilled(pid_t id) {
    int status = 0;
    if (::waitpid(id, &status, 0) == id) return WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
    return ::kill(id, 0) != 0 && errno == ESRCH;
}

class PosixProcessRunnerTest : public FolderFixture, public ::testing::Test {
protected:
    PosixProcessRunnerTest() : FolderFixture(Kind::posix) { ::prctl(PR_SET_CHILD_SUBREAPER, 1); }
    ~PosixProcessRunnerTest() override { ::prctl(PR_SET_CHILD_SUBREAPER, 0); }

    /// A shell script of its own, with the test's folder as "$1".
    ProcessRequest script(const std::string& body) {
        ProcessRequest request;
        request.program = folder_ / ("script" + std::to_string(++scripts_));
        put(request.program, "#!/bin/sh\n" + body + "\n");
        fs::permissions(request.program, fs::perms::owner_all);
        request.arguments = {folder_.string()};
        request.timeLimit = 600;
        return request;
    }

    ProcessResult run(const ProcessRequest& request) {
        const auto result = runner_.run(request, {});
        EXPECT_TRUE(result) << result.error().message;
        return result.value_or(ProcessResult{-1, {}, {}});
    }

    std::optional<Failure> failureOf(const ProcessRequest& request, std::stop_token stop = {}) {
        const auto result = runner_.run(request, std::move(stop));
        if (result) return std::nullopt;
        EXPECT_FALSE(result.error().message.empty());
        return result.error().kind;
    }

    /// What a script wrote into "id", as a process number.
    [[nodiscard]] pid_t writtenId() const { return static_cast<pid_t>(std::stol(get(folder_ / "id"))); }

    /// Runs a request, and requests its stop once the script has made "ready".
    std::optional<Failure> stopOnceReady(const ProcessRequest& request) {
        std::stop_source stop;
        std::optional<Failure> failure;
        std::jthread thread([&] { failure = failureOf(request, stop.get_token()); });
        while (!fs::exists(folder_ / "ready")) std::this_thread::yield();
        stop.request_stop();
        thread.join();
        return failure;
    }

    PosixProcessRunner runner_;
    int scripts_ = 0;
};

TEST_F(PosixProcessRunnerTest, TellsWhatTheChildDid) {
    ProcessRequest request = script("echo out \"$2\" \"$3\"; echo err >&2; exit 7");
    request.arguments.insert(request.arguments.end(), {"two words", "ü\"'$x"});
    const ProcessResult result = run(request);
    EXPECT_EQ(result.output, "out two words ü\"'$x\n");
    EXPECT_EQ(result.errors, "err\n");
    EXPECT_EQ(result.exitStatus, 7);
}

TEST_F(PosixProcessRunnerTest, TellsTheSignalThatEndedIt) {
    EXPECT_EQ(run(script("kill -TERM $$")).exitStatus, 128 + SIGTERM);
    EXPECT_EQ(run(script("kill -KILL $$")).exitStatus, 128 + SIGKILL);
}

TEST_F(PosixProcessRunnerTest, FeedsAFileOrNothing) {
    ProcessRequest request = script("cat; echo end");
    EXPECT_EQ(run(request).output, "end\n");
    request.standardInput = folder_ / "input";
    put(request.standardInput, "from the file\n");
    EXPECT_EQ(run(request).output, "from the file\nend\n");
    request.standardInput = folder_ / "none";
    EXPECT_EQ(failureOf(request), Failure::notStarted);
}

TEST_F(PosixProcessRunnerTest, SetsVariablesOnTopOfItsOwn) {
    ::setenv("TESSARY_KEPT", "kept", 1);
    ::setenv("TESSARY_REPLACED", "old", 1);
    ProcessRequest request = script("env | grep ^TESSARY_ | sort");
    request.environment = {{"TESSARY_ADDED", "a=b c"}, {"TESSARY_REPLACED", "new"}};
    EXPECT_EQ(run(request).output, "TESSARY_ADDED=a=b c\nTESSARY_KEPT=kept\nTESSARY_REPLACED=new\n");
    ::unsetenv("TESSARY_KEPT");
    ::unsetenv("TESSARY_REPLACED");
}

TEST_F(PosixProcessRunnerTest, TakesMuchOnBothStreams) {
    const ProcessResult result = run(script("head -c 5000000 /dev/zero >&2 & head -c 5000000 /dev/zero; wait"));
    EXPECT_EQ(result.output, std::string(5'000'000, '\0'));
    EXPECT_EQ(result.errors, std::string(5'000'000, '\0'));
}

TEST_F(PosixProcessRunnerTest, RefusesTooMuch) {
    EXPECT_EQ(failureOf(script("cat /dev/zero & cat /dev/zero >&2")), Failure::tooMuchOutput);
    EXPECT_EQ(run(script("head -c 33554432 /dev/zero")).output.size(), kLargestProcessOutput);
    EXPECT_EQ(failureOf(script("head -c 33554432 /dev/zero; printf x >&2")), Failure::tooMuchOutput);
}

TEST_F(PosixProcessRunnerTest, EndsWhatTakesTooLong) {
    ProcessRequest request = script("trap '' TERM; while :; do sleep 60; done");
    request.timeLimit = 0.2;
    EXPECT_EQ(failureOf(request), Failure::timedOut);
}

TEST_F(PosixProcessRunnerTest, DoesNotStartWhenStoppedBefore) {
    std::stop_source stop;
    stop.request_stop();
    EXPECT_EQ(failureOf(script("touch \"$1/ready\""), stop.get_token()), Failure::cancelled);
    EXPECT_FALSE(fs::exists(folder_ / "ready"));
}

TEST_F(PosixProcessRunnerTest, StopsTheChildAndItsChildren) {
    const ProcessRequest request =
        script("trap '' TERM; sleep 60 & echo $! > \"$1/id\"; touch \"$1/ready\"; wait; sleep 60");
    EXPECT_EQ(stopOnceReady(request), Failure::cancelled);
    EXPECT_TRUE(wasKilled(writtenId()));
}

TEST_F(PosixProcessRunnerTest, LeavesNoGrandchildBehind) {
    EXPECT_EQ(run(script("sleep 60 >/dev/null 2>&1 & echo $! > \"$1/id\"")).exitStatus, 0);
    EXPECT_TRUE(wasKilled(writtenId()));
}

TEST_F(PosixProcessRunnerTest, DoesNotWaitForAGrandchildThatHoldsTheOutput) {
    const ProcessResult result = run(script("sleep 60 & echo $! > \"$1/id\"; echo done"));
    EXPECT_EQ(result.output, "done\n");
    EXPECT_TRUE(wasKilled(writtenId()));
}

TEST_F(PosixProcessRunnerTest, TellsWhatCannotBeStarted) {
    ProcessRequest request = script("");
    put(folder_ / "plain", "#!/bin/sh\n");
    put(folder_ / "nonsense", "nonsense");
    fs::permissions(folder_ / "nonsense", fs::perms::owner_all);
    for (const char* name : {"none", "plain", "nonsense", "."}) {
        request.program = folder_ / name;
        const auto result = runner_.run(request, {});
        ASSERT_FALSE(result) << name;
        EXPECT_EQ(result.error().kind, Failure::notStarted) << name;
        EXPECT_TRUE(result.error().message.starts_with(request.program.string() + ": ")) << result.error().message;
    }
}

TEST_F(PosixProcessRunnerTest, KnowsWhatCanBeRun) {
    const ProcessRequest request = script("");
    put(folder_ / "plain", "");
    EXPECT_TRUE(runner_.isExecutable(request.program));
    EXPECT_FALSE(runner_.isExecutable(folder_ / "plain"));
    EXPECT_FALSE(runner_.isExecutable(folder_));
    EXPECT_FALSE(runner_.isExecutable(folder_ / "none"));
    EXPECT_FALSE(runner_.isExecutable({}));
}

TEST_F(PosixProcessRunnerTest, LeaksNoDescriptors) {
    const int inheritable = ::open("/dev/null", O_RDONLY);
    const std::ptrdiff_t before = openDescriptors();
    ProcessRequest list;
    list.program = "/bin/ls";
    list.arguments = {"/proc/self/fd"};
    EXPECT_EQ(run(list).output, "0\n1\n2\n3\n");  // the last one is the folder itself
    ProcessRequest endless = script("touch \"$1/ready\"; cat /dev/zero");
    EXPECT_EQ(failureOf(endless), Failure::tooMuchOutput);
    endless.program = folder_ / "none";
    EXPECT_EQ(failureOf(endless), Failure::notStarted);
    EXPECT_EQ(openDescriptors(), before);
    ::close(inheritable);
}

TEST_F(PosixProcessRunnerTest, StartsTheChildWithDefaultSignals) {
    sigset_t blocked;
    sigset_t before;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGTERM);
    ASSERT_EQ(::pthread_sigmask(SIG_BLOCK, &blocked, &before), 0);
    const auto handlerBefore = ::signal(SIGPIPE, SIG_IGN);
    EXPECT_EQ(run(script("kill -TERM $$; sleep 60")).exitStatus, 128 + SIGTERM);
    EXPECT_EQ(run(script("kill -PIPE $$; sleep 60")).exitStatus, 128 + SIGPIPE);
    ::signal(SIGPIPE, handlerBefore);
    ::pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

}  // namespace
}  // namespace tessary
