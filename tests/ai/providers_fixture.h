#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "ai/grade_job.h"
#include "ai/providers/provider_choice.h"
#include "base/json_writer.h"
#include "platform/adapters/curl/curl_http_client.h"
#include "platform/adapters/icu/icu_text_services.h"
#include "platform/adapters/posix/posix_file_system.h"
#include "platform/adapters/posix/posix_process_runner.h"
#include "platform/adapters/system/no_on_device_model.h"
#include "support/fakes.h"
#include "support/memory_secret_store.h"

namespace tessary {

/// What providers stand on: real adapters, but for the keychain. Requests go straight to where they are sent.
class ProviderRig {
public:
    ProviderRig() {
        for (const char* name : {"http_proxy", "https_proxy", "all_proxy", "HTTPS_PROXY", "ALL_PROXY"}) unsetenv(name);
    }

    void storeKey(AIProviderKind kind, std::string_view key) {
        EXPECT_TRUE(secrets.write(keyNameOf(kind), keyLabelOf(kind), key, {}));
    }

    [[nodiscard]] AIResult<std::unique_ptr<AIProvider>> tryToMake(const AISettings& settings,
                                                                  std::stop_token stop = {}) {
        return makeProvider(settings,
                            {.http = http_,
                             .secrets = secrets,
                             .processes = *processes,
                             .onDevice = *onDevice,
                             .files = files_,
                             .ids = ids_,
                             .text = text,
                             .codex = codex},
                            std::move(stop));
    }

    /// For settings that a provider can be made of.
    [[nodiscard]] std::unique_ptr<AIProvider> make(const AISettings& settings) {
        AIResult<std::unique_ptr<AIProvider>> provider = tryToMake(settings);
        if (!provider) throw std::runtime_error(provider.error().text());
        return *std::move(provider);
    }

