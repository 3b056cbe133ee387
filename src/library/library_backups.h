#pragma once

#include "library/library_folders.h"
#include "library/store_services.h"

namespace tessary {

/// Copies entries.json into the rolling backups and then removes the oldest until `keep` remain.
void makeRollingBackup(const LibraryFolders& folders, const StoreServices& services, std::size_t keep);

/// Makes today's copy of entries.json unless it is there, and removes those that are `keepDays` days old.
void makeDailyBackup(const LibraryFolders& folders, const StoreServices& services, int keepDays);

}  // namespace tessary
