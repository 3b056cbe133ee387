#include <gtest/gtest.h>
#include <unicode/brkiter.h>
#include <unicode/utext.h>

#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "base/date.h"
#include "base/text.h"
#include "platform/adapters/icu/icu_calendar.h"
#include "platform/adapters/icu/icu_text_services.h"

namespace tessary {
namespace {

constexpr double kHour = 3600;

Date at(std::string_view text) { return parseIso8601(text).value(); }

std::string iso(Date date) { return formatIso8601(date).value(); }

std::string localKey(const IcuCalendar& calendar, std::string_view moment) {
    return dayKey(calendar.civilTime(at(moment)).day);
}

TEST(IcuCalendarTest, readsTheWallClock) {
    const IcuCalendar berlin("Europe/Berlin");
    EXPECT_EQ(berlin.civilTime(at("2026-01-15T11:22:33Z")), (CivilTime{{2026, 1, 15}, 12, 22, 33}));
    EXPECT_EQ(berlin.civilTime(at("2026-07-15T11:22:33Z")), (CivilTime{{2026, 7, 15}, 13, 22, 33}));
    EXPECT_EQ(berlin.civilTime(at("2026-07-15T11:22:33Z") + 0.999), (CivilTime{{2026, 7, 15}, 13, 22, 33}));
}

TEST(IcuCalendarTest, readsMomentsBeforeTheReferenceDate) {
    const IcuCalendar utc("UTC");
    EXPECT_EQ(utc.civilTime(Date{-0.5}), (CivilTime{{2000, 12, 31}, 23, 59, 59}));
    EXPECT_EQ(utc.civilTime(at("1500-02-28T23:59:59Z") + 1), (CivilTime{{1500, 3, 1}, 0, 0, 0}));
    EXPECT_EQ(utc.civilTime(at("1582-10-04T12:00:00Z") + kSecondsPerDay), (CivilTime{{1582, 10, 5}, 12, 0, 0}));
}

TEST(IcuCalendarTest, dayOfTwentyThreeHours) {
    const IcuCalendar berlin("Europe/Berlin");
    const Date start = berlin.startOfDay(at("2026-03-29T12:00:00Z"));
    const Date next = berlin.startOfDay(at("2026-03-30T12:00:00Z"));
    EXPECT_EQ(iso(start), "2026-03-28T23:00:00Z");
    EXPECT_EQ(next - start, 23 * kHour);
    EXPECT_EQ(berlin.addingDays(start, 1), next);
    EXPECT_EQ(berlin.addingDays(next, -1), start);
}

TEST(IcuCalendarTest, dayOfTwentyFiveHours) {
    const IcuCalendar berlin("Europe/Berlin");
    const Date start = berlin.startOfDay(at("2026-10-25T12:00:00Z"));
    const Date next = berlin.startOfDay(at("2026-10-26T12:00:00Z"));
    EXPECT_EQ(iso(start), "2026-10-24T22:00:00Z");
    EXPECT_EQ(next - start, 25 * kHour);
    EXPECT_EQ(berlin.addingDays(start, 1), next);
    EXPECT_EQ(berlin.startOfDay(next - 1), start);
}

TEST(IcuCalendarTest, addingDaysKeepsTheReading) {
    const IcuCalendar berlin("Europe/Berlin");
    EXPECT_EQ(iso(berlin.addingDays(at("2026-03-28T08:30:00Z"), 1)), "2026-03-29T07:30:00Z");
    EXPECT_EQ(iso(berlin.addingDays(at("2026-10-26T08:30:00Z"), -7)), "2026-10-19T07:30:00Z");
    EXPECT_EQ(berlin.addingDays(Date{1000.25}, 3), Date{1000.25 + 3 * kSecondsPerDay});
}

TEST(IcuCalendarTest, skippedReadingMovesForward) {
    const IcuCalendar berlin("Europe/Berlin");
    const Date moved = berlin.addingDays(at("2026-03-28T01:30:00Z"), 1);
    EXPECT_EQ(berlin.civilTime(moved), (CivilTime{{2026, 3, 29}, 3, 30, 0}));
}

TEST(IcuCalendarTest, repeatedReadingMeansTheFirst) {
    const IcuCalendar berlin("Europe/Berlin");
    EXPECT_EQ(iso(berlin.addingDays(at("2026-10-24T00:30:00Z"), 1)), "2026-10-25T00:30:00Z");
    const Date second = at("2026-10-25T01:30:00Z");
    EXPECT_EQ(berlin.addingDays(second, 0), second);
}

TEST(IcuCalendarTest, dayWithoutMidnight) {
    const IcuCalendar saoPaulo("America/Sao_Paulo");
    const Date start = saoPaulo.startOfDay(at("2018-11-04T15:00:00Z"));
    EXPECT_EQ(saoPaulo.civilTime(start), (CivilTime{{2018, 11, 4}, 1, 0, 0}));
    EXPECT_EQ(saoPaulo.civilTime(start - 1), (CivilTime{{2018, 11, 3}, 23, 59, 59}));

    const IcuCalendar toronto("America/Toronto");
    const Date early = toronto.startOfDay(at("1919-03-31T15:00:00Z"));
    EXPECT_EQ(toronto.civilTime(early), (CivilTime{{1919, 3, 31}, 0, 30, 0}));
    EXPECT_EQ(toronto.civilTime(early - 1).day, (CivilDay{1919, 3, 30}));
}

TEST(IcuCalendarTest, skippedDay) {
    const IcuCalendar apia("Pacific/Apia");
    const Date before = at("2011-12-29T22:00:00Z");
    EXPECT_EQ(apia.civilTime(before), (CivilTime{{2011, 12, 29}, 12, 0, 0}));
    EXPECT_EQ(apia.civilTime(apia.addingDays(before, 1)), (CivilTime{{2011, 12, 31}, 12, 0, 0}));
    EXPECT_EQ(iso(apia.startOfDay(at("2011-12-31T05:00:00Z"))), "2011-12-30T10:00:00Z");
}

TEST(IcuCalendarTest, halfHourOffset) {
    const IcuCalendar kolkata("Asia/Kolkata");
    EXPECT_EQ(kolkata.civilTime(at("2026-05-05T18:29:59Z")), (CivilTime{{2026, 5, 5}, 23, 59, 59}));
    EXPECT_EQ(iso(kolkata.startOfDay(at("2026-05-05T18:30:00Z"))), "2026-05-05T18:30:00Z");
}

TEST(IcuCalendarTest, dayKeysNearMidnight) {
    const IcuCalendar berlin("Europe/Berlin");
    EXPECT_EQ(localKey(berlin, "2025-12-31T22:59:59Z"), "2025-12-31");
    EXPECT_EQ(localKey(berlin, "2025-12-31T23:00:00Z"), "2026-01-01");
    EXPECT_EQ(localKey(berlin, "2026-06-30T21:59:59Z"), "2026-06-30");
    EXPECT_EQ(localKey(berlin, "2026-06-30T22:00:00Z"), "2026-07-01");
    EXPECT_EQ(localKey(IcuCalendar("Asia/Kolkata"), "2028-02-28T18:30:00Z"), "2028-02-29");
}

void expectInItsDay(const IcuCalendar& calendar, Date moment) {
    const Date start = calendar.startOfDay(moment);
    ASSERT_LE(start, moment);
    ASSERT_EQ(calendar.civilTime(start).day, calendar.civilTime(moment).day);
    ASSERT_LT(calendar.civilTime(start - 1).day, calendar.civilTime(start).day);
    ASSERT_LT(moment, calendar.addingDays(start, 1));
}

/// Every hour around the changes of summer time; elsewhere a stride that meets each hour of the day.
TEST(IcuCalendarTest, everyMomentLiesInItsDay) {
    const std::vector<std::pair<const char*, std::vector<const char*>>> zones = {
        {"Europe/Berlin", {"2026-03-29", "2026-10-25"}},
        {"America/New_York", {"2026-03-08", "2026-11-01"}},
        {"Asia/Kolkata", {}},
        {"Australia/Lord_Howe", {"2026-04-05", "2026-10-04"}},
    };
    for (const auto& [zone, changes] : zones) {
        SCOPED_TRACE(zone);
        const IcuCalendar calendar(zone);
        const Date year = at("2026-01-01");
        for (int hour = 0; hour < 366 * 24; hour += 23) expectInItsDay(calendar, year + hour * kHour);
        for (const char* change : changes) {
            for (int hour = -48; hour <= 48; ++hour) expectInItsDay(calendar, at(change) + hour * kHour);
        }
    }
}

TEST(IcuCalendarTest, unknownZonesAreRefused) {
    EXPECT_THROW(IcuCalendar("Mars/Olympus"), std::invalid_argument);
    EXPECT_THROW(IcuCalendar("Etc/Unknown"), std::invalid_argument);
    EXPECT_NO_THROW(IcuCalendar(""));
    EXPECT_EQ(IcuCalendar("GMT+02:00").civilTime(Date{}).hour, 2);
}

TEST(IcuCalendarTest, noNameMeansTheZoneOfTheSystem) {
    const char* const before = std::getenv("TZ");
    const std::string kept = before != nullptr ? before : "";
    setenv("TZ", "Asia/Kolkata", 1);
    EXPECT_EQ(IcuCalendar().civilTime(Date{}), (CivilTime{{2001, 1, 1}, 5, 30, 0}));
    before != nullptr ? setenv("TZ", kept.c_str(), 1) : unsetenv("TZ");
}

TEST(IcuCalendarTest, survivesAbsurdMoments) {
    const IcuCalendar berlin("Europe/Berlin");
    for (const double seconds : {1e300, -1e300, HUGE_VAL, -HUGE_VAL, std::nan("")}) {
        const CivilTime time = berlin.civilTime(Date{seconds});
        EXPECT_TRUE(time.day.month >= 1 && time.day.month <= 12);
        static_cast<void>(berlin.startOfDay(Date{seconds}));
        static_cast<void>(berlin.addingDays(Date{seconds}, 1));
    }
    static_cast<void>(berlin.addingDays(Date{}, std::numeric_limits<int>::max()));
    static_cast<void>(berlin.addingDays(Date{}, std::numeric_limits<int>::min()));
}

const IcuTextServices kText;

TEST(IcuTextTest, folding) {
    const std::vector<std::pair<std::string, std::string>> table = {
        {"", ""},
        {"PRUFUNG", "prufung"},
        {"Prüfung", "prufung"},
        {"Pru\u0308fung", "prufung"},
        {"ÉCOLE", "ecole"},
        {"Straße", "strasse"},
        {"STRAẞE", "strasse"},
        {"İstanbul", "istanbul"},
        {"ISPARTA", "isparta"},
        {"ısı", "ısı"},
        {"ΣΊΣΥΦΟΣ", "σισυφοσ"},
        {"Σίσυφος", "σισυφοσ"},
        {"Ångström", "angstrom"},
        {"Ñandú", "nandu"},
        {"Łódź", "łodz"},
        {"ПРИВЕТ", "привет"},
        {"ﬁ", "fi"},
        {"½", "½"},
        {"日本", "日本"},
        {"a\xFFz", "a\uFFFDz"},
    };
    for (const auto& [text, expected] : table) EXPECT_EQ(kText.folded(text), expected) << text;
}

/// All code points, many to a text, with line breaks that keep each from its neighbours.
TEST(IcuTextTest, foldingTwiceChangesNothing) {
    constexpr char32_t kPointsOfOneText = 256;
    for (char32_t first = 0; first <= 0x10FFFF; first += kPointsOfOneText) {
        if (first >= 0xD800 && first <= 0xDFFF) continue;
        std::string text;
        for (char32_t point = first; point < first + kPointsOfOneText; ++point) {
            appendUtf8(text, point);
            text += '\n';
        }
        const std::string once = kText.folded(text);
        ASSERT_EQ(kText.folded(once), once) << std::hex << static_cast<unsigned>(first);
    }
}

TEST(IcuTextTest, clustersAreNeverSplit) {
    const std::vector<std::string> clusters = {"🇩🇪",
                                               "🇫🇷",
                                               "👨‍👩‍👧‍👦",
                                               "e\u0301",
                                               "\r\n",
                                               "a",
                                               "👍🏽",
                                               "각",
                                               "\r",
                                               "x\u0308\u0323",
                                               "\n",
                                               "日",
                                               "❤️",
                                               " "};
    std::string text;
    for (const std::string& cluster : clusters) text += cluster;
    EXPECT_EQ(kText.characterCount(text), clusters.size());
    std::string expected;
    for (std::size_t count = 0; count < clusters.size(); ++count) {
        EXPECT_EQ(kText.prefix(text, count), expected) << count;
        expected += clusters[count];
    }
    EXPECT_EQ(kText.prefix(text, clusters.size()), text);
    EXPECT_EQ(kText.prefix(text, 1000), text);
    EXPECT_EQ(kText.prefix(text, 3).data(), text.data());
}

TEST(IcuTextTest, markAfterAsciiBelongsToIt) {
    EXPECT_EQ(kText.prefix("ae\u0301", 1), "a");
    EXPECT_EQ(kText.prefix("ae\u0301", 2), "ae\u0301");
    EXPECT_EQ(kText.characterCount("\r\n\u0301"), 2U);
    EXPECT_EQ(kText.prefix("", 3), "");
    EXPECT_EQ(kText.characterCount(""), 0U);
}

/// The ends of a text's clusters in bytes, as the Unicode library finds them by itself.
std::vector<std::size_t> clusterEnds(const std::string& text) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::LocalUTextPointer source(
        utext_openUTF8(nullptr, text.data(), static_cast<std::int64_t>(text.size()), &status));
    const std::unique_ptr<icu::BreakIterator> breaks(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    breaks->setText(source.getAlias(), status);
    EXPECT_TRUE(U_SUCCESS(status));
    std::vector<std::size_t> ends;
    for (std::int32_t end = breaks->next(); end != icu::BreakIterator::DONE; end = breaks->next()) {
        ends.push_back(static_cast<std::size_t>(end));
    }
    return ends;
}

TEST(IcuTextTest, shortcutsAgreeWithTheLongWay) {
    const std::vector<std::string> pieces{
        "a",  "Z",      " ",      "\n",     "\r",     "\t",     "é",  "я",    "日",       "。", "각",
        "가", "\u1100", "\u1161", "\u11A8", "\u0301", "\u200D", "👩", "👍🏽", "🇩",        "❤️",  "\u0600",
        "क",  "\u094D", "ी",      "\u00AD", "\u200B", "\uFEFF", "𝒳",  "\xFF", "\xE6\x97", "~"};
    std::mt19937 random(7);
    std::uniform_int_distribution<std::size_t> pick(0, pieces.size() - 1);
    std::uniform_int_distribution<int> plainRun(0, 3);
    for (int round = 0; round < 5000; ++round) {
        std::string text;
        for (int i = 0; i < round % 13; ++i) text += plainRun(random) == 0 ? "ab日é" : pieces[pick(random)];
        const std::vector<std::size_t> ends = clusterEnds(text);
        ASSERT_EQ(kText.characterCount(text), ends.size()) << text;
        for (std::size_t count = 1; count <= ends.size(); ++count) {
            ASSERT_EQ(kText.prefix(text, count).size(), ends[count - 1]) << text;
        }
    }
}

TEST(IcuTextTest, malformedTextIsCounted) {
    EXPECT_EQ(kText.characterCount("a\xFF"
                                   "b"),
              3U);
    EXPECT_EQ(kText.prefix("a\xFF"
                           "b",
                           2),
              "a\xFF");
    EXPECT_EQ(kText.characterCount("\xE6\x97"), 1U);
}

TEST(IcuTextTest, classes) {
    for (const char32_t letter : {U'a', U'ß', U'日', U'я', U'ª'}) EXPECT_TRUE(kText.isLetter(letter));
    for (const char32_t other : {U'1', U' ', U'-', U'\u0301', U'👍', char32_t{0xFFFFFFFF}}) {
        EXPECT_FALSE(kText.isLetter(other));
    }
    for (const char32_t digit : {U'0', U'9', U'٣', U'５'}) EXPECT_TRUE(kText.isDigit(digit));
    for (const char32_t other : {U'a', U'½', U'Ⅷ', char32_t{0x110000}}) EXPECT_FALSE(kText.isDigit(other));
}

TEST(IcuTextTest, columns) {
    for (const char32_t none : {U'\u0301', U'\u200D', U'\uFE0F', U'\n', U'\u1161'}) EXPECT_EQ(kText.columns(none), 0);
    for (const char32_t one : {U'a', U'ü', U'\u00AD', U'—', U'\uFFFD', char32_t{0x110000}}) {
        EXPECT_EQ(kText.columns(one), 1);
    }
    for (const char32_t two : {U'日', U'Ａ', U'👍', U'각'}) EXPECT_EQ(kText.columns(two), 2);
}

}  // namespace
}  // namespace tessary
