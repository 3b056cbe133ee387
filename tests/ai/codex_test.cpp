#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <thread>
#include <vector>

#include "ai/providers_fixture.h"
#include "base/text.h"
#include "contract/folder_fixture.h"

namespace tessary {
namespace {

constexpr std::string_view kNotInstalled =
    "Install the Codex app or CLI (it's free with ChatGPT) and sign in with your ChatGPT account.";
constexpr std::string_view kUnexpected = "The AI answered something unexpected: ";

/// Runs what lies in the test's folder, so that a tool that is really installed changes nothing.
class SandboxRunner final : public ProcessRunner {
public:
    explicit SandboxRunner(fs::path root) : root_(std::move(root)) {}

    std::expected<ProcessResult, ProcessFailure> run(const ProcessRequest& request, std::stop_token stop) override {
        requests.push_back(request);
        if (const auto answer = scripted.find(request.program); answer != scripted.end()) return answer->second;
        ProcessRequest shorter = request;
        if (timeLimit) shorter.timeLimit = *timeLimit;
        return real_.run(shorter, std::move(stop));
    }
    bool isExecutable(const fs::path& program) const override {
        asked.push_back(program);
        const bool isOurs = program.string().starts_with(root_.string() + "/");
        return scripted.contains(program) || (isOurs && real_.isExecutable(program));
    }

    std::map<fs::path, ProcessResult> scripted;  ///< programs that only seem to be there
    std::optional<double> timeLimit;             ///< seconds, in the place of those asked for
    std::vector<ProcessRequest> requests;
    mutable std::vector<fs::path> asked;  ///< whether it is executable

private:
    fs::path root_;
    PosixProcessRunner real_;
};

class CodexTest : public FolderFixture, public ::testing::Test {
protected:
    CodexTest() : FolderFixture(Kind::posix) {
        rig_.processes = &runner_;
        rig_.codex = {.home = home_, .searchPath = "/usr/bin:/bin", .temporary = temporary_};
        settings_.provider = AIProviderKind::codex;
        EXPECT_TRUE(files_->createFolders(temporary_));
    }

    /// Installs a shell script. In it $DIR is the test's folder, $RUN that of the run, and $OUT the answer's file.
    void install(const std::string& body, const fs::path& place = ".local/bin/codex", bool executable = true) {
        const fs::path path = home_ / place;
        EXPECT_TRUE(files_->createFolders(path.parent_path()));
        fs::remove(path);
        put(path, "#!/bin/sh\nDIR='" + folder_.string() + "'; RUN=$9; OUT=${11}\n" + body + "\n");
        if (executable) fs::permissions(path, fs::perms::owner_all);
    }
    /// What comes of a job; whatever it is, the run's folder must be gone.
    AIResult<AnswerGrade> grade(std::stop_token stop = {}) {
        AIResult<AnswerGrade> result = rig_.make(settings_)->grade(smallRequest(), std::move(stop));
        EXPECT_TRUE(fs::is_empty(temporary_));
        return result;
    }
    std::string textAfter(const std::string& script) {
        install(script);
        return textOfError(grade());
    }
    /// The end of a process that a script has named in "id". This process inherits it.
    [[nodiscard]] bool wasKilled() const {
        const auto id = static_cast<pid_t>(std::stol(get(folder_ / "id")));
        int status = 0;
        if (::waitpid(id, &status, 0) == id) return WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
        return ::kill(id, 0) != 0;
    }

