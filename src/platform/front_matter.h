#pragma once

#include <expected>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace tessary {

/// The YAML block at the head of a note, as far as notes use it: keys (ASCII lower-cased) with one text or a list of
/// texts. Nested maps are left out.
using FrontMatter = std::map<std::string, std::vector<std::string>, std::less<>>;

class FrontMatterReader {
public:
    virtual ~FrontMatterReader() = default;
    /// Reads the text between the "---" lines. Never throws; the error says what is wrong, with the line.
    [[nodiscard]] virtual std::expected<FrontMatter, std::string> read(std::string_view yaml) const = 0;
};

}  // namespace tessary
