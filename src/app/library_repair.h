#pragma once

#include <expected>
#include <string>
#include <vector>

#include "app/library_check.h"
#include "library/store_services.h"

namespace tessary {

struct RepairReport {
    std::vector<std::string> done;  ///< one sentence for each thing that was mended
    std::vector<LibraryFinding> remaining;
};

template <>
struct Record<RepairReport> {
    static constexpr auto fields = std::tuple{
        withDefault("done", &RepairReport::done),
        withDefault("remaining", &RepairReport::remaining),
    };
};

/// Mends what `checkLibrary` calls repairable, and only in ways that lose nothing: no page, notebook, card or exam goes
/// that is not there a second time. Each file that changes is first copied into the folder of backups as
/// "<name>-before-repair-<stamp>.json". Files that need nothing are not touched.
///
/// The caller holds the library's lock, and no store has the library open. On an error, which is for the user, each
/// file is as it was or mended, whole; repairing again does the rest.
[[nodiscard]] std::expected<RepairReport, std::string> repairLibrary(const LibraryFolders& folders,
                                                                     const StoreServices& services);

}  // namespace tessary