    fs::path home_ = folder_ / "home";
    fs::path temporary_ = folder_ / "tmp";
    SandboxRunner runner_{folder_};
    ProviderRig rig_;
    AISettings settings_;
};

const std::string kAnswer = "printf '%s' '" + std::string(kGradeReply) + "'";

TEST_F(CodexTest, RunsTheToolAsItWantsToBeRun) {
    install(
        "cat > \"$DIR/input\"; printf '%s\\n' \"$@\" > \"$DIR/arguments\"; printf '%s' \"$PATH\" > \"$DIR/path\"\n"
        "ls \"$RUN\" > \"$DIR/files\"; echo working; " +
        kAnswer + " > \"$OUT\"");
    std::vector<std::string> folders;
    for (const char* model : {"", " gpt-test "}) {
        settings_.codexModel = model;
        const AIResult<AnswerGrade> grade = this->grade();
        ASSERT_TRUE(grade) << grade.error().text();
        EXPECT_EQ(*grade, gradeOfReply());
        const ProcessRequest& request = runner_.requests.back();
        EXPECT_EQ(request.program, home_ / ".local/bin/codex");
        EXPECT_EQ(request.timeLimit, 300);
        folders.push_back(request.arguments.at(8));
        EXPECT_EQ(get(folder_ / "arguments"),
                  replacedAll(replacedAll("exec\n--skip-git-repo-check\n--ephemeral\n--sandbox\nread-only\n--color\n"
                                          "never\n-C\n@\n-o\n@/out.txt\n#-\n",
                                          "@", folders.back()),
                              "#", *model == '\0' ? "" : "-m\ngpt-test\n"));
    }
    for (const std::string& folder : folders) {
        EXPECT_TRUE(folder.starts_with((temporary_ / "tessary-codex-").string())) << folder;
    }
    EXPECT_NE(folders[0], folders[1]);
    EXPECT_EQ(get(folder_ / "files"), "prompt.txt\n");
    EXPECT_EQ(get(folder_ / "path"),
              (home_ / ".local/bin").string() + ":/opt/homebrew/bin:/usr/local/bin:/usr/bin:/bin:/bin");
    const JSONJob job = gradeJob(smallRequest());
    EXPECT_EQ(get(folder_ / "input"),
              job.system + "\n\n" + job.user +
                  "\n\nReply with ONLY the JSON object, no prose, no code fences, and do not run any commands. It must "
                  "be shaped exactly like this:\n" +
                  std::string(job.shape));
}

TEST_F(CodexTest, SaysWhatCameOfIt) {
    const std::string signIn = "Sign in to Codex with your ChatGPT account first: open Terminal and run codex login.";
    const std::string unexpected(kUnexpected);
    const struct {
        std::string script;
        std::string text;  ///< empty for an answer
    } cases[] = {
        {kAnswer, ""},
        {"echo ' ' > \"$OUT\"; " + kAnswer, ""},
        {"echo 'not logged in' >&2; " + kAnswer, ""},
        {"echo 'ERROR: Not Logged In' >&2; exit 1", signIn},
        {"echo '401 Unauthorized' >&2; " + kAnswer + "; exit 2", signIn},
        {"echo 'authentication failed' >&2; exit 1", signIn},
        {"echo 'please sign in'; echo 'boom' >&2; exit 3", unexpected + "Codex exited with code 3"},
        {kAnswer + " > \"$OUT\"; exit 4", unexpected + "Codex exited with code 4"},
        {"kill -KILL $$", unexpected + "Codex exited with code 137"},
        {"", unexpected + "Codex returned no message"},
        {"printf ' \\n' | tee \"$OUT\"", unexpected + "Codex returned no message"},
        {"echo 'I cannot.' > \"$OUT\"; " + kAnswer, unexpected + "it didn't return valid JSON"},
        {"head -c 40000000 /dev/zero", unexpected + "the reply was too large"},
        {"head -c 40000000 /dev/zero > \"$OUT\"", unexpected + "the reply was too large"},
        {"rm -r \"$RUN\"; " + kAnswer, ""},
        {"ln -s \"$DIR\" \"$RUN/link\"; ln -s \"$DIR/kept\" \"$RUN/file\"; " + kAnswer, ""},
        {"mkdir -p \"$RUN/a/b\"; echo x > \"$RUN/a/b/c\"; chmod 500 \"$RUN/a/b/c\"; mkdir \"$OUT\"; " + kAnswer, ""},
    };
    put(folder_ / "kept", "kept");
    for (const auto& [script, text] : cases) EXPECT_EQ(textAfter(script), text) << script;
    EXPECT_EQ(get(folder_ / "kept"), "kept");
    const fs::path tool = home_ / ".local/bin/codex";
    fs::remove(tool);
    put(tool, "#!/nowhere/sh\n");
    fs::permissions(tool, fs::perms::owner_all);
    EXPECT_TRUE(textOfError(grade()).starts_with("Codex couldn't be started: "));
    fs::remove(temporary_);
    put(temporary_, "no folder");
    EXPECT_TRUE(
        textOfError(rig_.make(settings_)->grade(smallRequest(), {})).starts_with("Codex couldn't be started: "));
}

TEST_F(CodexTest, EndsWhatTakesTooLong) {
    runner_.timeLimit = 0.2;
    EXPECT_EQ(textAfter("trap '' TERM; mkdir \"$RUN/left\"; while :; do sleep 60; done"),
              "Couldn't reach the AI: Codex took too long to answer");
}

TEST_F(CodexTest, StopsInMidRun) {
    ::prctl(PR_SET_CHILD_SUBREAPER, 1);
    install("mkdir \"$RUN/left\"; sleep 60 & echo $! > \"$DIR/id\"; touch \"$DIR/ready\"; wait");
    std::stop_source stop;
    AIResult<AnswerGrade> result;
    std::jthread thread([&] { result = grade(stop.get_token()); });
    while (!fs::exists(folder_ / "ready")) std::this_thread::yield();
    stop.request_stop();
    thread.join();
    EXPECT_EQ(errorIn(result), AIError::cancelled());
    EXPECT_TRUE(wasKilled());
    ::prctl(PR_SET_CHILD_SUBREAPER, 0);
}

TEST_F(CodexTest, LeavesNoGrandchildBehind) {
    ::prctl(PR_SET_CHILD_SUBREAPER, 1);
    EXPECT_EQ(textAfter("sleep 60 & echo $! > \"$DIR/id\"; " + kAnswer), "");
    EXPECT_TRUE(wasKilled());
    ::prctl(PR_SET_CHILD_SUBREAPER, 0);
}

TEST_F(CodexTest, LooksForTheToolInItsPlacesInOrder) {
    const std::vector<fs::path> places{home_ / ".local/bin/codex", "/opt/homebrew/bin/codex",
                                       "/usr/local/bin/codex",     home_ / ".npm-global/bin/codex",
                                       home_ / ".volta/bin/codex", home_ / ".bun/bin/codex"};
    EXPECT_EQ(textOfError(rig_.make(settings_)->prepare({})), kNotInstalled);
    ASSERT_GE(runner_.asked.size(), places.size());
    EXPECT_TRUE(std::ranges::equal(places, std::span(runner_.asked).first(places.size())));
    EXPECT_EQ(textOfError(grade()), kNotInstalled);
    EXPECT_TRUE(runner_.requests.empty());
    for (auto place = places.rbegin(); place != places.rend(); ++place) {
        runner_.scripted[*place] = {.exitStatus = 0, .output = std::string(kGradeReply), .errors = ""};
        EXPECT_EQ(textOfError(rig_.make(settings_)->prepare({})), "");
        ASSERT_TRUE(grade());
        EXPECT_EQ(runner_.requests.back().program, *place);
    }
}

TEST_F(CodexTest, PassesOverWhatCannotBeRun) {
    install(kAnswer, ".local/bin/codex", false);
    EXPECT_TRUE(files_->createFolders(home_ / ".volta/bin/codex"));
    install(kAnswer, ".bun/bin/codex");
    ASSERT_TRUE(grade());
    EXPECT_EQ(runner_.requests.back().program, home_ / ".bun/bin/codex");
}

TEST_F(CodexTest, AsksTheLoginShellLast) {
    const fs::path elsewhere = folder_ / "elsewhere" / "codex";
    install(kAnswer, "../elsewhere/codex");
    const struct {
        ProcessResult answer;
        bool found;
    } cases[] = {
        {{0, elsewhere.string() + "\n", ""}, true},
        {{1, "", "no such command"}, false},
        {{0, "codex: aliased to something\n", ""}, false},
        {{0, (folder_ / "none").string(), ""}, false},
    };
    for (const auto& [answer, found] : cases) {
        runner_.scripted["/bin/zsh"] = answer;
        EXPECT_EQ(textOfError(grade()), found ? "" : kNotInstalled) << answer.output;
    }
    EXPECT_EQ(runner_.requests.front().arguments, (std::vector<std::string>{"-lc", "command -v codex"}));
}

}  // namespace
}  // namespace tessary
