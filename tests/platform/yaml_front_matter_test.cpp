#include "platform/adapters/yaml/yaml_front_matter.h"

#include <gtest/gtest.h>

#include <string>

namespace tessary {
namespace {

using Texts = std::vector<std::string>;

std::string repeated(std::string_view text, std::size_t count) {
    std::string result;
    for (std::size_t i = 0; i < count; ++i) result += text;
    return result;
}

TEST(YamlFrontMatterTest, ReadsTextsAndLists) {
    const auto result = YamlFrontMatter().read(
        "Title: \"A: b\"\ntags: [x, 1, ~]\n"
        "Aliases:\n  - Käse\n  - {a: b}\nnone:\n");
    ASSERT_TRUE(result) << result.error();
    EXPECT_EQ(*result, (FrontMatter{{"title", {"A: b"}}, {"tags", {"x", "1"}}, {"aliases", {"Käse"}}, {"none", {}}}));
}

TEST(YamlFrontMatterTest, NestedMapsAreLeftOut) {
    const auto result = YamlFrontMatter().read("a:\n  b: c\nd: e\n[x]: y\nl: [[1], 2]\n");
    ASSERT_TRUE(result) << result.error();
    EXPECT_EQ(*result, (FrontMatter{{"d", {"e"}}, {"l", {"2"}}}));
}

TEST(YamlFrontMatterTest, AnEmptyTextHasNoKeys) {
    for (const std::string_view text : {"", "\n\n", "# note\n", "~"}) {
        const auto result = YamlFrontMatter().read(text);
        ASSERT_TRUE(result) << result.error();
        EXPECT_TRUE(result->empty());
    }
}

TEST(YamlFrontMatterTest, ErrorsTellTheLine) {
    const auto result = YamlFrontMatter().read("a: b\nc: [d\ne: \"f\n");
    ASSERT_FALSE(result);
    EXPECT_TRUE(result.error().starts_with("Line ")) << result.error();
    const auto alias = YamlFrontMatter().read("a: b\nc: *missing\n");
    ASSERT_FALSE(alias);
    EXPECT_TRUE(alias.error().starts_with("Line 2: ")) << alias.error();
    EXPECT_FALSE(YamlFrontMatter().read("- a\n- b\n"));
    EXPECT_FALSE(YamlFrontMatter().read("only text"));
}

TEST(YamlFrontMatterTest, LongInputIsRefused) {
    EXPECT_TRUE(YamlFrontMatter().read("a: " + std::string(60000, 'x')));
    EXPECT_FALSE(YamlFrontMatter().read("a: " + std::string(66000, 'x')));
}

TEST(YamlFrontMatterTest, BombsAreBounded) {
    for (const std::string_view piece :
         {"[", "{", "- ", "? ", "{a: ", "[{", "!", "&a ", "\"", "- - ", "a: \n", "\t", "\xFF"}) {
        const auto result = YamlFrontMatter().read(repeated(piece, 60000 / piece.size()));
        static_cast<void>(result);  // it must only come back
    }
    const std::string start = "a: &x " + std::string(30000, 'x') + "\nb:\n";
    EXPECT_FALSE(YamlFrontMatter().read(start + repeated(" - *x\n", 5000)));
    std::string doubling = "a0: &a0 [x, x]\n";
    for (int i = 1; i < 40; ++i) {
        const std::string before = "*a" + std::to_string(i - 1);
        const std::string name = "a" + std::to_string(i);
        doubling += name + ": &" + name + " [" + before + ", " + before + "]\n";
    }
    const auto result = YamlFrontMatter().read(doubling);
    ASSERT_TRUE(result) << result.error();
    EXPECT_EQ(result->at("a39"), Texts{});
    const auto circle = YamlFrontMatter().read("a: &a [*a]\n");
    if (circle) {
        EXPECT_EQ(circle->at("a"), Texts{});
    }
}

}  // namespace
}  // namespace tessary
