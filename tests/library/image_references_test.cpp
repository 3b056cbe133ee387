#include "library/image_references.h"

#include <gtest/gtest.h>

namespace tessary {
namespace {

using Texts = std::vector<std::string>;

Texts targetsIn(std::string_view text) {
    Texts targets;
    for (const ImageReference& image : imageReferences(text)) targets.push_back(image.target);
    return targets;
}

TEST(ImageReferencesTest, EveryFormIsFound) {
    const std::pair<std::string_view, Texts> cases[] = {
        {"![a](b.png) and ![](c.png \"Title (1)\")", {"b.png", "c.png"}},
        {"![a [b] c](<my pic.png> 'x')![d](e%20f%C3%A4.png)", {"my pic.png", "e fä.png"}},
        {"![a](b\\(1\\).png) ![c](d(2).png)", {"b(1).png", "d(2).png"}},
        {"[![alt](inner.png)](https://example.org)", {"inner.png"}},
        {"![[a b.png]] ![[c.png|300]] ![[d.png#x|1]]", {"a b.png", "c.png", "d.png"}},
        {"<img src=\"a b.png\"> <IMG alt='>' src = 'b%20c.png' /> <img src=c.png>", {"a b.png", "b c.png", "c.png"}},
        {"![x][Fig  1] ![fig 1][] ![FIG 1]\n\n[fig 1]: <the fig.png> \"t\"\n", {"the fig.png"}},
        {"![a](x%00.png) ![b](y%FF.png) ![c](50%.png)", {"x%00.png", "y%FF.png", "50%.png"}},
    };
    for (const auto& [text, targets] : cases) EXPECT_EQ(targetsIn(text), targets) << text;
}

TEST(ImageReferencesTest, WhatShowsNoImageIsPassedOver) {
    const std::string_view cases[] = {
        "[a](b.png) \\![a](b.png) ! [a](b.png) ![a] (b.png) ![a](b c.png) ![a](b.png",
        "`![a](b.png)` and ``x ` ![a](b.png)``",
        "a `code\nspan ![a](b.png)` b",
        "```\n![a](b.png)\n```\n~~~~ text\n![[a.png]]\n~~~\n<img src=a.png>\n~~~~",
        "![a\n\nb](c.png) ![[a\nb.png]] [[a.png]]",
        "![a][none] ![^1]\n\n[^1]: b.png\n",
        "<imgs src=a.png> <img alt=\"src=a.png\"> <img src=\"a.png\"",
    };
    for (const std::string_view text : cases) EXPECT_EQ(targetsIn(text), Texts{}) << text;
}

TEST(ImageReferencesTest, CodeEndsWhereItsBlockDoes) {
    EXPECT_EQ(targetsIn("- a ` b\n- ![](x.png)\n- c ` d"), Texts{"x.png"});
    EXPECT_EQ(targetsIn("a ` b\n\n![](x.png) c ` d"), Texts{"x.png"});
    EXPECT_EQ(targetsIn("> ```\n> code\n\n![](x.png)"), Texts{"x.png"});
    EXPECT_EQ(targetsIn("- ```\n  code\n  ```\n![](x.png)"), Texts{"x.png"});
    EXPECT_EQ(targetsIn("\\`![](x.png)` and `` ![](y.png)"), (Texts{"x.png", "y.png"}));
}

TEST(ImageReferencesTest, NewTargetsReadAsWritten) {
    const std::string text =
        "![a](old.png \"t\") ![b](<o ld.png>) ![[old.png|30]] <img src='old.png' alt=x> ![c][r] "
        "![](keep.png)\n\n[r]: old.png 'z'\n";
    for (const std::string name : {"new.png", "a (1) b.png", "50%25 <\"&'>.png"}) {
        const std::vector<ImageReference> images = imageReferences(text);
        ASSERT_EQ(images.size(), 6U);
        std::vector<std::optional<std::string>> names(6, name);
        names[4].reset();
        const std::string changed = withImageTargets(text, images, names);
        EXPECT_EQ(targetsIn(changed), (Texts{name, name, name, name, "keep.png", name})) << changed;
    }
    const std::vector<ImageReference> images = imageReferences(text);
    EXPECT_EQ(withImageTargets(text, images, {"n.png", "n 2.png", "n.png", "n.png", {}, "n.png"}),
              "![a](n.png \"t\") ![b](<n 2.png>) ![[n.png|30]] <img src=\"n.png\" alt=x> ![c][r] "
              "![](keep.png)\n\n[r]: n.png 'z'\n");
}

TEST(ImageReferencesTest, HostileTextsAreReadInReasonableTime) {
    constexpr std::size_t kBytes = 1'000'000;
    for (const std::string_view piece :
         {"![", "[",        "`",    "![[", "![[a]] ", "![](", "![](<", "![](a \"", "![][",     "<img ", "<img a='",
          "<",  "![a](b) ", "[[a|", "\\",  "~~~\n",   "> ",   "- ",    "`` ` ",    "[a]: b\n", "![a]",  "\n"}) {
        std::string text = "# x";
        while (text.size() < kBytes) text += piece;
        for (std::size_t i = 0; i < kBytes / 8; ++i) text += "])";
        text += "\n\n[a]: b\n";
        for (const ImageReference& image : imageReferences(text)) ASSERT_LE(image.end, text.size());
    }
    std::string ticks;
    for (std::size_t length = 1; ticks.size() < kBytes; ++length) ticks += std::string(length, '`') + ' ';
    EXPECT_EQ(targetsIn(ticks + "![](a.png)"), Texts{"a.png"});
}

}  // namespace
}  // namespace tessary
