#pragma once

#include "cli/commands.h"

namespace tessary {

/// "pages import", which brings in notes from outside.
void addImportCommand(CLI::App& pages, Action& chosen);

/// "pages attach" and "pages text".
void addPdfCommands(CLI::App& pages, Action& chosen);

}  // namespace tessary
