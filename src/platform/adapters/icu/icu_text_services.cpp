#include "platform/adapters/icu/icu_text_services.h"

#include <unicode/brkiter.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/utext.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <bitset>
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

/// Between two plain code points there is always a boundary (UAX #29, table 1b and rules GB3 to GB999): what joins
/// characters, marks, joiners, jamo, flags and prepended signs, is not plain. A carriage return is only looked at with
/// what follows it.
class PlainPoints {
public:
    PlainPoints() {
        for (UChar32 point = 0; point < kEnd; ++point) {
            switch (u_getIntPropertyValue(point, UCHAR_GRAPHEME_CLUSTER_BREAK)) {
                case U_GCB_OTHER:
                case U_GCB_CONTROL:
                case U_GCB_LF:
                case U_GCB_LV:
                case U_GCB_LVT: plain_.set(static_cast<std::size_t>(point)); break;
                default: break;
            }
        }
    }

    [[nodiscard]] bool contain(UChar32 point) const {
        return point >= 0 && point < kEnd && plain_[static_cast<std::size_t>(point)];
    }

private:
    static constexpr UChar32 kEnd = 0x10000;
    std::bitset<kEnd> plain_;
};

bool isPlain(UChar32 point) {
    static const PlainPoints points;
    return points.contain(point);
}

struct PointAt {
    UChar32 point = U_SENTINEL;  ///< negative at the end, and where the text is malformed
    std::size_t end = 0;         ///< bytes
};

PointAt pointAt(std::string_view text, std::size_t begin) {
    if (begin >= text.size()) return {.end = begin};
    if (isAscii(text[begin])) return {.point = text[begin], .end = begin + 1};
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    std::size_t at = begin;
    UChar32 point = U_SENTINEL;
    U8_NEXT(bytes, at, text.size(), point);
    return {.point = point, .end = at};
}

/// The leading plain characters, `limit` at most, that nothing behind them can extend.
Extent plainExtent(std::string_view text, std::size_t limit) {
    Extent extent;
    PointAt next = pointAt(text, 0);
    while (extent.characters < limit && next.end > extent.bytes) {
        PointAt behind = pointAt(text, next.end);
        if (next.point == '\r' && behind.point == '\n') {
            next = behind;
            behind = pointAt(text, next.end);
        } else if (next.point != '\r' && !isPlain(next.point)) {
            break;
        }
        const bool isLast = next.end == text.size();
        if (!isLast && behind.point != '\r' && !isPlain(behind.point)) break;
        extent = {.characters = extent.characters + 1, .bytes = next.end};
        next = behind;
    }
    return extent;
}

/// Where two plain code points meet for the first time: up to there a text has to be looked at as a whole.
std::size_t joinedPartEnd(std::string_view text) {
    PointAt last = pointAt(text, 0);
    while (last.end < text.size()) {
        const PointAt next = pointAt(text, last.end);
        if (isPlain(last.point) && isPlain(next.point)) return last.end;
        last = next;
    }
    return text.size();
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
    Extent extent;
    while (extent.characters < limit && extent.bytes < text.size()) {
        const std::string_view rest = text.substr(extent.bytes);
        Extent part = plainExtent(rest, limit - extent.characters);
        if (part.bytes == 0) {
            const std::string_view joinedPart = rest.substr(0, joinedPartEnd(rest));
            requireLength(joinedPart);
            part = unicodeExtent(joinedPart, limit - extent.characters);
        }
        extent = {.characters = extent.characters + part.characters, .bytes = extent.bytes + part.bytes};
    }
    return extent;
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
