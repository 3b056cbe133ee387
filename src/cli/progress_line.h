#pragma once

#include <optional>
#include <string>

#include "cli/command_context.h"

namespace tessary {

/// How far a long command is: one line with a bar that is written over on a terminal; plain lines elsewhere.
class ProgressLine {
public:
    enum class Weight {
        step,    ///< always worth a plain line, when the text is new
        detail,  ///< worth a plain line for each tenth of the way
    };

    explicit ProgressLine(const ProgramStreams& streams) : streams_(streams) {}
    /// Takes the line off the terminal.
    ~ProgressLine();
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;

    /// `fraction` is 0 to 1.
    void show(double fraction, const std::string& text, Weight weight);

private:
    const ProgramStreams& streams_;
    std::string last_;
    int lastTenth_ = -1;
    bool shown_ = false;
};

}  // namespace tessary
