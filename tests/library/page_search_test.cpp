#include "library/page_search.h"

#include <gtest/gtest.h>

#include <ranges>

#include "library/search_text.h"
#include "library/store_fixture.h"
#include "platform/adapters/icu/icu_text_services.h"

namespace tessary {
namespace {

using Where = PageHit::Where;

class PageSearchTest : public StoreTest {
protected:
    PageId add(const std::string& title, const std::string& body, std::vector<std::string> tags = {}) {
        clock.advance(60);
        JournalEntry made = page(title);
        made.body = body;
        made.tags = std::move(tags);
        return store->addPage(std::move(made)).value();
    }

    /// Title and place of each hit, in order: "t:Kettle g:Tea b:Cups".
    std::string found(std::string_view query, std::size_t limit = PageSearch::kUsualLimit) {
        std::string text;
        for (const PageHit& hit : search.find(store->entries().snapshot(), query, limit)) {
            const char place = hit.where == Where::title ? 't' : hit.where == Where::tag ? 'g' : 'b';
            text += (text.empty() ? "" : " ") + std::string(1, place) + ":" + store->entries().find(hit.page)->title;
        }
        return text;
    }

    std::string excerpt(std::string_view query) {
        const std::vector<PageHit> hits = search.find(store->entries().snapshot(), query);
        return hits.empty() ? "(nothing)" : hits.front().excerpt;
    }

