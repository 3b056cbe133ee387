#include "app/settings_catalog.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>

#include <fmt/format.h>

#include "base/text.h"

namespace tessary {
namespace {

const std::vector<SettingEntry>& entries() {
    static const std::vector<SettingEntry> all{
        {.key = "autoBackup",
         .defaultValue = false,
         .description = "Auto-backup on quit. Saves a copy to ~/Documents/Tessary Backups/ when you close the app."},
        {.key = "entrySortMode",
         .defaultValue = std::string("created"),
         .description = "What page lists are sorted by.",
         .choices = {"created", "edited", "title"}},
        {.key = "flashcards.aiGrading", .defaultValue = false, .description = "Type the answer, the AI checks it."},
        {.key = "flashcards.cardsPerPage",
         .defaultValue = 1.5,
         .description = "Cards that the AI writes for each page of a source, when no count is given.",
         .minimum = 0.1,
         .maximum = 20},
        {.key = "flashcards.claudeEndpoint",
         .defaultValue = std::string(),
         .description = "Address of a server that speaks like Claude's; empty for Claude's own.",
         .isAddress = true},
        {.key = "flashcards.claudeModel",
         .defaultValue = std::string("claude-sonnet-5-5"),
         .description = "The Claude model."},
        {.key = "flashcards.codexModel",
         .defaultValue = std::string(),
         .description = "The model that Codex uses; empty for its own choice."},
        {.key = "flashcards.difficulty",
         .defaultValue = std::string("standard"),
         .description = "How far the questions of AI cards go.",
         .choices = {"basic", "standard", "advanced"}},
        {.key = "flashcards.geminiEndpoint",
         .defaultValue = std::string(),
         .description = "Address of a server that speaks like Gemini's; empty for Gemini's own.",
         .isAddress = true},
        {.key = "flashcards.geminiModel",
         .defaultValue = std::string("gemini-2.5-flash"),
         .description = "The Gemini model."},
        {.key = "flashcards.gentleMode",
         .defaultValue = false,
         .description = "Pauses between chunks and when the Mac gets warm. Slower, cooler."},
        {.key = "flashcards.kinds",
         .defaultValue = std::string("basic,cloze,multipleChoice"),
         .description = "Kinds of cards that the AI writes, separated by commas."},
        {.key = "flashcards.language",
         .defaultValue = std::string(),
         .description = "Language of AI cards, as a code or a name; \"system\" for that of the source, empty to follow "
                        "tessary.appLanguage."},
        {.key = "flashcards.lastAmount",
         .defaultValue = std::string("normal"),
         .description = "How many AI cards are wanted.",
         .choices = {"normal", "many"}},
        {.key = "flashcards.lastSource",
         .defaultValue = std::string("whole"),
         .description = "What of a page AI cards are made of.",
         .choices = {"whole", "pages", "highlights"}},
        {.key = "flashcards.leechLapses",
         .defaultValue = std::int64_t{8},
         .description = "A card forgotten this often is a leech; 0 switches the rule off."},
        {.key = "flashcards.makeSummary", .defaultValue = true, .description = "Also write a summary page."},
        {.key = "flashcards.maxCards",
         .defaultValue = std::int64_t{60},
         .description = "AI cards written in one run at most, when no count is given.",
         .minimum = 1},
        {.key = "flashcards.maxReviews",
         .defaultValue = std::int64_t{200},
         .description = "Reviews offered in one day at most.",
         .minimum = 0},
        {.key = "flashcards.newPerDay",
         .defaultValue = std::int64_t{20},
         .description = "New cards offered in one day at most.",
         .minimum = 0},
        {.key = "flashcards.ollamaModel",
         .defaultValue = std::string("llama3.2"),
         .description = "The Ollama model. Run `ollama pull <model>` once to download it."},
        {.key = "flashcards.ollamaURL",
         .defaultValue = std::string("http://127.0.0.1:11434"),
         .description = "Where your Ollama server is.",
         .isAddress = true},
        {.key = "flashcards.openaiEndpoint",
         .defaultValue = std::string(),
         .description = "Address of a server that speaks like OpenAI's; empty for OpenAI's own.",
         .isAddress = true},
        {.key = "flashcards.openaiModel",
         .defaultValue = std::string("gpt-4.1-mini"),
         .description = "The OpenAI model."},
        {.key = "flashcards.provider",
         .defaultValue = std::string("apple"),
         .description = "Who writes AI cards and checks answers; see \"providers\".",
         .choices = {"apple", "gemini", "codex", "claude", "openai", "ollama"}},
        {.key = "flashcards.retention",
         .defaultValue = 0.9,
         .description = "How likely you want to remember a card when it comes back; counts as 0.7 to 0.97.",
         .minimum = 0,
         .maximum = 1},
        {.key = "flashcards.showIntervals",
         .defaultValue = true,
         .description = "Whether the rating buttons say when the card comes back."},
        {.key = "flashcards.shuffle", .defaultValue = true, .description = "Whether a review mixes its cards."},
        {.key = "flashcards.suspendLeeches",
         .defaultValue = true,
         .description = "Whether leeches are taken out of reviews."},
        {.key = "flashcards.typeAnswers",
         .defaultValue = false,
         .description = "Whether answers are typed in the window's reviews."},
        {.key = "sortOrder",
         .defaultValue = std::string("newest"),
         .description = "Which way page lists are sorted.",
         .choices = {"newest", "oldest"}},
        {.key = "tessary.appLanguage",
         .defaultValue = std::string("system"),
         .description = "Language that the AI writes in; \"system\" for that of the source.",
         .choices = {"system", "en", "es", "fr", "de", "it", "pt"}},
        {.key = "tessary.companion",
         .defaultValue = true,
         .description = "Whether Plim, the companion, moves about in the window."},
        {.key = "tessary.panel",
         .defaultValue = std::string("cards"),
         .description = "What the panel beside a page shows.",
         .choices = {"cards", "outline", "hidden"}},
        {.key = "tessary.lastPlace",
         .defaultValue = std::string(),
         .description = "What the window showed last; it begins there."},
        {.key = "tessary.sidebarFolded",
         .defaultValue = false,
         .description = "Whether the window's sidebar is a narrow rail."},
        {.key = "tessary.reduceMotion",
         .defaultValue = false,
         .description = "Whether the window does without motion."},
        {.key = "tessary.theme",
         .defaultValue = std::string("system"),
         .description = "Light or dark window.",
         .choices = {"system", "light", "dark"}},
        {.key = "tessary.window",
         .defaultValue = std::string(),
         .description = "Where the window was when it was closed: size, position, and whether it was maximized."},
    };
    return all;
}

std::size_t editDistance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t substituted = diagonal + (a[i - 1] == b[j - 1] ? 0 : 1);
            diagonal = row[j];
            row[j] = std::min({substituted, row[j] + 1, row[j - 1] + 1});
        }
    }
    return row.back();
}

