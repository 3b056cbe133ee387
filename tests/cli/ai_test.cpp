#include <cstdlib>

#include "child_program.h"
#include "program_fixture.h"
#include "study/flashcard_store.h"
#include "support/loopback_server.h"
#include "support/private_keyring.h"

namespace tessary {
namespace {

using Cards = std::vector<Flashcard>;

/// A library and a server that speaks like Ollama, and like OpenAI on its other path.
class AITest : public ProgramTest {
protected:
    AITest() {
        for (const char* const name :
             {"http_proxy", "https_proxy", "all_proxy", "HTTP_PROXY", "HTTPS_PROXY", "ALL_PROXY"}) {
            unsetenv(name);
        }
        server.setHandler([this](const LoopbackServer::Received& request) { return answer(request); });
        set("flashcards.provider", "ollama");
        set("flashcards.ollamaURL", server.address() + "/");
        set("flashcards.openaiEndpoint", server.address());
    }

    LoopbackServer::Answer answer(const LoopbackServer::Received& request) const {
        if (request.path == "/api/tags") return {.body = R"({"models":[{"name":"llama3.2:latest"}]})"};
        const bool grades = request.body.find("You grade a student") != std::string::npos;
        const bool summarises = request.body.find("Summarise the source text") != std::string::npos;
        JsonWriter content;
        content.string(grades ? grade : summarises ? summary : cards);
        const std::string message = R"({"message":{"content":)" + content.finish().value() + "}}";
        if (request.path == "/api/chat") return {.body = message};
        if (request.path == "/v1/chat/completions") return {.body = R"({"choices":[)" + message + "]}"};
        return {.status = 404, .body = "no such path"};
    }

    void set(const std::string& key, const std::string& value) {
        EXPECT_EQ(run({"settings", "set", key, value}).code, 0);
    }
    static std::string fixture(const std::string& name) { return std::string(TESSARY_FIXTURES) + "/pdf/" + name; }
    std::size_t chats() const {
        const auto requests = server.requests();
        return static_cast<std::size_t>(
            std::ranges::count_if(requests, [](const auto& request) { return request.method == "POST"; }));
    }