    IcuTextServices textServices;
    std::unique_ptr<JournalStore> store = open();
    PageSearch search{textServices};
};

TEST_F(PageSearchTest, WordsAreFoundAnywhereInThePage) {
    add("Optics", "Light is a wave.\nA lens bends it.", {"physics", "year 2"});
    add("Prüfung", "Die Straße zum Café ist naß.");
    add("Notes", "About café culture and \"year 2\"");
    struct Case {
        std::string_view query;
        std::string_view hits;
    };
    for (const auto& [query, hits] : {
             Case{"lens", "b:Optics"},
             Case{"LIGHT optics", "b:Optics"},
             Case{"physics wave", "g:Optics"},
             Case{"physi", "b:Optics"},
             Case{"ptic", "t:Optics"},
             Case{"PRUFUNG", "t:Prüfung"},
             Case{"cafe", "b:Notes b:Prüfung"},
             Case{"strasse", "b:Prüfung"},
             Case{"café nass", "b:Prüfung"},
             Case{"lens nothing", ""},
             Case{"wave light", "b:Optics"},
             Case{"\"wave light\"", ""},
             Case{"\"a wave\" lens", "b:Optics"},
             Case{"\"bends it", "b:Optics"},
             Case{"lens\tit\nwave", "b:Optics"},
             Case{"\"Year 2\"", "g:Optics b:Notes"},
             Case{"", ""},
             Case{" \t\n", ""},
             Case{"\"\"", ""},
             Case{"\" \"", ""},
         }) {
        EXPECT_EQ(found(query), hits) << query;
    }
}

TEST_F(PageSearchTest, TitlesComeFirstThenTagsThenBodiesAndTheLastEditedFirst) {
    add("Tea, old", "");
    const PageId edited = add("Cups", "for tea");
    add("Shop", "", {"Tea"});
    add("Pots", "tea and more tea");
    add("Tea, new", "");
    EXPECT_EQ(found("tea"), "t:Tea, new t:Tea, old g:Shop b:Pots b:Cups");
    EXPECT_EQ(found("tea", 3), "t:Tea, new t:Tea, old g:Shop");
    clock.advance(60);
    ASSERT_TRUE(store->updatePage(*store->entries().find(edited)));
    EXPECT_EQ(found("tea"), "t:Tea, new t:Tea, old g:Shop b:Cups b:Pots");
}

TEST_F(PageSearchTest, FollowsEveryChangeOfThePages) {
    const PageId id = add("Heat", "entropy");
    EXPECT_EQ(found("entropy"), "b:Heat");
    JournalEntry changed = *store->entries().find(id);
    changed.body = "enthalpy";
    changed.title = "Warmth";
    ASSERT_TRUE(store->updatePage(changed));
    EXPECT_EQ(found("entropy"), "");
    EXPECT_EQ(found("enthalpy"), "b:Warmth");
    add("Cold", "enthalpy too");
    EXPECT_EQ(found("enthalpy"), "b:Cold b:Warmth");
    ASSERT_TRUE(store->deletePage(id));
    EXPECT_EQ(found("enthalpy"), "b:Cold");
    ASSERT_TRUE(store->restore(id));
    EXPECT_EQ(found("enthalpy"), "b:Cold b:Warmth");
}

TEST_F(PageSearchTest, TheExcerptIsTheLineAroundTheFirstMatch) {
    add("Short", "First line\r\n\tsecond\tline, with Ümläute\nthird");
    EXPECT_EQ(excerpt("umlaut third"), "second line, with Ümläute");
    EXPECT_EQ(excerpt("third"), "third");
    EXPECT_EQ(excerpt("short"), "");
    EXPECT_EQ(excerpt("short line"), "First line");
}

TEST_F(PageSearchTest, LongLinesAreCutAtUserPerceivedCharacters) {
    const std::string_view family = "👩‍👩‍👧";
    std::string before;
    std::string after;
    for (int i = 0; i < 300; ++i) before += "ß" + std::string(family);
    for (int i = 0; i < 300; ++i) after += "e\u0301";
    add("Long", before + "NEEDLE" + after);
    std::string expected = "…";
    for (int i = 0; i < 20; ++i) expected += "ß" + std::string(family);
    expected += "NEEDLE";
    for (int i = 0; i < 74; ++i) expected += "e\u0301";
    EXPECT_EQ(excerpt("needle"), expected + "…");

    std::string words;
    for (int i = 0; i < 100; ++i) words += "word" + std::to_string(i) + " ";
    add("Words", words);
    const std::string cut = excerpt("word50");
    EXPECT_TRUE(cut.starts_with("…word45 ")) << cut;
    EXPECT_NE(cut.find(" word50 "), std::string::npos) << cut;
    EXPECT_LE(textServices.characterCount(cut), 122U);
}

TEST_F(PageSearchTest, WhatIsTypedOnLooksAtWhatWasFoundBefore) {
    add("Tea", "green leaves");
    add("Team", "green shirts");
    const PageId late = add("Late", "");
    EXPECT_EQ(found("te"), "t:Late t:Team t:Tea");
    EXPECT_EQ(found("tea"), "t:Team t:Tea");
    EXPECT_EQ(found("tea lea"), "b:Tea");
    EXPECT_EQ(found("lea tea gree"), "b:Tea");
    EXPECT_EQ(found("tea"), "t:Team t:Tea") << "a letter is taken back";
    EXPECT_EQ(found("te"), "t:Late t:Team t:Tea");
    EXPECT_EQ(found("teams"), "");
    EXPECT_EQ(found("teams green"), "");
    EXPECT_EQ(found("tea"), "t:Team t:Tea");
    JournalEntry changed = *store->entries().find(late);
    changed.body = "teatime";
    ASSERT_TRUE(store->updatePage(changed));
    EXPECT_EQ(found("teat"), "b:Late") << "it was not among those before";
    ASSERT_TRUE(store->deletePage(late));
    EXPECT_EQ(found("teati"), "");
}

TEST_F(PageSearchTest, AStoppedSearchFindsNothingAndTheNextOneAll) {
    add("Heat", "entropy");
    std::stop_source stop;
    stop.request_stop();
    EXPECT_TRUE(search.find(store->entries().snapshot(), "heat", 10, stop.get_token()).empty());
    EXPECT_EQ(found("heat"), "t:Heat");
}

TEST_F(PageSearchTest, WhatWasFoundIsMarkedInTheOriginalText) {
    struct Case {
        std::string_view text;
        std::string_view query;
        std::string_view marked;
    };
    for (const auto& [text, query, marked] : {
             Case{"Light reactions", "REACT light", "[Light] [react]ions"},
             Case{"Die Straße zum Café", "cafe strasse", "Die [Straße] zum [Café]"},
             Case{"Die Straße", "stras", "Die [Straß]e"},
             Case{"cafe\u0301 cafe\u0301s", "cafe", "[cafe\u0301] [cafe\u0301]s"},
             Case{"tattatt", "tatt att", "[tattatt]"},
             Case{"a wave is \"a wave\"", "\"a wave\"", "[a wave] is \"[a wave]\""},
             Case{"👩‍👩‍👧 family", "family", "👩‍👩‍👧 [family]"},
             Case{"nothing of it", "else", "nothing of it"},
             Case{"anything", "", "anything"},
             Case{"", "word", ""},
         }) {
        std::string shown(text);
        const std::vector<TextSpan> marks = searchMarks(text, searchWords(query, textServices), textServices);
        for (const TextSpan& span : marks | std::views::reverse) {
            shown.insert(span.start + span.length, "]");
            shown.insert(span.start, "[");
        }
        EXPECT_EQ(shown, marked) << query;
    }
}

}  // namespace
}  // namespace tessary
