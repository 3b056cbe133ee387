#include <gtest/gtest.h>

#include <algorithm>
#include <thread>
#include <vector>

#include "ai/card_job.h"
#include "ai/providers_fixture.h"
#include "base/text.h"
#include "support/loopback_server.h"

namespace tessary {
namespace {

using Answer = LoopbackServer::Answer;
using Manner = LoopbackServer::Answer::Manner;

constexpr std::string_view kUnexpected = "The AI answered something unexpected: ";
constexpr std::string_view kNoJson = "The AI answered something unexpected: it didn't return valid JSON";

class HttpProviderRig : public ::testing::Test {
protected:
    explicit HttpProviderRig(AIProviderKind kind) : dialect_(*std::ranges::find(dialects(), kind, &Dialect::kind)) {
        settings_ = {.provider = kind,
                     .geminiModel = "gemini-test",
                     .geminiEndpoint = server_.address(),
                     .openaiModel = "gpt-test",
                     .openaiEndpoint = server_.address() + "/",
                     .claudeModel = "claude-test",
                     .claudeEndpoint = " " + server_.address(),
                     .ollamaURL = server_.address() + "//",
                     .ollamaModel = "llama-test",
                     .codexModel = "",
                     .language = ""};
        if (needsKey(kind)) rig_.storeKey(kind, kKey);
    }
    /// The provider's reply with this answer in it, given when it is asked next.
    void answerNext(std::string_view json) {
        server_.answerNext({.body = replacedAll(replacedAll(dialect_.reply, "@text", jsonText(json)), "@json", json)});
    }
    AIResult<AnswerGrade> grade(std::stop_token stop = {}) {
        return rig_.make(settings_)->grade(smallRequest(), std::move(stop));
    }
    AIError errorAfter(Answer answer) {
        server_.answerNext(std::move(answer));
        return errorIn(grade());
    }

