#include "base/text.h"
#include "expect.h"
#include "library/journal_store.h"
#include "study/flashcard_store.h"

namespace tessary {
namespace {

bool isEqual(const FlashcardFile& a, const FlashcardFile& b) {
    return a.version == b.version && a.introduced == b.introduced &&
           std::ranges::equal(a.cards, b.cards, [](const auto& x, const auto& y) { return *x == *y; });
}

template <class T>
bool isEqual(const std::vector<T>& a, const std::vector<T>& b) {
    return a == b;
}

ReadContext contextFor(JsonDates dates, std::uint8_t& freshIds) {
    return {.now = Date{817007400}, .freshId = [&freshIds] { return Uuid{{++freshIds}}; }, .dates = dates};
}

/// The library form keeps everything: equal values, and equal bytes when they are written again.
template <class Root>
void checkLibraryForm(const Root& root, const ReadContext& context) {
    const auto text = encodeJson(root);
    expect(text.has_value(), "what was read can be saved");
    const auto again = decodeJson<Root>(*text, context);
    expect(again.has_value(), "what was saved is readable");
    expect(isEqual(*again, root), "what was saved reads back equal");
    expect(encodeJson(*again) == text, "what was saved is saved the same again");
}

/// The export form drops fractions of seconds, once.
template <class Root>
void checkExportForm(const Root& root, std::uint8_t& freshIds) {
    const auto text = encodeJson(root, kExportFormat);
    if (!text) return;  // a date outside the years that ISO 8601 can carry
    const auto again = decodeJson<Root>(*text, contextFor(JsonDates::iso8601, freshIds));
    expect(again.has_value(), "what was exported is readable");
    expect(encodeJson(*again, kExportFormat) == text, "what was exported is exported the same again");
}

template <class Root>
void checkRoot(const std::string& text, JsonDates dates) {
    std::uint8_t freshIds = 0;
    const ReadContext context = contextFor(dates, freshIds);
    const auto root = decodeJson<Root>(text, context);
    if (!root) return expect(!root.error().describe("file.json").empty(), "a refusal says why");
    expect(isValidUtf8(text), "what is read is UTF-8");
    std::uint8_t noIds = 0;
    checkLibraryForm(*root, contextFor(JsonDates::referenceSeconds, noIds));
    checkExportForm(*root, noIds);
    expect(noIds == 0, "what was written lacks no identifier");
}

void checkText(const std::string& text) {
    for (const JsonDates dates : {JsonDates::referenceSeconds, JsonDates::iso8601}) {
        checkRoot<std::vector<JournalEntry>>(text, dates);
        checkRoot<std::vector<Notebook>>(text, dates);
        checkRoot<std::vector<TrashedEntry>>(text, dates);
        checkRoot<std::vector<Exam>>(text, dates);
        checkRoot<FlashcardFile>(text, dates);
    }
}

bool isAccepted(const std::string& text) {
    try {
        const JsonDocument document(text);
        return true;
    } catch (const JsonMismatch&) {
        return false;
    }
}

}  // namespace
}  // namespace tessary

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string text(tessary::textOf(data, size));
    const bool accepted = tessary::isAccepted(text);
    tessary::expect(!accepted || tessary::isValidUtf8(text), "accepted JSON is UTF-8");
    text.reserve(text.size() + tessary::JsonDocument::kPadding);
    tessary::expect(tessary::isAccepted(text) == accepted, "spare capacity changes nothing");
    if (accepted) tessary::checkText(text);
    return 0;
}
