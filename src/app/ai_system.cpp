#include "app/ai_system.h"

namespace tessary {

AISystem::AISystem(Shared shared, const Environment& environment)
    : shared_(shared),
      codex_{.home = environment("HOME").value_or("/"),
             .searchPath = environment("PATH").value_or(""),
             .temporary = environment("TMPDIR").value_or("/tmp")},
      secrets_(shared.secrets != nullptr ? *shared.secrets : keychain_) {}

AIResult<std::unique_ptr<AIProvider>> AISystem::makeProvider(const AISettings& settings, std::stop_token stop) {
    return tessary::makeProvider(settings,
                                 {.http = http_,
                                  .secrets = secrets_,
                                  .processes = processes_,
                                  .onDevice = onDevice_,
                                  .files = shared_.files,
                                  .ids = shared_.ids,
                                  .text = shared_.text,
                                  .codex = codex_},
                                 std::move(stop));
}

GeneratorServices AISystem::generatorServices(Workspace& workspace) {
    const StoreServices& services = workspace.services();
    return {.library = workspace.library(),
            .cards = workspace.cards(),
            .loop = services.loop,
            .clock = services.clock,
            .console = services.console,
            .ports = {.pdfs = pdfs_, .thermal = thermal_, .sleeper = sleeper_, .text = shared_.text},
            .makeProvider = [this](const AISettings& settings, std::stop_token stop) {
                return makeProvider(settings, std::move(stop));
            }};
}

}  // namespace tessary
