#include "study/review_log.h"

#include "base/text.h"

namespace tessary {

ReviewLog::ReviewLog(std::filesystem::path folder, StoreServices services, SerialQueue& queue)
    : folder_(std::move(folder)), services_(services), queue_(queue) {}

void ReviewLog::append(const ReviewLogEntry& entry) {
    const std::string month = monthKey(services_.calendar.civilTime(entry.at).day);
    queue_.post([entry, folder = folder_, month, &files = services_.files, &console = services_.console] {
        const auto complain = [&](const std::string& why) { console.print("Notara: review log save failed — " + why); };
        const std::expected<std::string, std::string> line = encodeJson(entry);
        if (!line) return complain(line.error());
        if (const FileResult<void> created = files.createFolders(folder); !created) {
            return complain(created.error().message);
        }
        if (const FileResult<void> appended = files.appendLine(folder / (month + ".jsonl"), *line); !appended) {
            complain(appended.error().message);
        }
    });
}

std::vector<ReviewLogEntry> ReviewLog::read(std::optional<Date> since, std::stop_token stop) const {
    std::vector<ReviewLogEntry> entries;
    const FileResult<std::vector<DirectoryEntry>> months = services_.files.list(folder_);
    if (!months) return entries;
    const ReadContext context{.now = services_.clock.now(), .freshId = [this] { return services_.ids.next(); }};
    const std::string first = since ? monthKey(services_.calendar.civilTime(*since).day) : std::string();
    for (const DirectoryEntry& month : *months) {
        if (!month.name.ends_with(".jsonl") || month.name < first) continue;
        const FileResult<std::string> content = services_.files.read(folder_ / month.name);
        if (!content) continue;
        for (const std::string_view line : splitLines(*content)) {
            if (stop.stop_requested()) return entries;
            auto entry = decodeJson<ReviewLogEntry>(std::string(line), context);
            if (entry) entries.push_back(std::move(*entry));
        }
    }
    return entries;
}

}  // namespace tessary
