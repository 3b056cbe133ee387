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
        CoverMaterial material = CoverMaterial::classic;
        CoverPattern pattern = CoverPattern::none;
        CoverLabelStyle labelStyle = CoverLabelStyle::glass;
        std::vector<std::string> titles;  ///< of its pages
        std::string question;             ///< with its answer the first card; the others are made up
        std::string answer;
        int cards = 0;
        std::vector<PageId> pages = {};
        int made = 0;
    };

    void addDecks() {
        for (Subject& subject : subjects_) {
            Notebook notebook;
            notebook.name = subject.name;
            notebook.colorHex = subject.colorHex;
            notebook.material = subject.material;
            notebook.pattern = subject.pattern;
            notebook.labelStyle = subject.labelStyle;
            notebook.hasRibbon = subject.cards > 200;
            notebook.hasBand = subject.cards < 100;
            const NotebookId id = workspace_.library().addNotebook(notebook);
            for (const std::string& title : subject.titles) {
                JournalEntry page;
                page.title = title;
                page.notebookID = id;
                subject.pages.push_back(*workspace_.library().addPage(page));
            }
        }
        Exam exam;
        exam.notebookID = workspace_.library().notebooks()[workspace_.library().notebooks().size() - 6].id;
        exam.title = "Cell Biology, paper 2";
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
        const std::string& title = subject.titles[static_cast<std::size_t>(subject.made) % subject.titles.size()];
        content.front = subject.made == 1 ? subject.question : title + ": what is point " + number + "?";
        content.back = subject.made == 1 ? subject.answer : "What the page says at point " + number + ".";
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
    std::vector<Subject> subjects_{
        {.name = "Cell Biology",
         .colorHex = "4F7F57",
         .material = CoverMaterial::cloth,
         .titles = {"Photosynthesis: light reactions", "The Calvin cycle", "Cell membranes", "Mitosis", "Meiosis",
                    "Cell respiration"},
         .question = "Where do the light reactions take place?",
         .answer = "In the thylakoid membrane.",
         .cards = 214},
        {.name = "Modern History",
         .colorHex = "7A3B2E",
         .material = CoverMaterial::leather,
         .labelStyle = CoverLabelStyle::embossed,
         .titles = {"The Estates-General", "Congress of Vienna, 1815", "The Napoleonic Code", "1848",
                    "Unification of Italy", "The road to 1914"},
         .question = "Who presided over the Congress of Vienna?",
         .answer = "Prince Metternich.",
         .cards = 188},
        {.name = "Calculus II",
         .colorHex = "FFDB00",
         .pattern = CoverPattern::grid,
         .labelStyle = CoverLabelStyle::sticker,
         .titles = {"Integration by parts", "Partial fractions", "Improper integrals", "Series and convergence",
                    "Taylor polynomials", "Polar coordinates"},
         .question = "Integration by parts: what is the formula?",
         .answer = "∫ u dv = uv − ∫ v du",
         .cards = 162},
        {.name = "Deutsch B1",
         .colorHex = "34508F",
         .material = CoverMaterial::glossy,
         .pattern = CoverPattern::stripes,
         .titles = {"Wechselpräpositionen mit Akkusativ", "Konjunktiv II", "Reisen und Verkehr", "Nebensätze mit weil",
                    "Passiv", "Adjektivendungen"},
         .question = "Wann stehen Wechselpräpositionen mit dem Akkusativ?",
         .answer = "Bei einer Bewegung zu einem Ziel hin.",
         .cards = 250},
        {.name = "Español A2",
         .colorHex = "DD7350",
         .material = CoverMaterial::kraft,
         .pattern = CoverPattern::dots,
         .titles = {"El subjuntivo después de «ojalá»", "Pretérito indefinido", "Ser y estar", "Por y para", "La casa",
                    "Los viajes"},
         .question = "Which mood follows «ojalá»?",
         .answer = "The subjunctive.",
         .cards = 97},
        {.name = "Organic Chemistry",
         .colorHex = "2F7F83",
         .pattern = CoverPattern::waves,
         .titles = {"Alkanes", "Nucleophilic substitution", "Elimination", "Aromatic rings", "Carbonyls", "Amines"},
         .question = "What does SN2 do to the configuration?",
         .answer = "It inverts it.",
         .cards = 90}};
};

}  // namespace tessary
