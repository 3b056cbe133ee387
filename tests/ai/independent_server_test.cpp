#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <optional>

#include "ai/reply_json.h"
#include "base/text.h"
#include "npm/http_providers.h"
#include "npm/npm_packages.h"
#include "support/private_keyring.h"

namespace tessary {
namespace {

constexpr std::chrono::seconds kPatience(60);  // for a start on a busy machine; reached only when a test fails

constexpr std::string_view kSource =
    "[Page 3]\n\"ATP\" naît\tdans la mitochondrie \\ 漢字 🙂\u2028</script> {{x}} ${y}";

const std::vector<std::string> kFronts{"What is \"ATP\"?", "Où ?"};
const CardRequest kRequest{.kinds = {FlashcardKind::basic, FlashcardKind::cloze, FlashcardKind::multipleChoice},
                           .count = 5,
                           .language = "French",
                           .focus = "les \"mitochondries\""};
const GradeRequest kAnswer{
    .question = "Où naît l'ATP ?", .expected = "Dans la mitochondrie", .answer = "dans \"le\" noyau\n", .language = ""};

constexpr std::string_view kCards =
    R"({"cards":[{"kind":"basic","front":"Où naît l'ATP ?","back":"Dans la \"mitochondrie\" 🙂","page":3},)"
    R"({"kind":"cloze","front":"The {{mitochondrion}} makes {{ATP}}.","back":"","explanation":"","page":"4"},)"
    R"({"kind":"multiple_choice","front":"2 + 2?","back":"4","options":["3","4","5","6"],"correct_index":1,)"
    R"("explanation":"Count.","page":5}]})";
constexpr std::string_view kSummary = R"({"summary":"Première idée.\n\nDeuxième idée 🙂","key_points":["Une","Deux"],)"
                                      R"("glossary":[{"term":"ATP","definition":"L'énergie."}]})";
constexpr std::string_view kGrade =
    R"({"verdict":"partial","score":0.5,"feedback":"Pas tout à fait.","missing":["mitochondrie"]})";

/// A job as the server sees it, and what it answers.
struct Job {
    std::string_view tool;
    std::string_view prompt;  ///< a part of the system prompt that no other job has
    std::string user;         ///< how the user prompt begins
    std::string_view answer;
};

const std::vector<Job>& jobs() {
    static const std::vector<Job> all{
        {"save_flashcards", "writing study flashcards",
         std::string(kSource) + "\n\nCards that already exist (do not repeat them):\nWhat is \"ATP\"?\nOù ?", kCards},
        {"save_summary", "Summarise the source text", std::string(kSource), kSummary},
        {"save_grade", "You grade a student's answer",
         "Question: Où naît l'ATP ?\nExpected answer: Dans la mitochondrie\nStudent's answer: dans \"le\" noyau",
         kGrade},
    };
    return all;
}

std::string modelOf(const AISettings& settings) {
    switch (settings.provider) {
        case AIProviderKind::gemini: return settings.geminiModel;
        case AIProviderKind::claude: return settings.claudeModel;
        case AIProviderKind::openai: return settings.openaiModel;
        default: return settings.ollamaModel;
    }
}

std::string jsonText(std::string_view text) {
    JsonWriter writer;
    writer.string(text);
    return writer.finish().value();
}

/// Each provider's own way of saying more than the answer: Claude a sentence, the others their thoughts.
std::string replyOf(AIProviderKind kind, const Job& job) {
    const std::string answer(job.answer);
    switch (kind) {
        case AIProviderKind::claude:
            return R"({"content":"I'll save it.","toolCalls":[{"name":")" + std::string(job.tool) +
                   R"(","arguments":)" + answer + "}]}";
        case AIProviderKind::gemini: return R"({"reasoning":"{\"cards\":[]}?","content":)" + answer + "}";
        case AIProviderKind::ollama: return R"({"content":)" + jsonText("<think>{\"a\"?}</think>\n" + answer) + "}";
        default: return R"({"content":)" + answer + "}";
    }
}

std::string fixturesFor(const AISettings& settings) {
    const std::string model = R"("model":")" + modelOf(settings) + '"';
    std::string list =
        R"({"match":{"userMessage":"case 400"},"response":{"error":{"message":"too odd"},"status":400}},)"
        R"({"match":{"userMessage":"case 429"},"response":{"error":{"message":"slow down"},"status":429}},)"
        R"({"match":{"userMessage":"case 529"},"response":{"error":{"message":"overloaded"},"status":529}},)"
        R"({"match":{"userMessage":"case malformed"},"response":{"content":"{}"},"chaos":{"malformedRate":1}},)"
        R"({"match":{"userMessage":"case disconnect"},"response":{"content":"{}"},"chaos":{"disconnectRate":1}})";
    for (const Job& job : jobs()) {
        std::string match = model + R"(,"systemMessage":)" + jsonText(job.prompt);
        if (settings.provider == AIProviderKind::claude) match += R"(,"toolName":)" + jsonText(job.tool);
        if (settings.provider == AIProviderKind::openai) match += R"(,"responseFormat":"json_object")";
        list += R"(,{"match":{)" + match + R"(},"response":)" + replyOf(settings.provider, job) + "}";
    }
    return R"({"fixtures":[)" + list + "]}";
}

