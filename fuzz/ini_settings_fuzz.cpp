#include "platform/adapters/ini/ini_settings.h"

#include "base/text.h"
#include "expect.h"
#include "platform/atomic_write.h"
#include "support/memory_file_system.h"

namespace tessary {
namespace {

const std::filesystem::path kFile = "/settings.ini";

using Texts = std::vector<std::pair<std::string, std::optional<std::string>>>;

Texts textsIn(const IniSettings& settings) {
    Texts texts;
    for (const std::string& key : settings.keys()) texts.emplace_back(key, settings.text(key));
    return texts;
}

/// Every kind of reading, on every key.
void readAll(const IniSettings& settings) {
    for (const std::string& key : settings.keys()) {
        static_cast<void>(settings.boolean(key));
        static_cast<void>(settings.integer(key));
        static_cast<void>(settings.number(key));
        static_cast<void>(settings.data(key));
    }
}

/// A change of one key leaves all others as they were, on disk as in memory.
void checkChange(FileSystem& files, IniSettings& settings, const std::string& value) {
    constexpr std::string_view kKey = "fuzz.key";
    if (!settings.setText(kKey, value)) return;
    expect(settings.text(kKey) == value, "a text reads back");
    const Texts texts = textsIn(settings);
    IniSettings reread(files, kFile);
    expect(!reread.problem(), "a changed file is readable");
    expect(textsIn(reread) == texts, "a changed file reads back equal");
}

void checkFile(std::string_view content) {
    MemoryFileSystem files;
    expect(writeAtomically(files, kFile, content).has_value(), "the file can be made");
    IniSettings settings(files, kFile);
    expect(settings.problem().has_value() == !isValidUtf8(content), "what is no UTF-8 is refused, and nothing else");
    readAll(settings);
    const Texts before = textsIn(settings);
    checkChange(files, settings, scrubbedUtf8(content));
    if (settings.problem()) return expect(files.read(kFile) == std::string(content), "a refused file is untouched");
    for (const auto& [key, text] : before) {
        expect(key == "fuzz.key" || settings.text(key) == text, "a change of one key leaves the others");
    }
}

}  // namespace
}  // namespace tessary

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    tessary::checkFile(tessary::textOf(data, size));
    return 0;
}