    LoopbackServer server_;
    ProviderRig rig_;
    const Dialect& dialect_;
    AISettings settings_;
};

class HttpProviderTest : public HttpProviderRig, public ::testing::WithParamInterface<Dialect> {
protected:
    HttpProviderTest() : HttpProviderRig(GetParam().kind) {}
};

INSTANTIATE_TEST_SUITE_P(All, HttpProviderTest, ::testing::ValuesIn(dialects()),
                         [](const auto& test) { return std::string(enumName(test.param.kind)); });

TEST_P(HttpProviderTest, SendsOneJobByteForByte) {
    answerNext(kGradeReply);
    const AIResult<AnswerGrade> grade = this->grade();
    ASSERT_TRUE(grade) << grade.error().text();
    EXPECT_EQ(*grade, gradeOfReply());

    const JSONJob job = gradeJob(smallRequest());
    const std::string user = "Question: 2 + \"2\"?\nExpected answer: 4\nStudent's answer: (empty)";
    const std::string guided =
        user + "\n\nReply with only a JSON object shaped exactly like this:\n" + std::string(job.shape);
    std::string body = replacedAll(dialect_.body, "@system", jsonText(job.system));
    body = replacedAll(replacedAll(body, "@user", jsonText(user)), "@guided", jsonText(guided));
    ASSERT_EQ(server_.requests().size(), 1U);
    const LoopbackServer::Received sent = server_.requests().front();
    EXPECT_EQ(sent.method, "POST");
    EXPECT_EQ(sent.path, dialect_.path);
    EXPECT_EQ(sent.header("content-type"), "application/json");
    for (const auto& [name, value] : dialect_.headers) EXPECT_EQ(sent.header(name), value);
    EXPECT_EQ(sent.body, replacedAll(body, "@schema", job.schema));
    EXPECT_FALSE(sent.body.contains(kKey));
}

TEST_P(HttpProviderTest, WritesCardsAndSummaries) {
    const std::unique_ptr<AIProvider> provider = rig_.make(settings_);
    answerNext(R"({"cards":[{"kind":"cloze","front":"A {{leaf}}."},{"front":"f","back":"b"}]})");
    const auto cards = provider->generateCards(
        "A leaf.", {.kinds = {FlashcardKind::cloze}, .count = 3, .language = "", .focus = {}}, {}, {});
    ASSERT_TRUE(cards) << cards.error().text();
    EXPECT_EQ(cards->size(), 1U);
    answerNext(R"({"summary":"Leaves."})");
    const AIResult<Summary> summary = provider->summarise("A leaf.", "German", {});
    ASSERT_TRUE(summary) << summary.error().text();
    EXPECT_EQ(summary->text, "Leaves.");
}

TEST_P(HttpProviderTest, TellsWhatAStatusMeans) {
    const std::string rejected = "Your " + dialect_.label + " API key was rejected";
    const std::string message = R"({"error":{"message":"Too\nlong","code":1}})";
    const struct {
        int status;
        std::string body;
        std::string text;
    } cases[] = {
        {401, message, rejected},
        {403, "", rejected},
        {429, "", dialect_.busy},
        {529, message, dialect_.label + " is busy, try again in a minute"},
        {400, message, std::string(kUnexpected) + "HTTP 400: Too long"},
        {404, "no\x80 such model\n", std::string(kUnexpected) + "HTTP 404: no\uFFFD such model"},
        {418, R"({"error":"brewing"})", std::string(kUnexpected) + R"(HTTP 418: {"error":"brewing"})"},
        {500, R"({"error":{"message":5}})", std::string(kUnexpected) + R"(HTTP 500: {"error":{"message":5}})"},
        {503, "[]", std::string(kUnexpected) + "HTTP 503: []"},
    };
    for (const auto& [status, body, text] : cases) {
        const AIError error = errorAfter({.status = status, .body = body});
        EXPECT_EQ(error.text(), text);
        EXPECT_EQ(error.kind, text.starts_with(kUnexpected) ? AIError::Kind::badResponse : AIError::Kind::unavailable);
        EXPECT_EQ(error.mayPass(), text != rejected) << status;
    }
    EXPECT_LT(errorAfter({.status = 500, .body = std::string(9000, 'x')}).text().size(), 600U);
}

TEST_P(HttpProviderTest, SaysWhatIsWrongWithAReply) {
    for (const char* body : {"", "{", "<html>no</html>", "{\"a\":1}}", "{\"a\":\"\xFF\"}", "\xEF\xBB\xBF"}) {
        EXPECT_EQ(errorAfter({.body = body}).text(), kNoJson) << body;
    }
    for (const char* body : {"{}", "[]", "null", "\"text\"", R"({"error":{"message":"no"}})"}) {
        EXPECT_EQ(errorAfter({.body = body}).text(), std::string(kUnexpected) + dialect_.noMessage) << body;
    }
    if (!dialect_.reply.contains("@text")) return;
    for (const char* answer : {"", " \n"}) {
        answerNext(answer);
        EXPECT_EQ(errorIn(grade()).text(), std::string(kUnexpected) + dialect_.noMessage);
    }
    answerNext("I'd rather not.");
    EXPECT_EQ(errorIn(grade()).text(), kNoJson);
}

TEST_P(HttpProviderTest, NoErrorHoldsTheKey) {
    const LoopbackServer elsewhere;
    const std::string key(kKey);
    const std::string half(490, 'x');
    const struct {
        Answer answer;
        AIError::Kind kind;
        std::string detail;  ///< the beginning
    } cases[] = {
        {{.status = 400, .body = R"({"error":{"message":"bad key )" + key + "\"}}"},
         AIError::Kind::badResponse,
         "HTTP 400: bad key …"},
        {{.status = 500, .body = key + " failed"}, AIError::Kind::badResponse, "HTTP 500: … failed"},
        {{.status = 500, .body = half + key + half}, AIError::Kind::badResponse, "HTTP 500: xxx"},
        {{.status = 429, .body = key}, AIError::Kind::unavailable, dialect_.busy},
        {{.status = 302, .body = key, .headers = {{"Location", elsewhere.address() + "/" + key}}},
         AIError::Kind::badResponse,
         "HTTP 302: …"},
        {{.body = dialect_.reply + key, .manner = Manner::cutOff}, AIError::Kind::network, ""},
        {{.body = key + "\r\n\r\n", .manner = Manner::garbage}, AIError::Kind::network, ""},
        {{.body = std::string(kLargestHttpReply + 1, 'x')}, AIError::Kind::badResponse, "the reply was too large"},
        {{.body = "\"" + key + "\""}, AIError::Kind::badResponse, dialect_.noMessage},
        {{.body = "{" + key}, AIError::Kind::badResponse, "it didn't return valid JSON"},
    };
    for (const auto& [answer, kind, detail] : cases) {
        if (!needsKey(dialect_.kind) && answer.body.contains(key)) continue;
        const AIError error = errorAfter(answer);
        const std::string beginning = error.detail.substr(0, 80);
        EXPECT_EQ(error.kind, kind) << beginning;
        EXPECT_TRUE(error.detail.starts_with(detail)) << beginning;
        EXPECT_FALSE(error.detail.empty());
        EXPECT_FALSE(error.detail.contains(key.substr(0, 4))) << beginning;
        EXPECT_EQ(error.text().starts_with("Couldn't reach the AI: "), kind == AIError::Kind::network) << beginning;
    }
    EXPECT_TRUE(elsewhere.requests().empty());
}

TEST_P(HttpProviderTest, WrongTypesAreAnErrorWithoutTheKey) {
    const std::vector<std::string> values{"null", "true", "-5e3", jsonText(kKey), "[]", "{}", "[[{}]]"};
    for (const std::string& pattern : dialect_.broken) {
        for (const std::string& value : values) {
            const AIError error = errorAfter({.body = replacedAll(pattern, "@", value)});
            EXPECT_EQ(error.kind, AIError::Kind::badResponse) << pattern << value;
            EXPECT_FALSE(error.text().contains(kKey)) << pattern << value;
        }
    }
}

TEST_P(HttpProviderTest, StopsInMidRequest) {
    server_.answerNext({.manner = Manner::hang});
    std::stop_source stop;
    AIResult<AnswerGrade> result;
    std::jthread thread([&] { result = grade(stop.get_token()); });
    server_.waitForRequests(1);
    stop.request_stop();
    thread.join();
    EXPECT_EQ(errorIn(result), AIError::cancelled());
}

TEST_P(HttpProviderTest, SendsNothingWithoutAUsableKey) {
    if (!needsKey(dialect_.kind)) return static_cast<void>(rig_.make(settings_));
    rig_.storeKey(dialect_.kind, " \n");
    EXPECT_EQ(errorIn(rig_.tryToMake(settings_)), AIError::missingKey(dialect_.kind));
    EXPECT_TRUE(rig_.secrets.remove(keyNameOf(dialect_.kind), {}));
    EXPECT_EQ(textOfError(rig_.tryToMake(settings_)),
              "Add your " + dialect_.label + " API key in Settings → Flashcards");
    for (const auto failure : {SecretFailure::Kind::locked, SecretFailure::Kind::noService,
                               SecretFailure::Kind::refused, SecretFailure::Kind::cancelled}) {
        rig_.secrets.failWith(failure);
        EXPECT_EQ(errorIn(rig_.tryToMake(settings_)).kind,
                  failure == SecretFailure::Kind::cancelled ? AIError::Kind::cancelled : AIError::Kind::unavailable);
    }
    rig_.secrets.failWith(std::nullopt);
    rig_.storeKey(dialect_.kind, std::string(kKey) + "\r\nx-admin: 1");
    EXPECT_FALSE(textOfError(grade()).contains(kKey));
    EXPECT_TRUE(server_.requests().empty());
    rig_.storeKey(dialect_.kind, " " + std::string(kKey) + "\n");
    answerNext(kGradeReply);
    ASSERT_TRUE(grade());
    EXPECT_EQ(server_.requests().back().header(dialect_.headers.front().name), dialect_.headers.front().value);
}

TEST_P(HttpProviderTest, SaysWhenNobodyIsThere) {
    const std::string address = LoopbackServer::refusedAddress();
    const auto use = [&](const std::string& base) {
        settings_.geminiEndpoint = settings_.openaiEndpoint = settings_.claudeEndpoint = settings_.ollamaURL = base;
    };
    use(address + "/");
    const bool isLocal = dialect_.kind == AIProviderKind::ollama;
    const std::string text = errorIn(grade()).text();
    EXPECT_TRUE(isLocal ? text == "Ollama isn't running at " + address : text.starts_with("Couldn't reach the AI: "))
        << text;
    for (const char* nonsense : {"not an address", "ftp://127.0.0.1", "localhost:11434", "http://"}) {
        use(nonsense);
        EXPECT_EQ(errorIn(grade()), AIError::unavailable("The " + dialect_.label + " address isn't valid")) << nonsense;
    }
}

class GeminiTest : public HttpProviderRig {
protected:
    GeminiTest() : HttpProviderRig(AIProviderKind::gemini) {}
};

TEST_F(GeminiTest, JoinsThePartsThatAreNoThoughts) {
    server_.answerNext({.body = R"({"candidates":[{"content":{"parts":[{"text":"{\"hmm\":1}","thought":true},)"
                                R"({"text":"{\"verdict\":"},{"text":7},{"inlineData":{}},5,)"
                                R"({"text":"\"wrong\"}","thought":false}]}}]})"});
    const AIResult<AnswerGrade> grade = this->grade();
    ASSERT_TRUE(grade) << grade.error().text();
    EXPECT_EQ(grade->verdict, AnswerGrade::Verdict::wrong);
}