/// A server by other people that understands and answers requests as the providers' own servers do. It knows one key,
/// or lets everybody in.
class IndependentServer {
public:
    explicit IndependentServer(AIProviderKind kind) : key_(HttpProviders::keyOf(kind)) {
        const auto fixtures = folder_.write("fixtures.json", fixturesFor(HttpProviders("").settingsFor(kind)));
        std::array<int, 2> ends{};
        if (::pipe2(ends.data(), O_CLOEXEC) != 0) throw std::runtime_error("No pipe.");
        output_ = ends[0];
        process_.emplace(HeldProcess::Settings{
            .command = {npmFile("node"), npmFile("node_modules/@copilotkit/aimock/dist/cli.js"), "--port", "0",
                        "--fixtures", fixtures, "--strict"},
            .environment = key_.empty() ? std::vector<std::string>{} : std::vector{"AIMOCK_API_KEYS=" + key_},
            .standardOutput = ends[1]});
        ::close(ends[1]);
        address_ = announcedAddress();
    }
    IndependentServer(const IndependentServer&) = delete;
    IndependentServer& operator=(const IndependentServer&) = delete;
    ~IndependentServer() { ::close(output_); }

    [[nodiscard]] const std::string& address() const { return address_; }

    /// What it was sent, as it understood it: a list in JSON, every body in the shape of OpenAI's.
    [[nodiscard]] std::string journal() const {
        CurlHttpClient client;
        HttpRequest request{.method = HttpRequest::Method::get, .url = address_ + "/v1/_requests"};
        if (!key_.empty()) request.headers.push_back({.name = "x-api-key", .value = key_});
        const auto reply = client.send(request, {});
        if (!reply || reply->status != 200) throw std::runtime_error("No journal.");
        return reply->body;
    }

private:
    [[nodiscard]] std::string announcedAddress() const {
        const auto end = std::chrono::steady_clock::now() + kPatience;
        std::string line;
        while (true) {
            const auto left =
                std::chrono::duration_cast<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
            pollfd ready{.fd = output_, .events = POLLIN, .revents = 0};
            const int found = left.count() > 0 ? ::poll(&ready, 1, static_cast<int>(left.count())) : 0;
            if (found < 0 && errno == EINTR) continue;
            char character = 0;
            if (found <= 0 || ::read(output_, &character, 1) != 1) break;
            line += character;
            const std::size_t at = line.find("http://");
            if (character == '\n' && at != std::string::npos) return std::string(trimmed(line.substr(at)));
            if (character == '\n') line.clear();
        }
        throw std::runtime_error("The server did not start: " + line);
    }

    std::string key_;
    TemporaryFolder folder_;
    int output_ = -1;
    std::optional<HeldProcess> process_;
    std::string address_;
};

class IndependentServerTest : public ::testing::TestWithParam<AIProviderKind> {
protected:
    AIError failureOf(std::string_view source) {
        const AIResult<Summary> summary = providers_.make(GetParam())->summarise(source, "", {});
        EXPECT_FALSE(summary) << source;
        return summary ? AIError() : summary.error();
    }

    IndependentServer server_{GetParam()};
    HttpProviders providers_{server_.address()};
};

std::string pathOf(const AISettings& settings) {
    switch (settings.provider) {
        case AIProviderKind::gemini: return "/v1beta/models/" + settings.geminiModel + ":generateContent";
        case AIProviderKind::claude: return "/v1/messages";
        case AIProviderKind::openai: return "/v1/chat/completions";
        default: return "/api/chat";
    }
}

/// Text of a member of a member, untrimmed.
std::string textAt(JsonValue value, std::initializer_list<std::string_view> path) {
    for (const std::string_view key : path) {
        const std::optional<JsonValue> next = value.kind() == JsonKind::array ? value.firstElement() : value;
        const std::optional<JsonValue> inside = next ? next->member(key) : std::nullopt;
        if (!inside) return "(no " + std::string(key) + ")";
        value = *inside;
    }
    return value.kind() == JsonKind::string ? std::string(value.asString()) : "(no text)";
}