/// The key nearest to a mistyped one; also found by its last part alone ("newPerDay"). None when nothing is near.
std::optional<std::string_view> nearestKey(std::string_view key) {
    constexpr std::size_t kLongestKey = 64;
    if (key.size() > kLongestKey) return std::nullopt;
    const std::string wanted = asciiLowered(key);
    std::optional<std::string_view> nearest;
    std::size_t nearestDistance = std::max<std::size_t>(3, key.size() / 3) + 1;
    for (const SettingEntry& entry : entries()) {
        const std::string whole = asciiLowered(entry.key);
        const std::string last = whole.substr(whole.find('.') + 1);
        const std::size_t distance = std::min(editDistance(wanted, whole), editDistance(wanted, last));
        if (distance < nearestDistance) {
            nearest = entry.key;
            nearestDistance = distance;
        }
    }
    return nearest;
}

std::optional<bool> parseSwitch(std::string_view text) {
    const std::string word = asciiLowered(text);
    for (const std::string_view yes : {"true", "yes", "on", "1"}) {
        if (word == yes) return true;
    }
    for (const std::string_view no : {"false", "no", "off", "0"}) {
        if (word == no) return false;
    }
    return std::nullopt;
}

bool isWithin(const SettingEntry& entry, double value) {
    return std::isfinite(value) && value >= entry.minimum.value_or(value) && value <= entry.maximum.value_or(value);
}

/// As far as can be told without asking for it.
bool isWebAddress(std::string_view text) {
    const std::string lowered = asciiLowered(text);
    for (const std::string_view scheme : {"http://", "https://"}) {
        if (!lowered.starts_with(scheme)) continue;
        const std::string_view rest = std::string_view(lowered).substr(scheme.size());
        return !rest.empty() && rest.front() != '/' && rest.find_first_of(" \t\r\n") == std::string_view::npos;
    }
    return false;
}

