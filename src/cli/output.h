#pragma once

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "platform/clock.h"
#include "platform/text_services.h"

namespace tessary {

/// How many terminal columns a text fills.
[[nodiscard]] std::size_t columnsOf(std::string_view text, const TextServices& services);

/// On one line, and without control characters: a note must not be able to steer the terminal.
[[nodiscard]] std::string onOneLine(std::string_view text);
/// Line ends and tabs stay, other control characters go.
[[nodiscard]] std::string withoutControls(std::string_view text);

/// At most `columns` wide, with "…" at the end where something is cut.
[[nodiscard]] std::string cutToColumns(std::string_view text, std::size_t columns, const TextServices& services);

/// Broken into lines at most `columns` wide, at white space where there is some.
[[nodiscard]] std::vector<std::string> wrapped(std::string_view text, std::size_t columns,
                                               const TextServices& services);

/// Rows under a head; columns as wide as their widest cell, cells longer than `kWidestCell` cut.
class TextTable {
public:
    static constexpr std::size_t kWidestCell = 60;  ///< terminal columns

    explicit TextTable(std::vector<std::string> head) : head_(std::move(head)) {}
    void add(std::vector<std::string> row) { rows_.push_back(std::move(row)); }
    void print(std::ostream& out, const TextServices& services) const;

private:
    std::vector<std::string> head_;
    std::vector<std::vector<std::string>> rows_;
};

/// "2026-11-21 09:30" in the calendar's zone.
[[nodiscard]] std::string localTime(Date moment, const LocalCalendar& calendar);

/// "1 page", "2 pages".
[[nodiscard]] std::string counted(std::size_t count, std::string_view one, std::string_view many);

}  // namespace tessary