TEST_F(GeminiTest, SaysWhyItWouldNotAnswer) {
    const std::string parts = R"("content":{"parts":[{"text":"{\"verdict\":\"wrong\"}"}]})";
    const struct {
        std::string body;
        std::string text;
    } cases[] = {
        {R"({"promptFeedback":{"blockReason":"PROHIBITED_CONTENT"}})",
         "Gemini blocked the request (PROHIBITED_CONTENT)"},
        {R"({"promptFeedback":{"blockReason":")" + std::string(kKey) + "\"}}", "Gemini blocked the request (…)"},
        {R"({"candidates":[{"finishReason":"SAFETY",)" + parts + "}]}", "Gemini declined to answer (SAFETY)"},
        {R"({"candidates":[{"finishReason":"RECITATION"}]})", "Gemini declined to answer (RECITATION)"},
        {R"({"promptFeedback":{"blockReason":null},"candidates":[{"finishReason":"STOP",)" + parts + "}]}", ""},
    };
    for (const auto& [body, text] : cases) {
        server_.answerNext({.body = body});
        EXPECT_EQ(textOfError(grade()), text) << body;
    }
}

TEST_F(GeminiTest, TellsWhenToTryAgain) {
    const std::string type = R"("@type":"type.googleapis.com/google.rpc.RetryInfo")";
    const struct {
        std::string details;
        std::optional<double> seconds;
    } cases[] = {
        {R"([{"@type":"Help","retryDelay":"5s"},{)" + type + R"(,"retryDelay":"37s"}])", 37},
        {"[{" + type + R"(,"retryDelay":"0.5s"}])", 0.5},
        {"[{" + type + R"(,"retryDelay":"-2s"}])", std::nullopt},
        {"[{" + type + R"(,"retryDelay":"soon"},7])", std::nullopt},
        {"[]", std::nullopt},
        {"5", std::nullopt},
    };
    for (const auto& [details, seconds] : cases) {
        const AIError error = errorAfter({.status = 429, .body = R"({"error":{"details":)" + details + "}}"});
        EXPECT_EQ(error.text(), dialect_.busy);
        EXPECT_EQ(error.retryAfter, seconds) << details;
    }
}

