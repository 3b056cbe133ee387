#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "library/journal_store.h"
#include "platform/text_services.h"

namespace tessary {

/// A page that was found.
struct PageHit {
    enum class Where {
        title,  ///< every word stands in the title
        tag,    ///< a word is one of the tags
        body,
    };

    PageId page;
    Where where = Where::body;
    /// The body around its first match, on one line, at most 120 user-perceived characters and an ellipsis at each end
    /// that is cut; empty when the body matches no word.
    std::string excerpt;

    friend bool operator==(const PageHit&, const PageHit&) = default;
};

/// Searches the live pages while the user types. Main thread only.
///
/// The first search folds all pages and keeps the result, which takes about as much memory as the texts themselves;
/// later ones fold only what has changed since.
class PageSearch {
public:
    /// Both arguments outlive the search.
    PageSearch(JournalStore& store, const TextServices& text);
    PageSearch(const PageSearch&) = delete;
    PageSearch& operator=(const PageSearch&) = delete;

    static constexpr std::size_t kUsualLimit = 100;

    /// The pages whose title, tags and body together contain every word of `query`, wherever in a word it stands,
    /// without regard to case and diacritics. What stands in double quotes counts as one word and is looked for within
    /// a line. Matches in titles come first, then tags, then bodies, the last edited first in each; `limit` at most.
    /// Nothing is found for a blank query.
    [[nodiscard]] std::vector<PageHit> find(std::string_view query, std::size_t limit = kUsualLimit);

private:
    struct FoldedPage {
        std::string title;
        std::vector<std::string> tags;
        std::string body;
        Date lastEdited;
    };
    struct Match {
        PageHit::Where where;
        Date lastEdited;
        PageId page;
    };

    void refresh();
    void add(const JournalEntry& page);
    void sampleBytes(std::string_view text);
    [[nodiscard]] std::vector<std::string> wordsOf(std::string_view query) const;
    [[nodiscard]] std::string excerptOf(PageId page, const std::vector<std::string>& words) const;

    const JournalStore& store_;
    const TextServices& text_;
    std::unordered_map<PageId, FoldedPage> pages_;
    std::unordered_set<PageId> stale_;  ///< folded before their last change
    bool isFilled_ = false;
    /// How often each byte was met in the texts: looking for the rarest byte of a word skips most of a text.
    std::array<std::uint64_t, 256> byteCounts_{};
    Subscription changes_;
};

}  // namespace tessary
