#pragma once

#include <filesystem>
#include <string_view>

#include "library/store_services.h"

namespace tessary {

inline constexpr std::string_view kBundleIdentifier = "com.vorlek.Notara";
inline constexpr std::string_view kLeftSandboxKey = "notara.leftSandbox";

struct SandboxMove {
    bool stillSandboxed = false;           ///< APP_SANDBOX_CONTAINER_ID is set
    std::filesystem::path homeFolder;      ///< under it lies the old container
    std::filesystem::path libraryFolder;   ///< the library's folder now, already locked by this program
};

/// Takes the library over from the container of the program's sandboxed days, before the stores load. The old folder is
/// never changed; what lies at the new place is preserved beside it, once.
///
/// Everything is copied beside the new place first and put there only once the pages have arrived whole. When they
/// cannot be copied, the console is told, the new place stays as it was, and the next start tries again. A medium that
/// cannot be copied is told too but does not hold up the pages.
void leaveSandbox(const SandboxMove& move, const StoreServices& services);

}  // namespace tessary
