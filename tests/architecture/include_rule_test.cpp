#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/text.h"

namespace tessary {
namespace {

namespace fs = std::filesystem;

/// What the folders of src/ may include beside themselves. "adapters" stands for src/platform/adapters.
const std::map<std::string, std::vector<std::string>, std::less<>> kMayInclude = {
    {"base", {}},
    {"platform", {"base"}},
    {"adapters", {"base", "platform"}},
    {"library", {"base", "platform"}},
    {"study", {"base", "platform", "library"}},
    {"ai", {"base", "platform", "library", "study"}},
    {"companion", {"base", "platform", "library", "study", "ai"}},
    {"accounts", {"base", "platform"}},
    {"app", {"base", "platform", "adapters", "library", "study", "ai", "companion", "accounts"}},
    {"cli", {"base", "platform", "library", "study", "ai", "companion", "accounts", "app"}},
    {"desktop", {"base", "platform", "library", "study", "ai", "companion", "accounts", "app"}},
};

constexpr std::string_view kAdapters = "platform/adapters/";

/// "adapters" for "platform/adapters/icu/icu_calendar.h", "base" for "base/text.h".
std::string_view folderOf(std::string_view path) {
    return path.starts_with(kAdapters) ? "adapters" : path.substr(0, path.find('/'));
}

/// "icu" for "platform/adapters/icu/icu_calendar.h"; empty elsewhere.
std::string_view adapterOf(std::string_view path) {
    if (!path.starts_with(kAdapters)) return {};
    path.remove_prefix(kAdapters.size());
    return path.substr(0, path.find('/'));
}

/// The two programs' own files choose the adapters.
bool isMain(std::string_view file) { return file == "cli/main.cpp" || file == "desktop/main.cpp"; }

bool mayIncludeOwn(std::string_view file, std::string_view header) {
    const std::string_view from = folderOf(file);
    const std::string_view to = folderOf(header);
    if (from == to) return adapterOf(file) == adapterOf(header);
    if (to == "adapters" && isMain(file)) return true;
    const auto allowed = kMayInclude.find(from);
    return allowed != kMayInclude.end() && std::ranges::find(allowed->second, to) != allowed->second.end();
}

/// The standard library's headers have neither a folder nor an ending; Qt's begin with its letter.
bool mayIncludeForeign(std::string_view file, std::string_view header) {
    const std::string_view from = folderOf(file);
    if (header.starts_with('Q')) return from == "desktop" || adapterOf(file) == "qt" || adapterOf(file) == "poppler";
    if (header.find_first_of("./") == std::string_view::npos || header.starts_with("fmt/")) return true;
    return file.starts_with("base/json") || from == "adapters" || from == "cli" || from == "desktop";
}

/// The header of an include line, in its quotes or angle brackets.
std::optional<std::string_view> includedIn(std::string_view line) {
    line = trimmed(line);
    if (!line.starts_with('#')) return std::nullopt;
    line = trimmed(line.substr(1));
    if (!line.starts_with("include")) return std::nullopt;
    line = trimmed(line.substr(std::string_view("include").size()));
    const auto end = line.find_first_of("\">", 1);
    return end == std::string_view::npos ? line : line.substr(0, end + 1);
}

/// The include lines of one file that the rule forbids. `file` is its path inside src/.
std::vector<std::string> breachesIn(std::string_view file, std::string_view content) {
    std::vector<std::string> breaches;
    for (const std::string_view line : splitLines(content)) {
        const auto included = includedIn(line);
        if (!included) continue;
        const bool quoted = included->starts_with('"');
        const std::string_view header = included->substr(1, included->size() - 2);
        const bool allowed = quoted ? mayIncludeOwn(file, header) : mayIncludeForeign(file, header);
        if (!allowed) breaches.push_back(std::string(file) + ": " + std::string(*included));
    }
    return breaches;
}

struct Scan {
    std::size_t files = 0;
    std::vector<std::string> breaches;
};

Scan scan(const fs::path& source) {
    Scan result;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(source)) {
        const std::string ending = entry.path().extension().string();
        if (ending != ".h" && ending != ".cpp" && ending != ".inc") continue;
        std::ifstream stream(entry.path(), std::ios::binary);
        const std::string content{std::istreambuf_iterator<char>(stream), {}};
        const auto found = breachesIn(entry.path().lexically_relative(source).generic_string(), content);
        result.breaches.insert(result.breaches.end(), found.begin(), found.end());
        ++result.files;
    }
    return result;
}

TEST(IncludeRule, TheTreeKeepsIt) {
    const Scan result = scan(TESSARY_SOURCE);
    EXPECT_GT(result.files, 50U);
    EXPECT_EQ(result.breaches, std::vector<std::string>{});
}

TEST(IncludeRule, FindsABreachInATree) {
    const fs::path root = fs::path(testing::TempDir()) / "tessary-include-rule";
    fs::remove_all(root);
    fs::create_directories(root / "base");
    fs::create_directories(root / "library");
    std::ofstream(root / "base" / "text.h") << "#include <string>\n";
    std::ofstream(root / "library" / "page.cpp") << "#include \"base/text.h\"\n  #  include \"study/flashcard.h\"\n";
    const Scan result = scan(root);
    fs::remove_all(root);
    EXPECT_EQ(result.files, 2U);
    EXPECT_EQ(result.breaches, std::vector<std::string>{"library/page.cpp: \"study/flashcard.h\""});
}

struct Line {
    std::string_view file;
    std::string_view included;
};

TEST(IncludeRule, WhatIsForbidden) {
    for (const auto& [file, included] : std::vector<Line>{
             {"base/text.h", "\"platform/clock.h\""},
             {"base/text.h", "<simdjson.h>"},
             {"platform/clock.h", "\"platform/adapters/icu/icu_calendar.h\""},
             {"platform/atomic_write.cpp", "<unistd.h>"},
             {"platform/adapters/icu/icu_calendar.h", "\"platform/adapters/ini/ini_settings.h\""},
             {"platform/adapters/icu/icu_calendar.h", "<QString>"},
             {"platform/adapters/yaml/yaml_front_matter.h", "\"library/page.h\""},
             {"library/page.h", "\"study/flashcard.h\""},
             {"study/scheduler.h", "\"platform/adapters/icu/icu_calendar.h\""},
             {"study/scheduler.h", "<yaml-cpp/yaml.h>"},
             {"companion/plim_player.h", "\"app/workspace.h\""},
             {"companion/plim_player.h", "\"desktop/window.h\""},
             {"companion/plim_player.h", "<QObject>"},
             {"companion/plim_spec.cpp", "<simdjson.h>"},
             {"study/scheduler.h", "\"companion/plim_player.h\""},
             {"accounts/account.h", "\"library/page.h\""},
             {"app/workspace.h", "\"cli/program.h\""},
             {"app/workspace.h", "<QtCore/QObject>"},
             {"cli/program.cpp", "\"platform/adapters/icu/icu_calendar.h\""},
             {"cli/program.cpp", "<QString>"},
             {"cli/program.cpp", "\"desktop/window.h\""},
             {"study/scheduler.h", "\"flashcard.h\""},  // every path starts at src/
             {"study/scheduler.h", "\"../library/page.h\""},
             {"unheard/of.h", "\"base/text.h\""},
         }) {
        EXPECT_EQ(breachesIn(file, "#include " + std::string(included)).size(), 1U) << file << ' ' << included;
    }
}

TEST(IncludeRule, WhatIsAllowed) {
    for (const auto& [file, included] : std::vector<Line>{
             {"base/json_reader.cpp", "<simdjson.h>"},
             {"study/scheduler.h", "<fmt/format.h>"},
             {"study/scheduler.h", "\"library/page.h\""},
             {"platform/adapters/posix/posix_file_system.cpp", "<sys/stat.h>"},
             {"platform/adapters/poppler/poppler_pdf.cpp", "<QImage>"},
             {"app/workspace.h", "\"platform/adapters/icu/icu_calendar.h\""},
             {"cli/main.cpp", "\"platform/adapters/icu/icu_calendar.h\""},
             {"companion/plim_spec.cpp", "\"base/json_record.h\""},
             {"desktop/window.h", "\"companion/plim_player.h\""},
             {"desktop/window.h", "<QMainWindow>"},
         }) {
        EXPECT_EQ(breachesIn(file, "#include " + std::string(included)).size(), 0U) << file << ' ' << included;
    }
}

}  // namespace
}  // namespace tessary
