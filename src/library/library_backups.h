#pragma once

#include "library/library_folders.h"
#include "library/store_services.h"

namespace tessary {

/// Copies entries.json into the rolling backups and then removes the oldest until `keep` (at least 1) remain. The copy
/// just made always stays. Copies with a later stamp than now, from before the clock was set back, go first.
void makeRollingBackup(const LibraryFolders& folders, const StoreServices& services, std::size_t keep);

/// Makes today's copy of entries.json unless it is there, and removes those that are `keepDays` days old. The newest
/// `keepDays` copies always stay: a clock set forward must not make all of them old.
void makeDailyBackup(const LibraryFolders& folders, const StoreServices& services, int keepDays);

}  // namespace tessary
