#include <gtest/gtest.h>

#include "base/bytes.h"
#include "base/date.h"
#include "base/signal.h"
#include "base/text.h"
#include "base/uuid.h"

namespace tessary {
namespace {

TEST(Uuid, ReadsEitherCaseAndWritesUpper) {
    EXPECT_EQ(Uuid::parse("0f0e0d0c-0b0a-0908-0706-05040302010f")->toString(), "0F0E0D0C-0B0A-0908-0706-05040302010F");
    for (const char* bad : {"", "0f0e0d0c0b0a090807060504030201ff", "0f0e0d0c-0b0a-0908-0706-05040302010",
                            "0f0e0d0c-0b0a-0908-0706-05040302010g", "0f0e0d0c-0b0a-0908-0706_05040302010f"}) {
        EXPECT_FALSE(Uuid::parse(bad)) << bad;
    }
}

TEST(Iso8601, ReadsFractionsOffsetsAndRefusesTheImpossible) {
    const double base = 817007400;  // 2026-11-22T02:30:00Z
    const std::vector<std::pair<std::string, double>> good = {
        {"2026-11-22T02:30:00Z", base},
        {"2026-11-22 02:30:00+00", base},
        {"2026-11-22T02:30:00.25Z", base + 0.25},
        {"2026-11-22T08:00:00+05:30", base},
        {"2026-11-21T18:30:00-0800", base},
        {"2026-11-22T02:30", base},
        {"2026-11-22", base - 9000},
    };
    for (const auto& [text, seconds] : good) {
        const std::optional<Date> date = parseIso8601(text);
        ASSERT_TRUE(date) << text;
        EXPECT_DOUBLE_EQ(date->seconds, seconds) << text;
    }
    for (const char* bad : {"", "2026-13-01", "2026-02-30", "2026-11-22T25:00:00Z", "2026-11-22T02:30:00Zx",
                            "2026-11-22T02:30:00.Z", "22.11.2026", "2026-11-22T"}) {
        EXPECT_FALSE(parseIso8601(bad)) << bad;
    }
    EXPECT_EQ(formatIso8601(Date{base + 0.9}), "2026-11-22T02:30:00Z");
    EXPECT_EQ(formatIso8601(Date{-0.5}), "2000-12-31T23:59:59Z");
    EXPECT_FALSE(formatIso8601(Date{1e18}));
}

TEST(Base64, RoundTripsAndRefusesForeignText) {
    Bytes bytes;
    for (int length = 0; length < 70; ++length) {
        EXPECT_EQ(decodeBase64(encodeBase64(bytes)), bytes);
        bytes.data.push_back(static_cast<std::uint8_t>(length * 37 + 200));
    }
    EXPECT_EQ(encodeBase64(Bytes{{'M', 'a'}}), "TWE=");
    for (const char* bad : {"TWE", "TW!=", "====", "T===", "TQ==TQ=="}) EXPECT_FALSE(decodeBase64(bad)) << bad;
}

TEST(Utf8, TellsMalformedSequencesApart) {
    for (const char* good : {"", "abc", "é漢🎓", "\xF4\x8F\xBF\xBF"}) EXPECT_TRUE(isValidUtf8(good)) << good;
    for (const char* bad :
         {"\x80", "\xC0\xAF", "\xE0\x80\xAF", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xF8", "\xE6\xBC"}) {
        EXPECT_FALSE(isValidUtf8(bad));
        EXPECT_TRUE(isValidUtf8(scrubbedUtf8(bad)));
    }
    std::string text;
    for (const char32_t point : codePoints("aé漢🎓")) appendUtf8(text, point);
    EXPECT_EQ(text, "aé漢🎓");
}

TEST(Lines, EveryLineEndCounts) {
    EXPECT_EQ(splitLines("a\nb\r\nc\rd\n\ne"), (std::vector<std::string_view>{"a", "b", "c", "d", "", "e"}));
    EXPECT_TRUE(splitLines("").empty());
}

TEST(Signal, LettingGoDisconnectsEvenWhileEmitting) {
    Signal<int> signal;
    int calls = 0;
    Subscription second;
    const Subscription first = signal.connect([&](int) {
        ++calls;
        second = Subscription();
    });
    second = signal.connect([&](int) { calls += 100; });
    signal.emit(1);
    signal.emit(1);
    EXPECT_EQ(calls, 2);
}

}  // namespace
}  // namespace tessary
