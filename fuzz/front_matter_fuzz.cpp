#include "base/text.h"
#include "expect.h"
#include "platform/adapters/yaml/yaml_front_matter.h"

namespace tessary {
namespace {

void checkFrontMatter(std::string_view yaml) {
    const auto entries = YamlFrontMatter().read(yaml);
    if (!entries) return expect(entries.error().starts_with("Line "), "a refusal names the line");
    for (const auto& [key, texts] : *entries) {
        expect(key == asciiLowered(key), "a key is lower-case");
        expect(isValidUtf8(key), "a key is UTF-8");
        for (const std::string& text : texts) expect(isValidUtf8(text), "a text is UTF-8");
    }
}

}  // namespace
}  // namespace tessary

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    tessary::checkFrontMatter(tessary::textOf(data, size));
    return 0;
}