TEST_F(GeminiTest, TakesOnlyAModelThatFitsAnAddress) {
    for (const char* model : {"", "  ", "a b", "a?key=1", "a#b", "a%2fb", "modèle", "a\nb", "a\"b"}) {
        settings_.geminiModel = model;
        EXPECT_EQ(textOfError(grade()), "The Gemini model name isn't valid") << model;
    }
    EXPECT_TRUE(server_.requests().empty());
    settings_.geminiModel = " gemini-2.5-flash:latest_1\n";
    answerNext(kGradeReply);
    ASSERT_TRUE(grade());
    EXPECT_EQ(server_.requests().back().path, "/v1beta/models/gemini-2.5-flash:latest_1:generateContent");
}

class OllamaTest : public HttpProviderRig {
protected:
    OllamaTest() : HttpProviderRig(AIProviderKind::ollama) {}

    std::string textOfPreparing(Answer answer) {
        server_.answerNext(std::move(answer));
        return textOfError(rig_.make(settings_)->prepare({}));
    }
};

TEST_F(OllamaTest, LeavesThinkingOut) {
    const std::string json(kGradeReply);
    for (const std::string& answer :
         {"<think>\nLet me {see}.\n</think>\n\n" + json, "<think></think>" + json + "<think>{}</think>\n",
          "<think>a</think>" + json.substr(0, 20) + "<think>b\n</think>" + json.substr(20)}) {
        answerNext(answer);
        const AIResult<AnswerGrade> grade = this->grade();
        ASSERT_TRUE(grade) << answer << grade.error().text();
        EXPECT_EQ(*grade, gradeOfReply());
    }
    answerNext("<think>only thoughts</think> \n");
    EXPECT_EQ(textOfError(grade()), std::string(kUnexpected) + "Ollama returned no message");
}

TEST_F(OllamaTest, LooksForTheModelFirst) {
    const std::string tags = R"({"models":[{"name":"llama3.2:latest"},{"name":"qwen:7b"},{"name":5},"x"]})";
    for (const char* model : {"llama3.2", "llama3.2:latest", "qwen:7b", " llama3.2 "}) {
        settings_.ollamaModel = model;
        EXPECT_EQ(textOfPreparing({.body = tags}), "") << model;
        EXPECT_EQ(server_.requests().back().method, "GET");
        EXPECT_EQ(server_.requests().back().path, "/api/tags");
    }
    for (const char* model : {"qwen", "llama3", "llama3.2:7b", "latest"}) {
        settings_.ollamaModel = model;
        EXPECT_EQ(textOfPreparing({.body = tags}), "Run `ollama pull " + std::string(model) + "` first");
    }
    for (const char* body : {"{}", "[]", R"({"models":null})", R"({"models":{}})"}) {
        EXPECT_EQ(textOfPreparing({.body = body}), "Run `ollama pull latest` first") << body;
    }
    EXPECT_EQ(textOfPreparing({.body = "Ollama is running"}), kNoJson);
    EXPECT_EQ(textOfPreparing({.status = 500, .body = "no"}), std::string(kUnexpected) + "HTTP 500: no");
    settings_.ollamaURL = LoopbackServer::refusedAddress();
    EXPECT_EQ(textOfPreparing({}), "Ollama isn't running at " + settings_.ollamaURL);
}

}  // namespace
}  // namespace tessary
