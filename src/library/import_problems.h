#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "base/function_ref.h"
#include "library/note_import.h"

namespace tessary {

/// The last part of a path for sentences and titles, which must be good UTF-8 whatever a disk holds.
[[nodiscard]] std::string shownName(const std::filesystem::path& path);

/// Writes the problems of an import into its report, which must outlive it.
class ImportProblems {
public:
    explicit ImportProblems(std::vector<NoteProblem>& list) : list_(list) {}

    /// `what` goes on after the name of the file.
    void add(const std::filesystem::path& path, std::string_view what);

    /// Does `work`; what it throws is a problem of the file.
    void guard(const std::filesystem::path& path, FunctionRef<void()> work);

private:
    std::vector<NoteProblem>& list_;
};

}  // namespace tessary
