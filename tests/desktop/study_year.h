#pragma once

#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "app/workspace.h"
#include "study/scheduler.h"

namespace tessary {

/// A year of someone's learning for the pictures: notebooks with cards that come in over the year and are reviewed on
/// most days, each rating drawn by the card's own chance of recall. All of it goes through the stores, at made-up
/// times.
class StudyYear {
public:
    StudyYear(Workspace& workspace, Date now) : workspace_(workspace), now_(now) {}

    void live() {
        addDecks();
        constexpr int kDays = 350;
        for (int day = -kDays; day <= 0; ++day) liveThrough(day);
    }

private:
    struct Subject {
        std::string name;
        std::string colorHex;
        int cards = 0;
        std::vector<PageId> pages;
        int made = 0;
    };

    void addDecks() {
        for (Subject& subject : subjects_) {
            Notebook notebook;
            notebook.name = subject.name;
            notebook.colorHex = subject.colorHex;
            const NotebookId id = workspace_.library().addNotebook(notebook);
            for (int i = 1; i <= 6; ++i) {
                JournalEntry page;
                page.title = subject.name + ", chapter " + std::to_string(i);
                page.notebookID = id;
                subject.pages.push_back(*workspace_.library().addPage(page));
            }
        }
        Exam exam;
        exam.notebookID = workspace_.library().notebooks()[workspace_.library().notebooks().size() - 6].id;
        exam.title = "Midterm";
        exam.date = now_ + 9 * kSecondsPerDay;
        (void)workspace_.library().addExam(exam);
    }

    void liveThrough(int day) {
        const Date morning = now_ + day * kSecondsPerDay - 2 * 3600;
        for (Subject& subject : subjects_) addCards(subject, morning);
        const bool isHoliday = day > -140 && day < -112;
        std::bernoulli_distribution learns(isHoliday ? 0.1 : 0.8);
        if (day == 0 || !learns(random_)) return;
        std::uniform_int_distribution<int> energy(12, 60);
        review(morning, energy(random_));
    }

    void addCards(Subject& subject, Date morning) {
        std::bernoulli_distribution writes(subject.cards / 350.0 / 4);
        if (!writes(random_)) return;
        std::vector<CardContent> contents;
        for (int i = 0; i < 4; ++i) contents.push_back(card(subject));
        workspace_.cards().addCards(subject.pages[random_() % subject.pages.size()], std::move(contents), morning);
    }

    CardContent card(Subject& subject) {
        const std::string number = std::to_string(++subject.made);
        CardContent content;
        content.front = "Question " + number + " about " + subject.name + "?";
        content.back = "What chapter says in sentence " + number + ".";
        if (subject.made % 5 == 0) {
            content.kind = FlashcardKind::cloze;
            content.front = "In " + subject.name + ", {{term " + number + "}} comes first.";
            content.back = "term " + number;
        } else if (subject.made % 7 == 0) {
            content.kind = FlashcardKind::multipleChoice;
            content.options = {"The first", "The second", "The third"};
            content.correctIndex = 1;
            content.back = "The second";
        }
        return content;
    }

    void review(Date morning, int energy) {
        FlashcardStore& cards = workspace_.cards();
        const RecordList<Flashcard>::Snapshot all = cards.cards().snapshot();
        Date at = morning;
        for (const auto& card : all) {
            if (energy == 0) return;
            if (card->memory.due > at || card->suspended) continue;
            --energy;
            at = at + 12;
            const bool isNew = card->memory.phase == CardMemory::Phase::fresh;
            std::bernoulli_distribution remembers(isNew ? 0.8 : retrievability(card->memory, at));
            cards.rate(card->id,
                       remembers(random_) ? (random_() % 6 == 0 ? Rating::easy : Rating::good) : Rating::again, at, 8);
            if (random_() % 60 == 0) cards.setFlagged(card->id, true);
        }
    }

    Workspace& workspace_;
    Date now_;
    std::mt19937 random_{20261121};
    std::vector<Subject> subjects_{{"Cell Biology", "4F7F57", 214, {}, 0}, {"Modern History", "7A3B2E", 188, {}, 0},
                                   {"Calculus II", "FFDB00", 162, {}, 0},  {"Deutsch B1", "34508F", 250, {}, 0},
                                   {"Español A2", "DD7350", 97, {}, 0},    {"Organic Chemistry", "2F7F83", 90, {}, 0}};
};

}  // namespace tessary
