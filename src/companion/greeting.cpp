#include "companion/greeting.h"

#include <fmt/format.h>

namespace tessary {
namespace {

/// How many days ahead an exam is worth a word.
constexpr int kExamIsNear = 14;
/// A streak is told from here on: one day is none.
constexpr int kStreakIsTold = 2;

std::string headlineAt(int hour) {
    if (hour < 5 || hour >= 22) return "Good night";
    if (hour < 12) return "Good morning";
    return hour < 18 ? "Good afternoon" : "Good evening";
}

bool isNight(int hour) { return hour < 5 || hour >= 22; }

std::string cards(std::size_t count) { return count == 1 ? "1 card" : fmt::format("{} cards", count); }

std::string examLine(const GreetingMoment::ExamAhead& exam) {
    if (exam.days == 0) return fmt::format("“{}” is today. You have got this.", exam.title);
    if (exam.days == 1) return fmt::format("“{}” is tomorrow.", exam.title);
    return fmt::format("“{}” is in {} days.", exam.title, exam.days);
}

std::string workLine(const GreetingMoment& moment) {
    if (moment.due > 0) {
        const bool keeps = moment.streak >= kStreakIsTold && !moment.studiedToday;
        return keeps ? fmt::format("{} today, and your streak grows to {} days.", cards(moment.due), moment.streak + 1)
                     : fmt::format("{} {} for you.", cards(moment.due), moment.due == 1 ? "waits" : "wait");
    }
    if (!moment.hasCards)
        return "Write a page, make a few cards of it, and they come back just before you forget them.";
    if (!moment.studiedToday) return "Nothing is due. A good moment to write something new.";
    if (moment.streak >= kStreakIsTold) return fmt::format("All done, {} days in a row.", moment.streak);
    return "All done for today.";
}

PlimReaction reactionTo(const GreetingMoment& moment) {
    if (moment.exam && moment.exam->days <= 1) return PlimReaction::cur;
    if (moment.due > 0) return moment.studiedToday ? PlimReaction::study : PlimReaction::wave;
    if (isNight(moment.hour)) return PlimReaction::sleep;
    return moment.studiedToday ? PlimReaction::win : PlimReaction::wave;
}

}  // namespace

Greeting greet(const GreetingMoment& moment) {
    std::string line = workLine(moment);
    if (moment.exam && moment.exam->days <= kExamIsNear) line = examLine(*moment.exam) + " " + line;
    return {.headline = headlineAt(moment.hour), .line = std::move(line), .reaction = reactionTo(moment)};
}

}  // namespace tessary
