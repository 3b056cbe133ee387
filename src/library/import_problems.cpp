#include "library/import_problems.h"

#include <exception>

#include "base/text.h"

namespace tessary {

std::string shownName(const std::filesystem::path& path) { return scrubbedUtf8(path.filename().string()); }

void ImportProblems::add(const std::filesystem::path& path, std::string_view what) {
    list_.push_back({path, '"' + shownName(path) + "\" " + std::string(what) + '.'});
}

void ImportProblems::guard(const std::filesystem::path& path, FunctionRef<void()> work) {
    try {
        work();
    } catch (const std::exception& error) {
        add(path, std::string("could not be imported: ") + error.what());
    } catch (...) {
        add(path, "could not be imported");
    }
}

}  // namespace tessary
