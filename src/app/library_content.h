#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "app/library_check.h"
#include "library/journal_store.h"
#include "study/flashcard_store.h"

/// What the check of a library and its repair share.
namespace tessary {

/// The files of a library, read once.
struct LibraryContent {
    enum class State { missing, loaded, broken };

    template <class T>
    struct File {
        State state = State::missing;
        RecordList<T> records;

        /// Whether what `records` lacks is known not to be in the file.
        [[nodiscard]] bool isKnown() const { return state != State::broken; }
    };

    File<JournalEntry> pages;
    File<TrashedEntry> trash;
    File<Notebook> notebooks;
    File<Exam> exams;
    File<Flashcard> cards;
    FlashcardFile cardFile;  ///< what flashcards.json holds beside the cards
    std::vector<LibraryFinding> unread;  ///< the files that are there but could not be read
};

[[nodiscard]] LibraryContent loadLibrary(const LibraryFolders& folders, const FileSystem& files,
                                         const ReadContext& context);

/// A record whose identity stands earlier in the list.
struct Duplicate {
    std::size_t index = 0;
    bool isIdentical = false;  ///< to the first record of the identity
};

template <class T>
[[nodiscard]] std::vector<Duplicate> duplicatesIn(const RecordList<T>& records) {
    std::vector<Duplicate> duplicates;
    for (std::size_t i = 0; i < records.size(); ++i) {
        const T* const first = records.find(identityOf(records[i]));
        if (first != &records[i]) duplicates.push_back({.index = i, .isIdentical = *first == records[i]});
    }
    return duplicates;
}

/// Null for a top-level page and for one whose parent is not in the list.
[[nodiscard]] const JournalEntry* parentOf(const JournalEntry& page, const RecordList<JournalEntry>& pages);

/// The pages of one loop, each followed by its parent.
using ParentLoop = std::vector<const JournalEntry*>;
[[nodiscard]] std::vector<ParentLoop> parentLoops(const RecordList<JournalEntry>& pages);

/// The number of cards of each page that is neither live nor in the trash.
[[nodiscard]] std::map<PageId, std::size_t> cardsWithoutPage(const LibraryContent& library);

/// Whether those pages can be made anew: not while the file they may come back with is missing or unread.
[[nodiscard]] bool canRecoverCards(const LibraryContent& library);

/// “Title” (identity), for the user.
[[nodiscard]] std::string nameOf(const JournalEntry& page);
[[nodiscard]] std::string nameOf(const TrashedEntry& trashed);
[[nodiscard]] std::string nameOf(const Notebook& notebook);
[[nodiscard]] std::string nameOf(const Exam& exam);
[[nodiscard]] std::string nameOf(const Flashcard& card);

/// "1 card", "2 cards".
[[nodiscard]] std::string countOf(std::size_t count, std::string_view thing);

}  // namespace tessary
