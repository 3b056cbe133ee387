#include "ai/providers/codex_backend.h"

#include <algorithm>
#include <array>

#include "base/text.h"

namespace tessary {
namespace {

namespace fs = std::filesystem;

constexpr double kTimeLimit = 300;       ///< seconds
constexpr double kShellTimeLimit = 20;   ///< seconds; login scripts may be slow
constexpr std::size_t kLargestAnswer = kLargestProcessOutput;  ///< bytes
constexpr const char* kLoginShell = "/bin/zsh";

AIError notInstalled() {
    return AIError::unavailable(
        "Install the Codex app or CLI (it's free with ChatGPT) and sign in with your ChatGPT account.");
}

AIError errorOf(const ProcessFailure& failure) {
    switch (failure.kind) {
        case ProcessFailure::Kind::cancelled: return AIError::cancelled();
        case ProcessFailure::Kind::timedOut: return AIError::network("Codex took too long to answer");
        case ProcessFailure::Kind::tooMuchOutput: return AIError::badResponse("the reply was too large");
        case ProcessFailure::Kind::notStarted: break;
    }
    return AIError::unavailable("Codex couldn't be started: " + failure.message);
}

bool speaksOfLogin(std::string_view errors) {
    constexpr std::array<std::string_view, 9> kWords{"login",      "log in", "logged in",    "sign in",    "signed in",
                                                     "logged out", "401",    "unauthorized", "authenticat"};
    const std::string lowered = asciiLowered(errors);
    return std::ranges::any_of(kWords, [&](auto word) { return lowered.find(word) != std::string::npos; });
}

std::string promptOf(const JSONJob& job) {
    return job.system + "\n\n" + job.user +
           "\n\nReply with ONLY the JSON object, no prose, no code fences, and do not run any commands. It must be "
           "shaped exactly like this:\n" +
           std::string(job.shape);
}

FileResult<void> writeNew(FileSystem& files, const fs::path& path, std::string_view content) {
    FileResult<std::unique_ptr<WritableFile>> file = files.create(path);
    if (!file) return std::unexpected(file.error());
    return (*file)->write(content);
}

/// As far as it goes: what a tool leaves behind in the temporary folder is worth no error.
void removeTree(FileSystem& files, const fs::path& folder) {
    const FileResult<std::vector<DirectoryEntry>> entries = files.list(folder);
    for (const DirectoryEntry& entry : entries.value_or(std::vector<DirectoryEntry>{})) {
        const fs::path path = folder / entry.name;
        if (entry.kind == FileKind::directory && !entry.isSymbolicLink) {
            removeTree(files, path);
        } else {
            static_cast<void>(files.remove(path));
        }
    }
    static_cast<void>(files.remove(folder));
}

class TemporaryFolder {
public:
    TemporaryFolder(FileSystem& files, fs::path path) : files_(files), path_(std::move(path)) {}
    ~TemporaryFolder() { removeTree(files_, path_); }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    [[nodiscard]] const fs::path& path() const { return path_; }

private:
    FileSystem& files_;
    fs::path path_;
};

}  // namespace

AIResult<fs::path> CodexBackend::locate(std::stop_token stop) {
    const std::array<fs::path, 6> places{
        places_.home / ".local/bin/codex",      "/opt/homebrew/bin/codex",         "/usr/local/bin/codex",
        places_.home / ".npm-global/bin/codex", places_.home / ".volta/bin/codex", places_.home / ".bun/bin/codex"};
    const auto found = std::ranges::find_if(places, [&](const fs::path& p) { return processes_.isExecutable(p); });
    if (found != places.end()) return *found;
    if (!processes_.isExecutable(kLoginShell)) return std::unexpected(notInstalled());
    const auto asked = processes_.run(
        {.program = kLoginShell, .arguments = {"-lc", "command -v codex"}, .timeLimit = kShellTimeLimit}, stop);
    if (!asked && asked.error().kind == ProcessFailure::Kind::cancelled) return std::unexpected(AIError::cancelled());
    const auto lines = asked ? splitLines(asked->output) : std::vector<std::string_view>{};
    const fs::path named = lines.empty() ? fs::path() : fs::path(trimmed(lines.front()));
    if (!named.is_absolute() || !processes_.isExecutable(named)) return std::unexpected(notInstalled());
    return named;
}

AIResult<void> CodexBackend::prepare(std::stop_token stop) {
    const AIResult<fs::path> tool = locate(stop);
    if (!tool) return std::unexpected(tool.error());
    return {};
}

AIResult<std::string> CodexBackend::completeJSON(const JSONJob& job, std::stop_token stop) {
    const AIResult<fs::path> tool = locate(stop);
    if (!tool) return std::unexpected(tool.error());
    const fs::path path = places_.temporary / ("tessary-codex-" + ids_.next().toString());
    if (const FileResult<void> made = files_.createFolders(path); !made) {
        return std::unexpected(AIError::unavailable("Codex couldn't be started: " + made.error().message));
    }
    const TemporaryFolder folder(files_, path);
    return runIn(folder.path(), *tool, job, stop);
}

/// The inherited search path with the places of the tool's own programs around it.
std::string CodexBackend::searchPath() const {
    std::vector<std::string> folders{(places_.home / ".local/bin").string(), "/opt/homebrew/bin", "/usr/local/bin"};
    if (!places_.searchPath.empty()) folders.push_back(places_.searchPath);  // an empty entry means the current folder
    folders.emplace_back("/bin");
    return joined(folders, ":");
}

AIResult<std::string> CodexBackend::runIn(const fs::path& folder, const fs::path& tool, const JSONJob& job,
                                          std::stop_token stop) {
    const fs::path prompt = folder / "prompt.txt";
    const fs::path answer = folder / "out.txt";
    if (const FileResult<void> written = writeNew(files_, prompt, promptOf(job)); !written) {
        return std::unexpected(AIError::unavailable("Codex couldn't be started: " + written.error().message));
    }
    ProcessRequest request{.program = tool,
                           .arguments = {"exec", "--skip-git-repo-check", "--ephemeral", "--sandbox", "read-only",
                                         "--color", "never", "-C", folder.string(), "-o", answer.string()},
                           .environment = {{"PATH", searchPath()}},
                           .standardInput = prompt,
                           .timeLimit = kTimeLimit};
    if (!model_.empty()) request.arguments.insert(request.arguments.end(), {"-m", model_});
    request.arguments.emplace_back("-");
    const std::expected<ProcessResult, ProcessFailure> ended = processes_.run(request, stop);
    if (!ended) return std::unexpected(errorOf(ended.error()));
    return answerOf(*ended, answer);
}

AIResult<std::string> CodexBackend::answerOf(const ProcessResult& ended, const fs::path& file) const {
    if (ended.exitStatus != 0 && speaksOfLogin(ended.errors)) {
        return std::unexpected(AIError::unavailable(
            "Sign in to Codex with your ChatGPT account first: open Terminal and run codex login."));
    }
    if (ended.exitStatus != 0) {
        return std::unexpected(AIError::badResponse("Codex exited with code " + std::to_string(ended.exitStatus)));
    }
    const FileResult<FileInfo> info = files_.info(file);
    if (info && info->size > kLargestAnswer) return std::unexpected(AIError::badResponse("the reply was too large"));
    const std::string written = files_.read(file).value_or("");
    std::string answer(trimmed(trimmed(written).empty() ? ended.output : written));
    if (answer.empty()) return std::unexpected(AIError::badResponse("Codex returned no message"));
    return answer;
}

}  // namespace tessary
