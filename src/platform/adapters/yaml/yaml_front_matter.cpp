#include "platform/adapters/yaml/yaml_front_matter.h"

#include <yaml-cpp/yaml.h>

#include <cstddef>
#include <exception>
#include <optional>

#include "base/text.h"

namespace tessary {
namespace {

constexpr std::size_t kMaximumInput = 64UL * 1024;
constexpr std::size_t kMaximumOutput = 1024UL * 1024;  // aliases can repeat one long text many times

using Failure = std::unexpected<std::string>;

Failure failure(const YAML::Mark& mark, const std::string& reason) {
    const int line = mark.is_null() ? 1 : mark.line + 1;
    return Failure("Line " + std::to_string(line) + ": " + reason);
}

/// The texts of one value; none for what is no text and no list.
std::optional<std::vector<std::string>> textsOf(const YAML::Node& value, std::size_t& room) {
    std::vector<std::string> texts;
    const auto add = [&](const YAML::Node& node) {
        if (!node.IsScalar() || node.Scalar().size() >= room) {
            if (node.IsScalar()) room = 0;
            return;
        }
        room -= node.Scalar().size() + 1;
        texts.push_back(scrubbedUtf8(node.Scalar()));  // the escapes \N and \_ give lone bytes
    };
    if (value.IsMap()) return std::nullopt;
    if (!value.IsSequence()) {
        add(value);
        return texts;
    }
    for (const YAML::Node& item : value) add(item);
    return texts;
}

std::expected<FrontMatter, std::string> entriesOf(const YAML::Node& root) {
    FrontMatter result;
    if (!root.IsDefined() || root.IsNull()) return result;
    if (!root.IsMap()) return failure(root.Mark(), "keys with values are expected");
    std::size_t room = kMaximumOutput;
    for (const auto& entry : root) {
        if (!entry.first.IsScalar()) continue;
        std::optional<std::vector<std::string>> texts = textsOf(entry.second, room);
        const std::size_t keySize = entry.first.Scalar().size() + 1;
        if (keySize > room) return failure(entry.first.Mark(), "too much text");
        room -= keySize;
        if (texts) result.insert_or_assign(asciiLowered(scrubbedUtf8(entry.first.Scalar())), std::move(*texts));
    }
    return result;
}

}  // namespace

std::expected<FrontMatter, std::string> YamlFrontMatter::read(std::string_view yaml) const {
    if (yaml.size() > kMaximumInput) return Failure("Line 1: the text is longer than 64 KiB");
    try {
        return entriesOf(YAML::Load(scrubbedUtf8(yaml)));
    } catch (const YAML::Exception& error) {
        return failure(error.mark, error.msg);
    } catch (const std::exception& error) {
        return Failure(std::string("Line 1: ") + error.what());
    }
}

}  // namespace tessary
