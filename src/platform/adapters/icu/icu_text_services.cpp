#include "platform/adapters/icu/icu_text_services.h"

#include <unicode/brkiter.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/utext.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>

#include "base/text.h"

namespace tessary {
namespace {

constexpr std::size_t kLongestText = std::size_t{1} << 30;
constexpr std::size_t kNoLimit = std::numeric_limits<std::size_t>::max();

bool isAscii(char byte) { return static_cast<unsigned char>(byte) < 0x80; }

bool isAscii(std::string_view text) {
    return std::ranges::all_of(text, [](char byte) { return isAscii(byte); });
}

void requireSuccess(UErrorCode status) {
    if (U_FAILURE(status)) throw std::runtime_error(std::string("Unicode library: ") + u_errorName(status));
}

void requireLength(std::string_view text) {
    if (text.size() >= kLongestText) throw std::length_error("text too long");
}

icu::UnicodeString decomposed(std::string_view text) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::Normalizer2* normalizer = icu::Normalizer2::getNFDInstance(status);
    requireSuccess(status);
    const icu::StringPiece piece(text.data(), static_cast<std::int32_t>(text.size()));
    icu::UnicodeString result = normalizer->normalize(icu::UnicodeString::fromUTF8(piece), status);
    requireSuccess(status);
    return result;
}

icu::UnicodeString withoutMarks(const icu::UnicodeString& text) {
    icu::UnicodeString result;
    for (std::int32_t at = 0; at < text.length(); at = text.moveIndex32(at, 1)) {
        const UChar32 point = text.char32At(at);
        if (u_charType(point) != U_NON_SPACING_MARK) result.append(point);
    }
    return result;
}

/// How much of a text some whole user-perceived characters make up.
struct Extent {
    std::size_t characters = 0;
    std::size_t bytes = 0;
};

/// The leading ASCII characters, `limit` at most, that nothing behind them can extend.
Extent asciiExtent(std::string_view text, std::size_t limit) {
    Extent extent;
    while (extent.characters < limit && extent.bytes < text.size()) {
        const std::size_t end = extent.bytes + (text.substr(extent.bytes, 2) == "\r\n" ? 2 : 1);
        if (!isAscii(text[extent.bytes]) || (end < text.size() && !isAscii(text[end]))) break;
        extent = {extent.characters + 1, end};
    }
    return extent;
}

icu::BreakIterator& characterBreaks() {
    thread_local const std::unique_ptr<icu::BreakIterator> iterator = [] {
        UErrorCode status = U_ZERO_ERROR;
        std::unique_ptr<icu::BreakIterator> made(
            icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
        requireSuccess(status);
        return made;
    }();
    return *iterator;
}

Extent unicodeExtent(std::string_view text, std::size_t limit) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::LocalUTextPointer source(
        utext_openUTF8(nullptr, text.data(), static_cast<std::int64_t>(text.size()), &status));
    icu::BreakIterator& breaks = characterBreaks();
    breaks.setText(source.getAlias(), status);
    requireSuccess(status);
    Extent extent;
    while (extent.characters < limit) {
        const std::int32_t end = breaks.next();
        if (end == icu::BreakIterator::DONE) break;
        extent = {extent.characters + 1, static_cast<std::size_t>(end)};
    }
    return extent;
}

Extent extentOf(std::string_view text, std::size_t limit) {
    const Extent head = asciiExtent(text, limit);
    if (head.characters == limit || head.bytes == text.size()) return head;
    const std::string_view rest = text.substr(head.bytes);
    requireLength(rest);
    const Extent tail = unicodeExtent(rest, limit - head.characters);
    return {head.characters + tail.characters, head.bytes + tail.bytes};
}

bool isInvisible(UChar32 point) {
    constexpr std::uint32_t kInvisible =
        U_GC_MN_MASK | U_GC_ME_MASK | U_GC_CF_MASK | U_GC_CC_MASK | U_GC_ZL_MASK | U_GC_ZP_MASK;
    constexpr UChar32 kSoftHyphen = 0xAD;
    if (point == kSoftHyphen || u_hasBinaryProperty(point, UCHAR_PREPENDED_CONCATENATION_MARK)) return false;
    return (U_GET_GC_MASK(point) & kInvisible) != 0;
}

/// Vowels and finals of Hangul syllables share the columns of the consonant before them.
bool joinsHangulSyllable(UChar32 point) {
    const std::int32_t type = u_getIntPropertyValue(point, UCHAR_HANGUL_SYLLABLE_TYPE);
    return type == U_HST_VOWEL_JAMO || type == U_HST_TRAILING_JAMO;
}

}  // namespace

std::string IcuTextServices::folded(std::string_view text) const {
    if (isAscii(text)) return asciiLowered(text);
    requireLength(text);
    std::string result;
    return withoutMarks(decomposed(text)).foldCase(U_FOLD_CASE_DEFAULT).toUTF8String(result);
}

std::size_t IcuTextServices::characterCount(std::string_view text) const { return extentOf(text, kNoLimit).characters; }

std::string_view IcuTextServices::prefix(std::string_view text, std::size_t count) const {
    return text.substr(0, extentOf(text, count).bytes);
}

bool IcuTextServices::isLetter(char32_t codePoint) const { return u_isalpha(static_cast<UChar32>(codePoint)); }

bool IcuTextServices::isLowercaseLetter(char32_t codePoint) const {
    return u_charType(static_cast<UChar32>(codePoint)) == U_LOWERCASE_LETTER;
}

bool IcuTextServices::isDigit(char32_t codePoint) const { return u_isdigit(static_cast<UChar32>(codePoint)); }

int IcuTextServices::columns(char32_t codePoint) const {
    const auto point = static_cast<UChar32>(codePoint);
    if (isInvisible(point) || joinsHangulSyllable(point)) return 0;
    const std::int32_t width = u_getIntPropertyValue(point, UCHAR_EAST_ASIAN_WIDTH);
    return width == U_EA_WIDE || width == U_EA_FULLWIDTH ? 2 : 1;
}

}  // namespace tessary
