#pragma once

#include <cstddef>

#include "app/workspace.h"

namespace tessary {

/// Nothing was ever put into this library, and nothing of it failed to load.
[[nodiscard]] bool isUntouched(Workspace& workspace);

struct WelcomeNotebook {
    NotebookId notebook;
    std::size_t pages = 0;
    std::size_t cards = 0;
};

/// Makes the small notebook that shows a newcomer how pages become cards and how reviews go. Its cards come from the
/// text of its pages, as the student's own will.
std::expected<WelcomeNotebook, Refusal> makeWelcomeNotebook(Workspace& workspace);

}  // namespace tessary
