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

/// Takes the library over from the container of the program's sandboxed days: once, before the stores load. What lies
/// at the new place is preserved beside it. A failure goes to the console and the program goes on with what is there.
void leaveSandbox(const SandboxMove& move, const StoreServices& services);

}  // namespace tessary