    static constexpr const char* kCards =
        R"({"cards":[{"kind":"basic","front":"Where is ATP made?","back":"In the inner membrane","page":1},)"
        R"({"kind":"cloze","front":"Page {{two}} ends the text.","back":"","page":2}]})";
    std::string cards = kCards;
    std::string summary =
        R"({"summary":"Cells respire.","key_points":["ATP"],"glossary":[{"word":"ATP","definition":"Fuel"}]})";
    std::string grade = R"({"verdict":"partial","score":0.5,"feedback":"Which membrane?","missing":["inner"]})";
    LoopbackServer server;
};

TEST_F(AITest, FromAPdfToAGradedAnswer) {
    const std::string page = addPage("Respiration");
    const auto attached = json<JournalEntry>({"pages", "attach", page, fixture("plain.pdf")});
    EXPECT_EQ(attached.pdfAttachments, std::vector<std::string>{"plain.pdf"});
    EXPECT_EQ(run({"pages", "attach", page, fixture("plain.pdf")}).code, 0);
    EXPECT_EQ(json<JournalEntry>({"pages", "show", page}).pdfAttachments.size(), 1U) << "the same file twice";
    const std::string text = run({"pages", "text", page, "--cleaned"}).out;
    EXPECT_TRUE(text.starts_with("[Page 1] Respiration of the cell ATP is made by oxidative phosphorylation in"))
        << text;

    const Result made = run({"generate", page});
    EXPECT_EQ(made.code, 0) << made.err;
    EXPECT_NE(made.out.find("\"Respiration\": 2 cards added, and a summary page"), std::string::npos) << made.out;
    EXPECT_NE(made.err.find("Writing cards — part 1 of 1\nSummarising…\n"), std::string::npos) << made.err;
    const Cards deck = json<Cards>({"cards", "list", "--page", page});
    ASSERT_EQ(deck.size(), 2U);
    EXPECT_EQ(deck[1].back, "two");
    EXPECT_EQ(deck[1].sourcePage, 2);
    const auto pages = json<std::vector<JournalEntry>>({"pages", "list"});
    ASSERT_EQ(pages.size(), 2U);
    EXPECT_EQ(std::ranges::count(pages, "Summary: Respiration", &JournalEntry::title), 1);

    const std::string card = deck[0].id.toString();
    EXPECT_EQ(run({"grade", card, "--answer", "in a membrane"}).out,
              "Partly correct (50 %): Which membrane?\nMissing: inner\n");
    EXPECT_EQ(json<AnswerGrade>({"grade", card, "--answer", " "}).verdict, AnswerGrade::Verdict::partial);
    EXPECT_NE(server.requests().back().body.find("Student's answer: (empty)"), std::string::npos);
}

TEST_F(AITest, OptionsReachThePrompt) {
    const std::string page = addPage("Cells", "Cells make ATP.");
    EXPECT_EQ(run({"generate", page, "--kinds", "cloze,basic", "--count", "7", "--difficulty", "advanced", "--focus",
                   "energy", "--language", "es", "--no-summary", "--source", "pages"})
                  .code,
              0);
    EXPECT_EQ(chats(), 1U) << "no summary";
    const std::string body = server.requests().back().body;
    for (const std::string_view part :
         {"Write every card in Spanish", "advanced: application", "up to 7 cards", "- basic: front", "- cloze: front",
          "The student asked to focus on: energy. Prioritise"}) {
        EXPECT_NE(body.find(part), std::string::npos) << part;
    }
    EXPECT_EQ(body.find("multiple choice: front"), std::string::npos);
    for (const std::vector<std::string>& wrong : {std::vector<std::string>{"--kinds", "nope"},
                                                  {"--count", "0"},
                                                  {"--count", "3", "--amount", "many"},
                                                  {"--difficulty", "hard"},
                                                  {"--source", "all"},
                                                  {"--provider", "nobody"}}) {
        std::vector<std::string> arguments{"generate", page};
        arguments.insert(arguments.end(), wrong.begin(), wrong.end());
        EXPECT_EQ(run(arguments).code, 2) << wrong.front();
    }
}

TEST_F(AITest, EachFailureIsOneSentence) {
    const std::string page = addPage("Cells", "Cells make ATP.");
    const std::string empty = addPage("Empty");
    const auto says = [&](const std::string& text) {
        const Result result = run({"generate", page, "--json"});
        EXPECT_EQ(result.code, 1) << text;
        EXPECT_EQ(result.out, "{\"error\":\"" + text + "\"}\n");
        EXPECT_TRUE(result.err.ends_with(text + "\n")) << result.err;
    };
    cards = R"({"cards":[]})";
    says("The AI couldn't write any cards.");
    cards = "Sorry, I can't.";
    says("The AI answered something unexpected: it didn't return valid JSON");
    set("flashcards.ollamaModel", "gemma");
    says("Run `ollama pull gemma` first");
    set("flashcards.ollamaURL", LoopbackServer::refusedAddress());
    says("Ollama isn't running at " + LoopbackServer::refusedAddress());
    EXPECT_EQ(run({"settings", "set", "flashcards.ollamaURL", "not an address"}).code, 1) << "refused at once";
    set("flashcards.ollamaURL", "http://[::");
    says("The Ollama address isn't valid");
    set("flashcards.provider", "apple");
    says("Apple Intelligence isn't available on this Mac");

    set("flashcards.provider", "ollama");
    set("flashcards.ollamaURL", server.address());
    set("flashcards.ollamaModel", "llama3.2");
    cards = kCards;
    const Result several = run({"generate", empty, page, "--no-summary"});
    EXPECT_EQ(several.code, 1) << "one of them failed";
    EXPECT_NE(several.err.find("\"Empty\": This page has no text yet."), std::string::npos) << several.err;
    EXPECT_EQ(json<Cards>({"cards", "list"}).size(), 2U) << "the other did not";
}

TEST_F(AITest, WhatCanAndCannotBeAttached) {
    const std::string page = addPage("P");
    write("notes.txt", "no PDF");
    for (const std::string& wrong : {(home / "notes.txt").string(), (home / "missing.pdf").string(), home.string()}) {
        const Result result = run({"pages", "attach", page, fixture("plain.pdf"), wrong});
        EXPECT_EQ(result.code, 1) << wrong;
        EXPECT_TRUE(json<JournalEntry>({"pages", "show", page}).pdfAttachments.empty()) << wrong;
    }
    const std::vector<std::pair<std::string, std::string>> unreadable{
        {"user_password.pdf", "It needs a password."},
        {"truncated.pdf", "It is damaged."},
        {"image_only.pdf", "Its pages are pictures without a text layer."}};
    for (const auto& [name, reason] : unreadable) {
        const Result result = run({"pages", "attach", page, fixture(name)});
        EXPECT_EQ(result.code, 0) << name;
        EXPECT_NE(result.err.find(name + ": Couldn't read any text in this PDF. " + reason), std::string::npos)
            << result.err;
    }
    const Result text = run({"pages", "text", page});
    EXPECT_EQ(text.code, 1);
    EXPECT_TRUE(text.err.ends_with("Couldn't read any text in this PDF.\n")) << text.err;
}

TEST_F(AITest, AKeyIsOnlyInTheKeychainAndOnItsWay) {
    PrivateKeyring keyring;
    keyring.startUnlocked();
    const std::string key = "sk-verysecret123";
    const std::string page = addPage("Cells", "Cells make ATP.");
    const Result without = run({"generate", page, "--provider", "openai"});
    EXPECT_TRUE(without.err.ends_with("Add your OpenAI API key in Settings → Flashcards\n")) << without.err;
    EXPECT_EQ(chats(), 0U);

    std::string everything;
    const auto keep = [&](const Result& result) {
        everything += result.out + result.err;
        return result;
    };
    EXPECT_EQ(keep(run({"keys", "set", "openai"}, "  " + key + "\r\nmore\n")).out.substr(0, 23),
              "Saved in your keychain.");
    for (const char* const bad : {"", " \n", "two words", "schl\xC3\xBCssel"}) {
        EXPECT_EQ(keep(run({"keys", "set", "openai"}, bad)).code, 1) << bad;
    }
    EXPECT_EQ(keep(run({"generate", page, "--provider", "openai"})).code, 0);
    EXPECT_EQ(server.requests().back().header("authorization"), "Bearer " + key);
    server.answerNext({.status = 400, .body = "{\"error\":{\"message\":\"bad key " + key + "\"}}"});
    server.answerNext({.status = 500, .body = "key was " + key});
    EXPECT_EQ(keep(run({"generate", page, "--provider", "openai"})).code, 1);
    server.answerNext({.status = 401, .body = key});
    const Result rejected = keep(run({"generate", page, "--provider", "openai"}));
    EXPECT_TRUE(rejected.err.ends_with("Your OpenAI API key was rejected\n")) << rejected.err;
    keep(run({"providers", "--json"}));
    for (const auto& [file, content] : libraryFiles()) everything += content;
    everything += content("settings.ini");
    EXPECT_EQ(everything.find(key), std::string::npos);
    for (const auto& request : server.requests()) EXPECT_EQ((request.path + request.body).find(key), std::string::npos);

    keyring.startLocked();
    EXPECT_EQ(run({"keys", "set", "openai"}, key).err, "Couldn't save the key to the keychain: it is locked\n");
    const Result locked = run({"generate", page, "--provider", "openai"});
    EXPECT_TRUE(locked.err.ends_with("Your keychain is locked. Unlock it and try again\n")) << locked.err;
    keyring.startUnlocked();
    EXPECT_EQ(run({"keys", "clear", "openai"}).out, "Removed from your keychain.\n");
    EXPECT_EQ(run({"keys", "clear", "openai"}).out, "There was no key in your keychain.\n");
    EXPECT_EQ(run({"keys", "set", "ollama"}, key).err, "Ollama needs no API key.\n");
    EXPECT_EQ(run({"keys", "set", "nobody"}, key).code, 2);
}

TEST_F(AITest, ProvidersSayWhetherTheyCanRun) {
    const SessionBusAddress nowhere("unix:path=/nowhere/bus");
    const std::string listed = run({"providers", "--json"}).out;
    for (
        const std::string_view part :
        {R"("provider":"apple","label":"Apple Intelligence","badge":"Free · On this Mac")",
         R"("isChosen":true,"canRun":true})",
         R"("problem":"There is no keychain on this computer to keep an API key in")",
         R"("problem":"Install the Codex app or CLI (it's free with ChatGPT) and sign in with your ChatGPT account.")"}) {
        EXPECT_NE(listed.find(part), std::string::npos) << part << '\n' << listed;
    }
    const Result table = run({"providers"});
    EXPECT_NE(table.out.find("*  ollama  Ollama"), std::string::npos) << table.out;
}

TEST_F(AITest, AReviewAsksTheAIAboutTypedAnswers) {
    set("flashcards.aiGrading", "on");
    const std::string page = addPage("P");
    EXPECT_EQ(run({"cards", "add", page, "--front", "Where is ATP made?", "--back", "In the inner membrane"}).code, 0);
    const Result judged = run({"review", "--type"}, "membrane\n\n");
    EXPECT_NE(judged.out.find("Checking your answer…"), std::string::npos) << judged.out;
    EXPECT_NE(judged.out.find("Which membrane?"), std::string::npos) << judged.out;
    const std::string prompt = server.requests().back().body;
    EXPECT_NE(prompt.find(R"(Expected answer: In the inner membrane\nStudent's answer: membrane)"), std::string::npos)
        << prompt;

    EXPECT_EQ(run({"cards", "reset", "--page", page}).code, 0);
    grade = "[]";
    const Result failed = run({"review", "--type"}, "membrane\n3");
    const auto sentence = failed.out.find("Couldn't check automatically. Compare with the answer:");
    ASSERT_NE(sentence, std::string::npos) << failed.out;
    EXPECT_NE(failed.out.find("In the inner membrane", sentence), std::string::npos);
    EXPECT_EQ(json<Cards>({"cards", "list"})[0].memory.reps, 1) << "rated by hand";
}

TEST_F(AITest, CtrlCKeepsTheCardsThatAreThere) {
    set("flashcards.ollamaModel", "llama3.2");
    std::string body;
    for (int i = 0; i < 3; ++i) body += std::string(7000, 'x') + "\n\n";
    const std::string page = addPage("Long", body);
    server.answerNext({.body = R"({"models":[{"name":"llama3.2"}]})"});
    LoopbackServer::Answer first = answer({.method = "POST", .path = "/api/chat", .headers = {}, .body = ""});
    server.answerNext(first);
    server.answerNext({.manner = LoopbackServer::Answer::Manner::hang});
    ChildProgram program(home, {"generate", page, "--count", "9"});
    server.waitForRequests(3);
    EXPECT_EQ(program.end(SIGINT), 1);
    EXPECT_EQ(json<Cards>({"cards", "list"}).size(), 2U);
}

}  // namespace
}  // namespace tessary
