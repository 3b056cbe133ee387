#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "base/json_record.h"
#include "library/library_json.h"
#include "study/flashcard.h"

namespace tessary {
namespace {

const ReadContext kContext{.now = Date{1000}, .freshId = [] { return Uuid{}; }};
constexpr const char* kMinimalPage =
    R"({"id":"0F0E0D0C-0B0A-0908-0706-050403020100","title":"T","body":"B","date":12.5)";

std::expected<JournalEntry, DecodingError> readPage(const std::string& rest) {
    return decodeJson<JournalEntry>(kMinimalPage + rest + "}", kContext);
}

TEST(JsonRecord, MinimalPageTakesDefaults) {
    const auto page = readPage("");
    ASSERT_TRUE(page) << page.error().describe("page");
    JournalEntry expected;
    expected.id = *PageId::parse("0f0e0d0c-0b0a-0908-0706-050403020100");
    expected.title = "T";
    expected.body = "B";
    expected.date = Date{12.5};
    EXPECT_EQ(*page, expected);
    EXPECT_EQ(std::hash<JournalEntry>{}(*page), std::hash<JournalEntry>{}(expected));
}

TEST(JsonRecord, UnreadableTypeBecomesNote) {
    for (const char* type : {R"("Poem")", "null", "3", "[]", R"({"a":1})"}) {
        const auto page = readPage(std::string(R"(,"type":)") + type);
        ASSERT_TRUE(page) << type;
        EXPECT_EQ(page->type, JournalEntry::EntryType::note);
    }
    EXPECT_EQ(readPage(R"(,"type":"Idea")")->type, JournalEntry::EntryType::idea);
}

TEST(JsonRecord, ErrorsNameThePlace) {
    const auto describe = [](const std::string& text) {
        const auto pages = decodeJson<std::vector<JournalEntry>>(text, kContext);
        return pages ? "read" : pages.error().describe("entries.json");
    };
    const std::string minimal = std::string(kMinimalPage) + "}";
    EXPECT_EQ(describe(R"([)" + minimal + R"(,{"id":"0F0E0D0C-0B0A-0908-0706-050403020100","title":"","body":""}])"),
              "entries.json: [1].date: missing");
    EXPECT_EQ(describe("[" + std::string(kMinimalPage) + R"(,"tags":["a",2]}])"),
              "entries.json: [0].tags[1]: expected a text");
    EXPECT_EQ(describe("[" + std::string(kMinimalPage) + R"(,"studyPlan":{"mode":"odd"}}])"),
              "entries.json: [0].studyPlan.mode: unknown value “odd”");
    EXPECT_EQ(describe("{}"), "entries.json: expected a list");
}

TEST(JsonRecord, MalformedTextIsRefused) {
    const std::vector<std::string> rests = {
        R"(,"title":"again")",               // duplicate
        R"(,"x":1,"x":2)",                   // duplicate unknown key
        R"(,"x":{"a":[{"b":1,"b":2}]})",     // duplicate inside an unknown value
        R"(,"imageStickers":{"a":{"x":1,"y":1,"width":1,"aboveText":true},"a":null})",
        ",\"x\":\"\xFF\"",                   // malformed UTF-8
        R"(,"latitude":1e999)",              // out of range
        R"(,"x":01)",
        R"(,"x":nul)",
        R"(}}{"a":1)",
        R"(,)",
        ",\"x\":" + std::string(5000, '[') + std::string(5000, ']'),
    };
    for (const std::string& rest : rests) EXPECT_FALSE(readPage(rest)) << rest.substr(0, 60);
}

TEST(JsonRecord, LenienciesOfReading) {
    EXPECT_TRUE(decodeJson<JournalEntry>("\xEF\xBB\xBF" + std::string(kMinimalPage) + "} \n", kContext));
    EXPECT_TRUE(decodeJson<JournalEntry>(
        R"({"b\u006fdy":"B","date":1,"title":"T","id":"0F0E0D0C-0B0A-0908-0706-050403020100"})", kContext));
    const std::string plan = R"(,"studyPlan":{"mode":"fixed","intervalDays":3.0,"nextDue":1,"timesStudied":2e0})";
    EXPECT_EQ(readPage(plan)->studyPlan->intervalDays, 3);
    EXPECT_FALSE(readPage(R"(,"studyPlan":{"mode":"fixed","intervalDays":3.5,"nextDue":1,"timesStudied":2})"));
    EXPECT_EQ(readPage(R"(,"titleStyle":{"size":400})")->titleStyle->size, 160);
    EXPECT_EQ(readPage(R"(,"titleStyle":{"size":4})")->titleStyle->size, 12);
    EXPECT_EQ(readPage(R"(,"titleStyle":{"size":null})")->titleStyle->size, 30);
}

TEST(JsonRecord, NegativeCountersAreRefused) {
    const auto memory = [](const std::string& rest) {
        return decodeJson<CardMemory>(R"({"phase":"new","stability":0,"difficulty":0,"due":0)" + rest + "}", kContext);
    };
    EXPECT_TRUE(memory(R"(,"reps":0)"));
    for (const char* key : {"reps", "lapses", "step"}) {
        EXPECT_FALSE(memory(",\"" + std::string(key) + "\":-1")) << key;
    }
}

TEST(JsonRecord, NotebookToleratesNewerStylesAndDefaultsToTheLoad) {
    const auto notebook = decodeJson<Notebook>(
        R"({"id":"0F0E0D0C-0B0A-0908-0706-050403020100","name":"N","material":"marble","pattern":7})", kContext);
    ASSERT_TRUE(notebook);
    EXPECT_EQ(notebook->material, CoverMaterial::classic);
    EXPECT_EQ(notebook->pattern, CoverPattern::none);
    EXPECT_EQ(notebook->createdAt, kContext.now);
    EXPECT_EQ(notebook->icon, "folder.fill");
}

TEST(JsonRecord, WritesInDeclaredOrderAndExportsSorted) {
    JournalEntry page = *readPage(R"(,"tags":["b"],"updatedAt":0)");
    const std::string compact = *encodeJson(page);
    EXPECT_TRUE(
        compact.starts_with(R"({"id":"0F0E0D0C-0B0A-0908-0706-050403020100","title":"T","body":"B","date":12.5,)"
                            R"("tags":["b"],"isFavorite":false,"type":"Note","fontDesign":"default",)"));
    EXPECT_EQ(compact.find("bodyRTF"), std::string::npos);
    EXPECT_LT(compact.find("audioClips"), compact.find("imageStickers"));
    EXPECT_EQ(*decodeJson<JournalEntry>(compact, kContext), page);

    const std::string exported = *encodeJson(page, kExportFormat);
    EXPECT_TRUE(exported.starts_with("{\n  \"audioClips\": [],\n  \"body\": \"B\",\n"));
    EXPECT_NE(exported.find("\"date\": \"2001-01-01T00:00:12Z\""), std::string::npos);
    ReadContext iso = kContext;
    iso.dates = JsonDates::iso8601;
    EXPECT_EQ(decodeJson<JournalEntry>(exported, iso)->date, Date{12});
}

TEST(JsonWriter, DoublesReadBackToTheLastBit) {
    std::mt19937_64 random(7);
    std::vector<double> values = {0.0, -0.0, 1e15, 1e15 - 1, 1e300, 5e-324, 0.1, -811113600.123456};
    for (int i = 0; i < 20000; ++i) {
        const double value = std::bit_cast<double>(random());
        if (std::isfinite(value)) values.push_back(value);
    }
    const auto read = decodeJson<std::vector<double>>(*encodeJson(values), kContext);
    ASSERT_TRUE(read);
    for (std::size_t i = 0; i < values.size(); ++i) {
        ASSERT_EQ(std::bit_cast<std::uint64_t>((*read)[i]), std::bit_cast<std::uint64_t>(values[i])) << values[i];
    }
    EXPECT_EQ(*encodeJson(100000.0), "100000");
    EXPECT_FALSE(encodeJson(std::numeric_limits<double>::quiet_NaN()));
    EXPECT_FALSE(encodeJson(std::numeric_limits<double>::infinity()));
    EXPECT_EQ(encodeJson(Date{1e300}, kExportFormat).value_or("refused"), "1e+300") << "ISO 8601 has no room for it";
}

TEST(JsonWriter, StringsSurviveAndMalformedUtf8IsReplaced) {
    std::string awkward = "\"\\/\b\f\n\r\t\x01\x1F\x7F é 漢 🎓";
    awkward += '\0';
    EXPECT_EQ(*decodeJson<std::string>(*encodeJson(awkward), kContext), awkward);
    EXPECT_EQ(*encodeJson(std::string("a\xC3(")), "\"a\xEF\xBF\xBD(\"");
}

}  // namespace
}  // namespace tessary
