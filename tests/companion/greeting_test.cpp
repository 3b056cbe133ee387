#include "companion/greeting.h"

#include <gtest/gtest.h>

namespace tessary {
namespace {

TEST(Greeting, GoesByTheClock) {
    const auto at = [](int hour) { return greet({.hour = hour, .exam = {}}).headline; };
    EXPECT_EQ(at(4), "Good night");
    EXPECT_EQ(at(5), "Good morning");
    EXPECT_EQ(at(12), "Good afternoon");
    EXPECT_EQ(at(18), "Good evening");
    EXPECT_EQ(at(22), "Good night");
}

TEST(Greeting, SpeaksOfExamThenWorkThenStreak) {
    const auto expect = [](const GreetingMoment& moment, std::string_view line, PlimReaction reaction) {
        const Greeting greeting = greet(moment);
        EXPECT_EQ(greeting.line, line);
        EXPECT_EQ(greeting.reaction, reaction) << line;
    };
    using Exam = GreetingMoment::ExamAhead;
    expect({.hour = 9, .exam = {}},
           "Write a page, make a few cards of it, and they come back just before you forget them.", PlimReaction::wave);
    expect({.hour = 9, .due = 1, .hasCards = true, .exam = {}}, "1 card waits for you.", PlimReaction::wave);
    expect({.hour = 9, .due = 38, .hasCards = true, .streak = 12, .exam = {}},
           "38 cards today, and your streak grows to 13 days.", PlimReaction::wave);
    expect({.hour = 9, .due = 5, .hasCards = true, .streak = 12, .studiedToday = true, .exam = {}},
           "5 cards wait for you.", PlimReaction::study);
    expect({.hour = 9, .hasCards = true, .streak = 3, .studiedToday = true, .exam = {}}, "All done, 3 days in a row.",
           PlimReaction::win);
    expect({.hour = 23, .hasCards = true, .exam = {}}, "Nothing is due. A good moment to write something new.",
           PlimReaction::sleep);
    expect({.hour = 9, .due = 2, .hasCards = true, .exam = Exam{"Cells", 0}},
           "“Cells” is today. You have got this. 2 cards wait for you.", PlimReaction::cur);
    expect({.hour = 9, .hasCards = true, .studiedToday = true, .exam = Exam{"Cells", 14}},
           "“Cells” is in 14 days. All done for today.", PlimReaction::win);
    expect({.hour = 9, .hasCards = true, .studiedToday = true, .exam = Exam{"Cells", 15}}, "All done for today.",
           PlimReaction::win);
}

}  // namespace
}  // namespace tessary