void expectUnderstood(JsonValue entry, const Job& job, const AISettings& settings) {
    SCOPED_TRACE(job.tool);
    EXPECT_EQ(textAt(entry, {"method"}), "POST");
    EXPECT_EQ(textAt(entry, {"path"}), pathOf(settings));
    EXPECT_EQ(textAt(entry, {"headers", "content-type"}), "application/json");
    const JsonValue body = entry.member("body").value();
    EXPECT_EQ(textAt(body, {"model"}), modelOf(settings));
    std::vector<std::pair<std::string, std::string>> messages;
    body.member("messages")->forEachElement([&](JsonValue message) {
        messages.emplace_back(textAt(message, {"role"}), textAt(message, {"content"}));
    });
    ASSERT_EQ(messages.size(), 2U);
    EXPECT_EQ(messages[0].first, "system");
    EXPECT_NE(messages[0].second.find(job.prompt), std::string::npos) << messages[0].second;
    EXPECT_EQ(messages[1].first, "user");
    if (settings.provider == AIProviderKind::openai || settings.provider == AIProviderKind::ollama) {
        EXPECT_TRUE(messages[1].second.starts_with(job.user + "\n\nReply with only a JSON object"))
            << messages[1].second;
    } else {
        EXPECT_EQ(messages[1].second, job.user);
    }
    if (settings.provider == AIProviderKind::claude) {
        EXPECT_EQ(body.member("tools")->elementCount(), 1U);
        EXPECT_EQ(textAt(body, {"tools", "function", "name"}), job.tool);
        EXPECT_EQ(textAt(body, {"tools", "function", "parameters", "type"}), "object");
        EXPECT_EQ(body.member("max_tokens")->asInteger(), 8000);
    }
    if (settings.provider == AIProviderKind::openai) {
        EXPECT_EQ(textAt(body, {"response_format", "type"}), "json_object");
    }
}

TEST_P(IndependentServerTest, UnderstandsEveryJobAndIsUnderstood) {
    const std::unique_ptr<AIProvider> provider = providers_.make(GetParam());
    const auto ready = provider->prepare({});
    ASSERT_TRUE(ready) << ready.error().text();

    const auto cards = provider->generateCards(kSource, kRequest, kFronts, {});
    ASSERT_TRUE(cards) << cards.error().text();
    const std::vector<GeneratedCard> expected{
        {.kind = FlashcardKind::basic,
         .front = "Où naît l'ATP ?",
         .back = "Dans la \"mitochondrie\" 🙂",
         .options = {},
         .correctIndex = {},
         .explanation = {},
         .sourcePage = 3},
        {.kind = FlashcardKind::cloze,
         .front = "The {{mitochondrion}} makes {{ATP}}.",
         .back = "mitochondrion · ATP",
         .options = {},
         .correctIndex = {},
         .explanation = {},
         .sourcePage = 4},
        {.kind = FlashcardKind::multipleChoice,
         .front = "2 + 2?",
         .back = "4",
         .options = {"3", "4", "5", "6"},
         .correctIndex = 1,
         .explanation = "Count.",
         .sourcePage = 5},
    };
    EXPECT_EQ(*cards, expected);

    const auto summary = provider->summarise(kSource, "French", {});
    ASSERT_TRUE(summary) << summary.error().text();
    EXPECT_EQ(*summary, (Summary{.text = "Première idée.\n\nDeuxième idée 🙂",
                                 .keyPoints = {"Une", "Deux"},
                                 .glossary = {{.term = "ATP", .definition = "L'énergie."}}}));

    const auto grade = provider->grade(kAnswer, {});
    ASSERT_TRUE(grade) << grade.error().text();
    EXPECT_EQ(*grade, (AnswerGrade{.verdict = AnswerGrade::Verdict::partial,
                                   .score = 0.5,
                                   .feedback = "Pas tout à fait.",
                                   .missing = {"mitochondrie"}}));

    const std::string journal = server_.journal();
    const JsonDocument document(journal);
    std::size_t index = 0;
    document.root().forEachElement([&](JsonValue entry) {
        if (index < jobs().size()) expectUnderstood(entry, jobs()[index], providers_.settingsFor(GetParam()));
        ++index;
    });
    EXPECT_EQ(index, jobs().size());
}

TEST_P(IndependentServerTest, ItsErrorsAreTold) {
    const std::string label(labelOf(GetParam()));
    const std::string limit = GetParam() == AIProviderKind::gemini
                                  ? "Gemini's free limit was reached. Wait a minute and try again."
                                  : label + " is busy, try again in a minute";
    EXPECT_EQ(failureOf("case 400"), AIError::badResponse("HTTP 400: too odd"));
    EXPECT_EQ(failureOf("case 429"), AIError::unavailable(limit));
    EXPECT_EQ(failureOf("case 529"), AIError::unavailable(label + " is busy, try again in a minute"));
    EXPECT_EQ(failureOf("case malformed"), AIError::badResponse("it didn't return valid JSON"));
    EXPECT_EQ(failureOf("case disconnect").kind, AIError::Kind::network);

    if (needsKey(GetParam())) {
        providers_.setKey(GetParam(), "an old key");
        EXPECT_EQ(failureOf("anything"), AIError::rejectedKey(GetParam()));
    } else {
        AISettings settings = providers_.settingsFor(GetParam());
        settings.ollamaModel = "mistral";
        const AIResult<void> ready = providers_.make(settings)->prepare({});
        ASSERT_FALSE(ready);
        EXPECT_EQ(ready.error(), AIError::unavailable("Run `ollama pull mistral` first"));
    }
}

INSTANTIATE_TEST_SUITE_P(Providers, IndependentServerTest, ::testing::ValuesIn(kHttpProviders),
                         [](const auto& tested) { return std::string(enumName(tested.param)); });

}  // namespace
}  // namespace tessary
