#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include <fmt/format.h>

#include "base/text.h"
#include "cli/command_context.h"
#include "cli/output.h"

namespace tessary {

/// As tables show an identifier: its first eight characters, which nearly always suffice to name it.
template <class Tag>
[[nodiscard]] std::string shortId(const Id<Tag>& id) {
    return id.toString().substr(0, 8);
}

/// The one record whose identity begins with `prefix`, in either case. `what` names its kind ("page"); `title` gives
/// its name. Throws CommandFailure when there is none, or more than one.
template <class T, class Title>
const T& findByPrefix(const RecordList<T>& records, std::string_view prefix, std::string_view what, Title title) {
    if (const auto whole = std::remove_cvref_t<decltype(identityOf(std::declval<const T&>()))>::parse(prefix)) {
        if (const T* const record = records.find(*whole)) return *record;
    }
    const std::string wanted = asciiLowered(prefix);
    std::vector<const T*> matches;
    for (const T& record : records) {
        if (wanted.empty()) break;
        if (asciiLowered(identityOf(record).toString()).starts_with(wanted)) matches.push_back(&record);
    }
    if (matches.empty()) throw CommandFailure(fmt::format("There is no {} \"{}\".", what, prefix));
    if (matches.size() == 1) return *matches.front();
    constexpr std::size_t kShown = 5;
    std::string candidates;
    for (std::size_t i = 0; i < std::min(matches.size(), kShown); ++i) {
        candidates += fmt::format("\n  {}  {}", identityOf(*matches[i]).toString(), onOneLine(title(*matches[i])));
    }
    throw CommandFailure(fmt::format("More than one {} begins with \"{}\":{}{}", what, prefix, candidates,
                                     matches.size() > kShown ? "\n  …" : ""));
}

[[nodiscard]] inline std::string titleOf(const JournalEntry& page) {
    const std::string title = onOneLine(page.title);
    return title.empty() ? "Untitled" : title;
}

[[nodiscard]] inline const JournalEntry& findPage(const JournalStore& library, std::string_view prefix) {
    return findByPrefix(library.entries(), prefix, "page", titleOf);
}

[[nodiscard]] inline const Notebook& findNotebook(const JournalStore& library, std::string_view prefix) {
    return findByPrefix(library.notebooks(), prefix, "notebook", [](const Notebook& n) { return n.name; });
}

[[nodiscard]] inline const TrashedEntry& findTrashed(const JournalStore& library, std::string_view prefix) {
    return findByPrefix(library.trash(), prefix, "page in the trash",
                        [](const TrashedEntry& trashed) { return titleOf(trashed.entry); });
}

[[nodiscard]] inline const Flashcard& findCard(const FlashcardStore& cards, std::string_view prefix) {
    return findByPrefix(cards.cards(), prefix, "card", [](const Flashcard& card) { return card.front; });
}

}  // namespace tessary
