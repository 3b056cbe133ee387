#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <ostream>
#include <sstream>
#include <stdexcept>
#include <string>

#include "app/ai_system.h"
#include "app/system_ports.h"
#include "base/json_record.h"

namespace tessary {

/// Ends a command that could not be done. The text is for the user; nothing has changed.
class CommandFailure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Ends a command that was asked for in a wrong way.
class UsageFailure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Where a program reads and writes.
struct ProgramStreams {
    int input = 0;  ///< file descriptor
    std::ostream& out;
    std::ostream& err;
    bool outIsTerminal = false;
    bool errIsTerminal = false;
};

/// The options that every command takes.
struct GlobalOptions {
    std::string home;  ///< empty: the desktop's places, or TESSARY_HOME
    std::optional<Date> now;
    bool json = false;
};

/// What a command works with. Opens the library on the first demand.
class CommandContext {
public:
    CommandContext(GlobalOptions options, const ProgramStreams& streams, Environment environment);
    ~CommandContext();

    [[nodiscard]] bool json() const { return options_.json; }
    [[nodiscard]] const ProgramStreams& streams() const { return streams_; }
    /// What the command has to say. It is held back until everything is saved, so that nothing is called done that is
    /// not; a command that fails says nothing here.
    [[nodiscard]] std::ostream& out() { return answer_; }
    [[nodiscard]] std::ostream& err() const { return streams_.err; }
    [[nodiscard]] const Environment& environment() const { return environment_; }
    [[nodiscard]] const AppPaths& paths() const { return paths_; }
    [[nodiscard]] SystemPorts& system() { return *system_; }
    [[nodiscard]] EventLoop& loop() { return loop_; }
    /// Made on the first demand.
    [[nodiscard]] AISystem& ai();
    [[nodiscard]] Date now() const { return system_->clock.now(); }

    /// Opens the library, or gives the one that is open. What could not be read of it goes to the error stream.
    Workspace& open(WorkspaceUse use);
    /// Writes what is pending and closes the library, if it is open. Throws CommandFailure when something can't be
    /// saved.
    void finish();
    [[nodiscard]] std::string answer() const { return answer_.str(); }

    /// The command did its work, but the exit code is to say that not all is well.
    void setFailed() { failed_ = true; }
    [[nodiscard]] bool failed() const { return failed_; }

    /// Prints one JSON document, and a line end, of what `write` writes.
    void printJson(const std::function<void(JsonWriter&)>& write);
    /// Prints one JSON object. `write` gets a function that takes the key and the value of the next member.
    template <class Write>
    void printJsonObject(Write write) {
        printJson([&](JsonWriter& writer) {
            writer.beginObject();
            write([&writer](std::string_view key, const auto& value) {
                writer.key(key);
                if constexpr (std::is_same_v<decltype(value), const std::size_t&>) {
                    writer.integer(static_cast<std::int64_t>(value));
                } else {
                    writeValue(writer, value);
                }
            });
            writer.endObject();
        });
    }
    /// Prints one value in the shape of the library files.
    template <class T>
    void printJsonOf(const T& value) {
        printJson([&](JsonWriter& writer) { writeValue(writer, value); });
    }

private:
    GlobalOptions options_;
    ProgramStreams streams_;
    Environment environment_;
    AppPaths paths_;
    EventLoop loop_;
    std::unique_ptr<SystemPorts> system_;
    std::unique_ptr<AISystem> ai_;
    std::unique_ptr<Workspace> workspace_;
    std::ostringstream answer_;
    bool failed_ = false;
};

/// The value, or CommandFailure with the error.
template <class T>
T valueOrFail(std::expected<T, std::string> result) {
    if (!result) throw CommandFailure(result.error());
    if constexpr (!std::is_void_v<T>) return *std::move(result);
}

}  // namespace tessary
