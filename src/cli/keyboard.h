#pragma once

#include <memory>
#include <string>

#include "app/system_ports.h"
#include "cli/interrupts.h"

namespace tessary {

struct Key {
    enum class Kind {
        character,
        enter,
        escape,
        backspace,
        other,  ///< an arrow key and the like
        end,    ///< no more input, Ctrl-D, or a signal to end
    };

    Kind kind = Kind::end;
    std::string text;  ///< of a character, in UTF-8
};

/// Reads single keys from a terminal, or the bytes of a file or pipe as if they were keys. While it waits it runs the
/// main loop's tasks, so that what is pending gets saved. A terminal is given back as it was.
class Keyboard {
public:
    /// `loop` and `interrupts` outlive the keyboard.
    Keyboard(int descriptor, EventLoop& loop, const Interrupts& interrupts);
    ~Keyboard();
    Keyboard(const Keyboard&) = delete;
    Keyboard& operator=(const Keyboard&) = delete;

    [[nodiscard]] bool isTerminal() const;
    [[nodiscard]] Key next();

private:
    /// The next byte; -1 at the end, -2 when none has come within `seconds` (waits for ever when negative).
    int nextByte(double seconds);
    /// False when the wait is over without input.
    bool waitForInput(double seconds);
    Key afterEscape();
    Key character(unsigned char first);

    class RawMode;

    int descriptor_;
    EventLoop& loop_;
    const Interrupts& interrupts_;
    std::unique_ptr<RawMode> rawMode_;  ///< null when it is no terminal
    std::string buffer_;
    std::size_t position_ = 0;
    bool ended_ = false;
};

}  // namespace tessary
