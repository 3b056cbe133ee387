#include "app/system_ports.h"

#include "platform/adapters/threads/thread_queue.h"

namespace tessary {

WorkspacePorts SystemPorts::forWorkspace(const Environment& environment, MainLoop& loop) {
    return {.files = files,
            .loop = loop,
            .clock = clock,
            .calendar = calendar,
            .ids = ids,
            .settings = settings,
            .console = console,
            .makeQueue = [](std::string name) { return std::make_unique<ThreadQueue>(std::move(name)); },
            .stillSandboxed = environment("APP_SANDBOX_CONTAINER_ID").has_value()};
}

}  // namespace tessary