    // Tests put their own in the place of these.
    CodexPlaces codex;
    MemorySecretStore secrets;
    NoOnDeviceModel noModel;
    OnDeviceModel* onDevice = &noModel;
    PosixProcessRunner realProcesses;
    ProcessRunner* processes = &realProcesses;
    const IcuTextServices text;

private:
    CurlHttpClient http_;
    PosixFileSystem files_;
    SequentialIds ids_;
};

/// The job that most tests ask for, and an answer to it.
inline GradeRequest smallRequest() {
    return {.question = "2 + \"2\"?", .expected = "4", .answer = " \n", .language = ""};
}

inline constexpr std::string_view kGradeReply =
    R"({"verdict":"wrong","score":0.1,"feedback":"Say 4.","missing":["4"]})";

inline AnswerGrade gradeOfReply() {
    return {.verdict = AnswerGrade::Verdict::wrong, .score = 0.1, .feedback = "Say 4.", .missing = {"4"}};
}

/// A text as JSON has it, with its quotes.
inline std::string jsonText(std::string_view text) {
    JsonWriter writer;
    writer.string(text);
    return writer.finish().value();
}

/// The error of a call that must fail.
template <class T>
AIError errorIn(const AIResult<T>& result) {
    EXPECT_FALSE(result.has_value());
    return result ? AIError{} : result.error();
}

/// Nothing for a call that worked, else what the user reads.
template <class T>
std::string textOfError(const AIResult<T>& result) {
    return result ? std::string() : result.error().text();
}

/// What keys are in the tests.
inline constexpr std::string_view kKey = "sk-Secret_0123-key";

/// How one provider is spoken to, and what it says. In bodies "@…" stands for a part that the test puts in.
struct Dialect {
    AIProviderKind kind;
    std::string label;
    std::string path;
    std::vector<HttpHeader> headers;  ///< those of its own
    std::string body;             ///< of a request: @system, @user and @guided as quoted texts, @schema as it is
    std::string reply;            ///< @text is the answer as a quoted text, @json as it is
    std::vector<std::string> broken;  ///< replies with a wrong value for "@"
    std::string noMessage;
    std::string busy;             ///< for status 429
};

/// Of the four providers that are spoken to over HTTP.
inline const std::vector<Dialect>& dialects() {
    static const std::vector<Dialect> all{
        {.kind = AIProviderKind::gemini,
         .label = "Google Gemini",
         .path = "/v1beta/models/gemini-test:generateContent",
         .headers = {{"x-goog-api-key", std::string(kKey)}},
         .body = R"({"systemInstruction":{"parts":[{"text":@system}]},"contents":[{"parts":[{"text":@user}]}],)"
                 R"("generationConfig":{"temperature":0.3,"maxOutputTokens":8192,)"
                 R"("responseMimeType":"application/json","responseJsonSchema":@schema}})",
         .reply = R"({"candidates":[{"content":{"parts":[{"text":@text}]},"finishReason":"STOP"}]})",
         .broken = {R"({"candidates":@})", R"({"candidates":[@]})", R"({"candidates":[{"content":@}]})",
                    R"({"candidates":[{"content":{"parts":@}}]})", R"({"candidates":[{"content":{"parts":[@]}}]})",
                    R"({"candidates":[{"content":{"parts":[{"text":@}]}}]})",
                    R"({"candidates":[{"finishReason":@}],"promptFeedback":@})"},
         .noMessage = "Gemini returned no message",
         .busy = "Gemini's free limit was reached. Wait a minute and try again."},
        {.kind = AIProviderKind::openai,
         .label = "OpenAI",
         .path = "/v1/chat/completions",
         .headers = {{"Authorization", "Bearer " + std::string(kKey)}},
         .body = R"({"model":"gpt-test","response_format":{"type":"json_object"},"messages":[)"
                 R"({"role":"system","content":@system},{"role":"user","content":@guided}]})",
         .reply = R"({"choices":[{"message":{"role":"assistant","content":@text}}]})",
         .broken = {R"({"choices":@})", R"({"choices":[@]})", R"({"choices":[{"message":@}]})",
                    R"({"choices":[{"message":{"content":@}}]})"},
         .noMessage = "OpenAI returned no message",
         .busy = "OpenAI is busy, try again in a minute"},
        {.kind = AIProviderKind::claude,
         .label = "Claude",
         .path = "/v1/messages",
         .headers = {{"x-api-key", std::string(kKey)}, {"anthropic-version", "2023-06-01"}},
         .body = R"({"model":"claude-test","max_tokens":8000,"system":@system,)"
                 R"("messages":[{"role":"user","content":@user}],"tools":[{"name":"save_grade",)"
                 R"("description":"Save the structured result.","input_schema":@schema}],)"
                 R"("tool_choice":{"type":"tool","name":"save_grade"}})",
         .reply = R"({"content":[{"type":"text","text":"Well."},{"type":"tool_use","id":"t","input":@json},)"
                  R"({"type":"tool_use","id":"u","input":{"summary":"no"}}]})",
         .broken = {R"({"content":@})", R"({"content":[@]})", R"({"content":[{"type":@,"input":{}}]})",
                    R"({"content":[{"type":"tool_use","input":@}]})"},
         .noMessage = "Claude didn't return the structured result",
         .busy = "Claude is busy, try again in a minute"},
        {.kind = AIProviderKind::ollama,
         .label = "Ollama",
         .path = "/api/chat",
         .headers = {},
         .body = R"({"model":"llama-test","stream":false,"format":"json","messages":[)"
                 R"({"role":"system","content":@system},{"role":"user","content":@guided}]})",
         .reply = R"({"message":{"role":"assistant","content":@text},"done":true})",
         .broken = {R"({"message":@})", R"({"message":{"content":@}})"},
         .noMessage = "Ollama returned no message",
         .busy = "Ollama is busy, try again in a minute"}};
    return all;
}

}  // namespace tessary
