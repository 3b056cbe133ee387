#include "study/note_cards.h"

#include "base/text.h"
#include "expect.h"

namespace tessary {
namespace {

constexpr std::size_t kShortInput = 24;
constexpr std::size_t kLongNote = 100'000;

void checkNote(std::string_view note) {
    const bool valid = isValidUtf8(note);
    for (const CardContent& card : cardsInText(note)) {
        expect(!contentProblem(card), "a found card is valid");
        expect(!trimmed(card.back).empty(), "a found card has a back");
        expect(!valid || (isValidUtf8(card.front) && isValidUtf8(card.back)), "no character is torn");
    }
}

/// The input again and again: a walk that is not linear in the note runs into the fuzzer's time limit.
std::string longNote(std::string_view piece) {
    std::string note;
    while (note.size() < kLongNote) note += piece;
    return note;
}

}  // namespace
}  // namespace tessary

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view note = tessary::textOf(data, size);
    tessary::checkNote(note);
    if (size > 0 && size <= tessary::kShortInput) tessary::checkNote(tessary::longNote(note));
    return 0;
}
