#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <stop_token>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "library/library_json.h"
#include "library/page.h"
#include "library/record_list.h"
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

/// Searches pages while the user types. Any thread, one at a time.
///
/// The first search folds all pages and keeps the result, which takes about as much memory as the texts themselves;
/// later ones fold only what has changed since.
class PageSearch {
public:
    /// The pages of a store as they were at one moment.
    using Pages = RecordList<JournalEntry>::Snapshot;

    /// `text` outlives the search.
    explicit PageSearch(const TextServices& text) : text_(text) {}
    PageSearch(const PageSearch&) = delete;
    PageSearch& operator=(const PageSearch&) = delete;

    static constexpr std::size_t kUsualLimit = 100;

    /// Those of `pages` whose title, tags and body together contain every word of `query`, wherever in a word it
    /// stands, without regard to case and diacritics. What stands in double quotes counts as one word and is looked for
    /// within a line. Matches in titles come first, then tags, then bodies, the last edited first in each; `limit` at
    /// most. Nothing is found for a blank query, which still prepares the next; nor once `stop` is requested, soon
    /// after which it returns.
    [[nodiscard]] std::vector<PageHit> find(const Pages& pages, std::string_view query, std::size_t limit = kUsualLimit,
                                            const std::stop_token& stop = {});

private:
    struct FoldedPage {
        Pages::value_type source;
        std::string title;
        std::vector<std::string> tags;
        std::string body;
        Date lastEdited;
        std::uint64_t round = 0;  ///< the last search that came upon it
    };
    struct Match {
        PageHit::Where where;
        Date lastEdited;
        PageId page;
    };

    /// False when it was stopped.
    bool refresh(const Pages& pages, const std::stop_token& stop);
    /// Where the words may stand: what was found last when they only say more than the words before, else all pages.
    [[nodiscard]] std::vector<const FoldedPage*> candidates(const std::vector<std::string>& words) const;
    void fold(const Pages::value_type& page, FoldedPage& folded);
    void sampleBytes(std::string_view text);
    [[nodiscard]] std::string excerptOf(PageId page, const std::vector<std::string>& words) const;

    const TextServices& text_;
    std::unordered_map<PageId, FoldedPage> pages_;
    std::uint64_t round_ = 0;
    std::vector<std::string> lastWords_;  ///< of the last search; empty once a page has changed since
    std::vector<const FoldedPage*> lastFound_;
    /// How often each byte was met in the texts: looking for the rarest byte of a word skips most of a text.
    std::array<std::uint64_t, 256> byteCounts_{};
};

}  // namespace tessary
