#include "made_up_library.h"

#include <array>
#include <cstdlib>
#include <iostream>
#include <random>
#include <stdexcept>

namespace tessary {

namespace {

constexpr std::size_t kPages = 10'000;
constexpr std::size_t kPageBytes = 5'000;
constexpr auto kWords = std::to_array<std::string_view>(
    {"memory", "of",    "the",    "cell",     "membrane",   "Gedächtnis", "für",  "transport",
     "energy", "a",     "Straße", "function", "derivative", "limit",      "is",   "and",
     "über",   "proof", "naïve",  "theorem",  "water",      "in",         "1848", "revolution"});

/// Sentences out of a fixed stream of numbers. The generator itself is fixed by the language; distributions are not.
class TextMaker {
public:
    explicit TextMaker(unsigned seed) : random_(seed) {}

    std::uint32_t below(std::uint32_t end) { return static_cast<std::uint32_t>(random_() % end); }
    double fraction() { return static_cast<double>(random_()) / 4294967296.0; }

    std::string words(std::size_t bytes) {
        std::string text;
        while (text.size() < bytes) {
            text += kWords[below(kWords.size())];
            text += ' ';
        }
        text.back() = '.';
        return text;
    }

    std::string paragraphs(std::size_t bytes) {
        std::string text;
        while (text.size() < bytes) {
            text += words(60 + below(300));
            text += below(5) == 0 ? " “Quoted” and \"quoted\".\n\n" : "\n";
        }
        return text;
    }

private:
    std::mt19937 random_;
};

Uuid numberedId(std::uint8_t kind, std::size_t number) {
    std::array<std::uint8_t, 16> bytes{};
    std::uint64_t state = number * 16 + kind;
    for (std::uint8_t& byte : bytes) {
        state = state * 6364136223846793005 + 1442695040888963407;
        byte = static_cast<std::uint8_t>(state >> 56);
    }
    return Uuid::fromRandomBytes(bytes);
}

PageId pageId(std::size_t number) { return PageId{numberedId(1, number)}; }

CardMemory madeUpMemory(TextMaker& make) {
    CardMemory memory = freshMemory(kBenchNow - make.fraction() * 100 * kSecondsPerDay);
    if (make.below(5) == 0) return memory;
    memory.phase = CardMemory::Phase::review;
    memory.stability = 0.5 + make.fraction() * 200;
    memory.difficulty = 1 + make.fraction() * 9;
    memory.lastReview = kBenchNow - make.fraction() * 200 * kSecondsPerDay;
    memory.due = *memory.lastReview + memory.stability * kSecondsPerDay;
    memory.reps = 1 + make.below(30);
    memory.lapses = make.below(5);
    return memory;
}

void makeContent(Flashcard& card, TextMaker& make) {
    card.front = make.words(40 + make.below(80));
    card.back = make.words(20 + make.below(100));
    if (make.below(4) == 0) card.explanation = make.words(60);
    if (make.below(3) == 0) card.sourcePage = make.below(400) + 1;
    const std::uint32_t kind = make.below(6);
    if (kind == 0) {
        card.kind = FlashcardKind::cloze;
        card.front += " {{" + card.back + "}}";
    } else if (kind == 1) {
        card.kind = FlashcardKind::multipleChoice;
        card.options = {card.back, make.words(20), make.words(20), make.words(20)};
        card.correctIndex = 0;
    }
}

template <class Root>
std::string textOf(const Root& root) {
    std::string text = encodeJson(root).value();
    text.reserve(text.size() + JsonDocument::kPadding);
    return text;
}

}  // namespace

FlashcardFile madeUpCards(std::size_t count) {
    TextMaker make(1);
    FlashcardFile file;
    file.cards.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        Flashcard card;
        card.id = CardId{numberedId(0, i)};
        card.pageID = pageId(make.below(kPages));
        makeContent(card, make);
        card.createdAt = kBenchNow - make.fraction() * 400 * kSecondsPerDay;
        card.flagged = make.below(50) == 0;
        card.suspended = make.below(100) == 0;
        card.memory = madeUpMemory(make);
        if (make.below(10) == 0) card.failedAt = card.memory.lastReview;
        file.cards.push_back(std::make_shared<const Flashcard>(std::move(card)));
    }
    for (int day = 10; day < 28; ++day) file.introduced["2026-10-" + std::to_string(day)] = day;
    return file;
}

RecordList<JournalEntry>::Snapshot madeUpPages(std::size_t count) {
    TextMaker make(2);
    RecordList<JournalEntry>::Snapshot pages;
    pages.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        JournalEntry page;
        page.id = pageId(i);
        page.title = make.words(20 + make.below(30));
        page.body = make.paragraphs(kPageBytes);
        page.date = kBenchNow - make.fraction() * 700 * kSecondsPerDay;
        page.tags = {make.words(5), make.words(5)};
        if (i > 0 && make.below(3) == 0) page.parentID = pageId(make.below(static_cast<std::uint32_t>(i)));
        if (make.below(2) == 0) page.updatedAt = page.date + kSecondsPerDay;
        pages.push_back(std::make_shared<const JournalEntry>(std::move(page)));
    }
    return pages;
}

std::string cardsText(std::size_t count) { return textOf(madeUpCards(count)); }

std::string pagesText(std::size_t count) { return textOf(madeUpPages(count)); }

ReadContext benchContext() {
    return {.now = kBenchNow, .freshId = [] { return Uuid{}; }};
}

BenchFolder::BenchFolder() {
    std::string name = (std::filesystem::current_path() / "tessary-bench-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no folder can be made here");
    path_ = name;
}

BenchFolder::~BenchFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

void BenchFolder::put(const std::string& name, const std::string& content) const {
    PosixFileSystem files;
    const auto file = files.create(path_ / name);
    if (!file || !(*file)->write(content)) throw std::runtime_error(name + " cannot be written");
}

BenchServices::BenchServices(const std::filesystem::path& folder)
    : settings(files, folder / "settings.ini"), console(std::cerr) {}

namespace {

const BenchFolder& filled(const BenchFolder& folder, std::size_t pages, std::size_t cards) {
    folder.put("entries.json", pagesText(pages));
    folder.put("flashcards.json", cardsText(cards));
    return folder;
}

}  // namespace

OpenLibrary::OpenLibrary(std::size_t pageCount, std::size_t cardCount, SerialQueue& queue, StoreAccess access)
    : services(filled(folder_, pageCount, cardCount).path()),
      log(folder_.path() / "Reviews", services.all(), queue),
      pages(LibraryFolders{folder_.path()}, services.all(), queue, access),
      cards(folder_.path() / "flashcards.json", services.all(), queue, log, access) {}

}  // namespace tessary
