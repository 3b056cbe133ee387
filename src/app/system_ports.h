#pragma once

#include <optional>
#include <ostream>

#include "app/workspace.h"
#include "platform/adapters/icu/icu_calendar.h"
#include "platform/adapters/icu/icu_text_services.h"
#include "platform/adapters/ini/ini_settings.h"
#include "platform/adapters/posix/posix_file_system.h"
#include "platform/adapters/system/random_ids.h"
#include "platform/adapters/system/stream_console.h"
#include "platform/adapters/system/system_clock.h"
#include "platform/adapters/threads/event_loop.h"
#include "platform/adapters/yaml/yaml_front_matter.h"

namespace tessary {

/// The computer's clock, or one moment that the user has set.
class ProgramClock final : public Clock {
public:
    explicit ProgramClock(std::optional<Date> fixed) : fixed_(fixed) {}
    [[nodiscard]] Date now() const override { return fixed_ ? *fixed_ : system_.now(); }

private:
    std::optional<Date> fixed_;
    SystemClock system_;
};

/// The real ports of a program, but for its main loop: `EventLoop` in a terminal, Qt's in the window.
struct SystemPorts {
    /// `console` outlives the ports.
    SystemPorts(const AppPaths& paths, std::optional<Date> fixedNow, std::ostream& consoleStream)
        : clock(fixedNow), console(consoleStream), settings(files, paths.settings) {}

    PosixFileSystem files;
    ProgramClock clock;
    IcuCalendar calendar;
    RandomIds ids;
    IcuTextServices text;
    YamlFrontMatter frontMatter;
    StreamConsole console;
    IniSettings settings;

    /// `loop` outlives the workspace.
    [[nodiscard]] WorkspacePorts forWorkspace(const Environment& environment, MainLoop& loop);
};

}  // namespace tessary
