#include "platform/adapters/linux/linux_thermal_state.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "base/text.h"

namespace tessary {
namespace {

namespace fs = std::filesystem;

constexpr long kCriticalMargin = 5000;  // thousandths of a degree Celsius, as are all temperatures here

std::optional<std::string> firstLine(const fs::path& path) {
    std::ifstream stream(path);
    std::string line;
    if (!std::getline(stream, line)) return std::nullopt;
    return std::string(trimmed(line));
}

std::optional<long> numberIn(const fs::path& path) {
    const std::optional<std::string> line = firstLine(path);
    if (!line) return std::nullopt;
    long number = 0;
    const char* end = line->data() + line->size();
    const auto [stopped, error] = std::from_chars(line->data(), end, number);
    if (error != std::errc{} || stopped != end) return std::nullopt;
    return number;
}

/// Empty when the folder can't be read.
std::vector<std::string> namesIn(const fs::path& folder) {
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        names.push_back(entry->path().filename().string());
    }
    return names;
}

ThermalLevel levelAt(long temperature, long trip, std::string_view type) {
    if (trip <= 0) return ThermalLevel::nominal;
    if (type == "critical" && temperature >= trip - kCriticalMargin) return ThermalLevel::critical;
    if (temperature < trip) return ThermalLevel::nominal;
    if (type == "hot" || type == "passive") return ThermalLevel::serious;
    return type == "active" ? ThermalLevel::fair : ThermalLevel::nominal;
}

ThermalLevel levelOfZone(const fs::path& zone) {
    constexpr std::string_view kPrefix = "trip_point_";
    constexpr std::string_view kEnding = "_temp";
    const std::optional<long> temperature = numberIn(zone / "temp");
    if (!temperature || firstLine(zone / "mode") == "disabled") return ThermalLevel::nominal;
    ThermalLevel worst = ThermalLevel::nominal;
    for (const std::string& name : namesIn(zone)) {
        if (!name.starts_with(kPrefix) || !name.ends_with(kEnding)) continue;
        const std::string point = name.substr(0, name.size() - kEnding.size());
        const std::optional<long> trip = numberIn(zone / name);
        const std::optional<std::string> type = firstLine(zone / (point + "_type"));
        if (trip && type) worst = std::max(worst, levelAt(*temperature, *trip, *type));
    }
    return worst;
}

}  // namespace

LinuxThermalState::LinuxThermalState(fs::path zones) : zones_(std::move(zones)) {}

ThermalLevel LinuxThermalState::level() const {
    ThermalLevel worst = ThermalLevel::nominal;
    for (const std::string& name : namesIn(zones_)) {
        if (name.starts_with("thermal_zone")) worst = std::max(worst, levelOfZone(zones_ / name));
    }
    return worst;
}

}  // namespace tessary
