#pragma once

namespace tessary {

/// While one lives, Ctrl-C and the signals that end a program are noted instead of ending it, so that what is under way
/// can be brought to a good end. One at a time, main thread only.
class Interrupts {
public:
    Interrupts();
    ~Interrupts();
    Interrupts(const Interrupts&) = delete;
    Interrupts& operator=(const Interrupts&) = delete;

    [[nodiscard]] bool raised() const;
    /// Becomes readable when a signal arrives, for `poll`. Never read from it.
    [[nodiscard]] int descriptor() const;
};

}  // namespace tessary
