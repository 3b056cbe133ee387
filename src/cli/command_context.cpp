#include "cli/command_context.h"

namespace tessary {
namespace {

/// Paths are found before anything else exists that could read files.
AppPaths findPaths(const GlobalOptions& options, const Environment& environment) {
    const PosixFileSystem files;
    const std::string home = options.home.empty() ? environment("TESSARY_HOME").value_or("") : options.home;
    return valueOrFail(home.empty() ? desktopPaths(environment, files) : portablePaths(home, files));
}

}  // namespace

CommandContext::CommandContext(GlobalOptions options, const ProgramStreams& streams, Environment environment)
    : options_(std::move(options)),
      streams_(streams),
      environment_(std::move(environment)),
      paths_(findPaths(options_, environment_)),
      system_(std::make_unique<SystemPorts>(paths_, options_.now, streams_.err)) {
    if (const auto& problem = system_->settings.problem()) err() << "Warning: " << *problem << '\n';
}

CommandContext::~CommandContext() = default;

Workspace& CommandContext::open(WorkspaceUse use) {
    if (workspace_) return *workspace_;
    workspace_ = valueOrFail(Workspace::open(paths_, system_->forWorkspace(environment_, loop_), use));
    for (const std::string& problem : workspace_->loadProblems()) err() << "Warning: " << problem << '\n';
    return *workspace_;
}

AISystem& CommandContext::ai() {
    if (!ai_) {
        ai_ = std::make_unique<AISystem>(
            AISystem::Shared{.files = system_->files, .ids = system_->ids, .text = system_->text}, environment_);
    }
    return *ai_;
}

void CommandContext::finish() {
    if (!workspace_) return;
    const std::expected<void, std::string> closed = workspace_->close();
    workspace_.reset();
    valueOrFail(closed);
}

void CommandContext::printJson(const std::function<void(JsonWriter&)>& write) {
    JsonWriter writer;
    write(writer);
    out() << valueOrFail(writer.finish()) << '\n';
}

}  // namespace tessary
