#include "child_program.h"
#include "program_fixture.h"
#include "study/flashcard_store.h"
#include "study/review_log.h"

namespace tessary {
namespace {

using Cards = std::vector<Flashcard>;

class ReviewTest : public ProgramTest {
protected:
    void addCards(int count) {
        const std::string page = addPage("P");
        for (int i = 0; i < count; ++i) {
            const std::string number = std::to_string(i);
            EXPECT_EQ(run({"cards", "add", page, "--front", "Q" + number, "--back", "A" + number}).code, 0);
        }
    }
    /// The ratings in the log, without those taken back.
    int ratingsLogged() const {
        int ratings = 0;
        std::istringstream lines(content("Notara/Reviews/2026-11.jsonl"));
        for (std::string line; std::getline(lines, line);) {
            const auto entry = decodeJson<ReviewLogEntry>(line, ReadContext{});
            EXPECT_TRUE(entry) << line;
            if (entry) ratings += entry->kind == ReviewLogEntry::Kind::rating ? 1 : -1;
        }
        return ratings;
    }
};

TEST_F(ReviewTest, FromNotesToAFinishedReview) {
    write("Biology/Cells.md", "# The cell\n\nWhat makes energy? :: Mitochondria\n");
    write("Biology/Genes/DNA.md", "---\ntags: [genes]\n---\n# DNA\n\nThe ==nucleus== holds DNA.\n");
    EXPECT_EQ(run({"pages", "import", (home / "Biology").string()}).code, 0);
    EXPECT_EQ(json<std::vector<JournalEntry>>({"pages", "list"}).size(), 3U);
    EXPECT_EQ(run({"cards", "from-notes", "--all"}).code, 0);
    const Result first = run({"review"}, " 3");
    EXPECT_EQ(first.code, 0) << first.err;
    EXPECT_NE(first.out.find("Biology › "), std::string::npos) << first.out;
    EXPECT_NE(first.out.find("1 card in"), std::string::npos) << first.out;

    const Result second = run({"review"}, " 4 4");
    EXPECT_NE(second.out.find("2 cards in"), std::string::npos) << second.out;
    EXPECT_NE(second.out.find("100% right"), std::string::npos) << second.out;
    for (const Flashcard& card : json<Cards>({"cards", "list"}))
        EXPECT_EQ(card.memory.phase, CardMemory::Phase::review);
    EXPECT_NE(run({"review"}, "").out.find("Nothing is due now."), std::string::npos);
    EXPECT_EQ(ratingsLogged(), 3);
}

TEST_F(ReviewTest, AnEmptyLibraryOffersTheWelcomeNotebook) {
    EXPECT_NE(run({"review"}, "n").out.find("pages import"), std::string::npos);
    EXPECT_TRUE(json<Cards>({"cards", "list"}).empty());
    EXPECT_EQ(run({"review"}, "").code, 0) << "no input is no consent";
    EXPECT_TRUE(json<Cards>({"cards", "list"}).empty());
    const Result welcome = run({"review"}, "y q");
    EXPECT_EQ(welcome.code, 0);
    EXPECT_EQ(json<Cards>({"cards", "list"}).size(), 12U);
    EXPECT_EQ(json<std::vector<JournalEntry>>({"pages", "list"}).size(), 3U);
    EXPECT_EQ(run({"review"}, "q").out.find("[Y/n]"), std::string::npos);
}

TEST_F(ReviewTest, UndoGoesBackToTheFirstCard) {
    addCards(3);
    const std::string cardsBefore = run({"cards", "list", "--json"}).out;
    const Result result = run({"review"}, " 1 3 4uuuuq");
    EXPECT_EQ(result.code, 0);
    EXPECT_NE(result.out.find("There is nothing to take back."), std::string::npos);
    EXPECT_EQ(run({"cards", "list", "--json"}).out, cardsBefore);
    EXPECT_EQ(ratingsLogged(), 0);
    EXPECT_NE(content("Notara/flashcards.json").find("\"introduced\":{}"), std::string::npos);
}

TEST_F(ReviewTest, TypedAnswersAreComparedAndSuggestARating) {
    const std::string page = addPage("P");
    ASSERT_EQ(run({"cards", "add", page, "--front", "Capital of France", "--back", "Paris"}).code, 0);
    ASSERT_EQ(run({"cards", "add", page, "--kind", "cloze", "--front", "A {{cell}} has a {{nucleus}}."}).code, 0);
    ASSERT_EQ(run({"settings", "set", "flashcards.shuffle", "off"}).code, 0);
    const Result result = run({"review", "--type"}, " pärIs.\n\nCell\nnucleus\n4");
    EXPECT_NE(result.out.find("Matches the expected answer."), std::string::npos) << result.out;
    EXPECT_NE(result.out.find("Every blank is right."), std::string::npos) << result.out;
    const Cards cards = json<Cards>({"cards", "list"});
    EXPECT_EQ(cards.at(0).memory.step, 1) << "Enter took Good";
    EXPECT_EQ(cards.at(1).memory.phase, CardMemory::Phase::review);
}

TEST_F(ReviewTest, CardsAreSuspendedFlaggedAndEditedOnTheWay) {
    addCards(3);
    ASSERT_EQ(run({"settings", "set", "flashcards.shuffle", "off"}).code, 0);
    const Result result = run({"review"}, "sfe\nNew answer\n 4q");
    EXPECT_NE(result.out.find("New answer"), std::string::npos) << result.out;
    const Cards cards = json<Cards>({"cards", "list"});
    EXPECT_TRUE(cards.at(0).suspended);
    EXPECT_TRUE(cards.at(1).flagged);
    EXPECT_EQ(cards.at(1).front, "Q1");
    EXPECT_EQ(cards.at(1).back, "New answer");
    EXPECT_EQ(cards.at(1).memory.reps, 1);
    EXPECT_EQ(cards.at(2).memory.reps, 0);
}

TEST_F(ReviewTest, ALeechIsTold) {
    addCards(1);
    ASSERT_EQ(run({"settings", "set", "flashcards.leechLapses", "1"}).code, 0);
    ASSERT_EQ(run({"review"}, " 4").code, 0);
    now = "2027-02-21T09:30:00Z";
    EXPECT_NE(run({"review"}, " 1").out.find("Forgotten too often, so it's suspended"), std::string::npos);
    EXPECT_TRUE(json<Cards>({"cards", "list"}).at(0).suspended);
}

TEST_F(ReviewTest, JsonGivesTheSummaryAlone) {
    addCards(2);
    const Result result = run({"review", "--json"}, " 4 1q");
    EXPECT_TRUE(result.out.starts_with("{\"cards\":2,\"ratings\":2,\"remembered\":1,\"seconds\":")) << result.out;
    EXPECT_NE(result.err.find("Q"), std::string::npos);
}

TEST_F(ReviewTest, ASignalEndsTheReviewWithEverythingSaved) {
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        addCards(2);
        const int before = ratingsLogged();
        ChildProgram program(home, {"--now", now, "review"});
        ASSERT_TRUE(program.waitFor("Space shows the answer"));
        program.type(" 4");
        ASSERT_TRUE(program.waitFor("1 Again"));
        // The rating is in when the next question stands; its key is read after the rating.
        program.type("?");
        ASSERT_TRUE(program.waitFor("take the last rating back\n"));
        EXPECT_EQ(program.end(signal), 0);
        EXPECT_EQ(ratingsLogged(), before + 1);
    }
}

}  // namespace
}  // namespace tessary