std::optional<SettingValue> parseValue(const SettingEntry& entry, std::string_view text) {
    if (std::holds_alternative<bool>(entry.defaultValue)) {
        const std::optional<bool> value = parseSwitch(text);
        return value ? std::optional<SettingValue>(*value) : std::nullopt;
    }
    if (std::holds_alternative<std::int64_t>(entry.defaultValue)) {
        const auto value = parseNumber<std::int64_t>(text);
        const bool good = value && isWithin(entry, static_cast<double>(*value));
        return good ? std::optional<SettingValue>(*value) : std::nullopt;
    }
    if (std::holds_alternative<double>(entry.defaultValue)) {
        const auto value = parseNumber<double>(text);
        return value && isWithin(entry, *value) ? std::optional<SettingValue>(*value) : std::nullopt;
    }
    if (entry.isAddress && !text.empty() && !isWebAddress(text)) return std::nullopt;
    const bool good = entry.choices.empty() || std::ranges::find(entry.choices, text) != entry.choices.end();
    return good ? std::optional<SettingValue>(std::string(text)) : std::nullopt;
}

Settings::Stored store(Settings& settings, std::string_view key, const SettingValue& value) {
    if (const bool* const flag = std::get_if<bool>(&value)) return settings.setBoolean(key, *flag);
    if (const std::int64_t* const whole = std::get_if<std::int64_t>(&value)) return settings.setInteger(key, *whole);
    if (const double* const number = std::get_if<double>(&value)) return settings.setNumber(key, *number);
    return settings.setText(key, std::get<std::string>(value));
}

std::optional<SettingValue> storedValue(const Settings& settings, const SettingEntry& entry) {
    const auto asValue = [](auto value) {
        return value ? std::optional<SettingValue>(*std::move(value)) : std::nullopt;
    };
    if (std::holds_alternative<bool>(entry.defaultValue)) return asValue(settings.boolean(entry.key));
    if (std::holds_alternative<std::int64_t>(entry.defaultValue)) return asValue(settings.integer(entry.key));
    if (std::holds_alternative<double>(entry.defaultValue)) return asValue(settings.number(entry.key));
    return asValue(settings.text(entry.key));
}

}  // namespace

std::span<const SettingEntry> settingsCatalog() { return entries(); }

std::expected<const SettingEntry*, std::string> findSetting(std::string_view key) {
    for (const SettingEntry& entry : entries()) {
        if (entry.key == key) return &entry;
    }
    const std::optional<std::string_view> nearest = nearestKey(key);
    const std::string hint = nearest ? fmt::format(" Did you mean \"{}\"?", *nearest) : "";
    return std::unexpected(fmt::format("There is no setting \"{}\".{}", key, hint));
}

bool isSet(const Settings& settings, const SettingEntry& entry) { return storedValue(settings, entry).has_value(); }

SettingValue settingValue(const Settings& settings, const SettingEntry& entry) {
    return storedValue(settings, entry).value_or(entry.defaultValue);
}

std::expected<SettingValue, std::string> storeSetting(Settings& settings, const SettingEntry& entry,
                                                      std::string_view text) {
    const std::optional<SettingValue> value = parseValue(entry, trimmed(text));
    if (!value) {
        return std::unexpected(
            fmt::format("\"{}\" doesn't fit {}: it takes {}.", text, entry.key, whatIsExpected(entry)));
    }
    if (const Settings::Stored stored = store(settings, entry.key, *value); !stored) {
        return std::unexpected("The setting could not be stored: " + stored.error());
    }
    return *value;
}

bool fits(const SettingEntry& entry, std::string_view text) { return parseValue(entry, trimmed(text)).has_value(); }

std::string whatIsExpected(const SettingEntry& entry) {
    if (std::holds_alternative<bool>(entry.defaultValue)) return "on or off";
    if (entry.isAddress) return "an address that begins with http:// or https://";
    if (std::holds_alternative<std::string>(entry.defaultValue)) {
        std::vector<std::string> choices(entry.choices.begin(), entry.choices.end());
        return joined(choices, " or ");
    }
    std::string expected = std::holds_alternative<double>(entry.defaultValue) ? "a number" : "a whole number";
    if (entry.minimum && entry.maximum) return expected + fmt::format(" from {} to {}", *entry.minimum, *entry.maximum);
    if (entry.minimum) return expected + fmt::format(", {} or more", *entry.minimum);
    return expected;
}

std::string describeSetting(const SettingValue& value) {
    if (const bool* const flag = std::get_if<bool>(&value)) return *flag ? "on" : "off";
    if (const std::int64_t* const whole = std::get_if<std::int64_t>(&value)) return std::to_string(*whole);
    if (const double* const number = std::get_if<double>(&value)) return fmt::format("{}", *number);
    return std::get<std::string>(value);
}

}  // namespace tessary
