#include <gtest/gtest.h>

#include "base/text.h"
#include "npm/http_providers.h"
#include "npm/npm_packages.h"
#include "support/loopback_server.h"

namespace tessary {
namespace {

namespace fs = std::filesystem;

constexpr double kTimeLimit = 300;  // seconds; reached only when a test fails

/// The type of a request in each provider's own TypeScript library. The one of Gemini has none for the whole body,
/// since it takes the model and a "config" as arguments of a function; but it has the types of the body's three parts.
std::string typeOf(AIProviderKind kind) {
    switch (kind) {
        case AIProviderKind::openai:
            return "import type { ChatCompletionCreateParamsNonStreaming } from 'openai/resources/chat/completions';\n"
                   "type Body = ChatCompletionCreateParamsNonStreaming;\n";
        case AIProviderKind::claude:
            return "import type { MessageCreateParamsNonStreaming } from '@anthropic-ai/sdk/resources/messages';\n"
                   "type Body = MessageCreateParamsNonStreaming;\n";
        case AIProviderKind::gemini:
            return "import type { Content, GenerationConfig } from '@google/genai';\n"
                   "interface Body { systemInstruction: Content; contents: Content[]; "
                   "generationConfig: GenerationConfig }\n";
        default:
            return "import type { ChatRequest } from 'ollama';\n"
                   "type Body = ChatRequest & { stream: false };\n";
    }
}

/// What is really sent for cards, for a summary and for a grade.
std::vector<std::string> bodiesOf(AIProviderKind kind) {
    const LoopbackServer server;
    HttpProviders providers(server.address());
    const std::unique_ptr<AIProvider> provider = providers.make(kind);
    const CardRequest request{.kinds = {FlashcardKind::basic, FlashcardKind::cloze, FlashcardKind::multipleChoice},
                              .count = 5,
                              .language = "French",
                              .focus = "`${energy}`"};
    const std::string source = "[Page 1]\n\"ATP\" \\ naît\u2028dans la mitochondrie 🙂";
    EXPECT_FALSE(provider->generateCards(source, request, {"What is \"ATP\"?"}, {}));
    EXPECT_FALSE(provider->summarise(source, "", {}));
    EXPECT_FALSE(provider->grade({.question = "Q", .expected = "E", .answer = "A", .language = "German"}, {}));
    std::vector<std::string> bodies;
    for (const LoopbackServer::Received& received : server.requests()) bodies.push_back(received.body);
    EXPECT_EQ(bodies.size(), 3U);
    return bodies;
}

/// JSON is TypeScript. Written in place, so that a member too many is refused as well.
std::string moduleOf(AIProviderKind kind, const std::vector<std::string>& bodies) {
    std::string text = typeOf(kind);
    for (std::size_t i = 0; i < bodies.size(); ++i) {
        text += "export const body" + std::to_string(i) + ": Body = " + bodies[i] + ";\n";
    }
    return text;
}

class RequestTypesTest : public ::testing::Test {
protected:
    void add(const std::string& name, const std::string& module) { files_.push_back(folder_.write(name, module)); }

    ProcessResult check() {
        fs::create_directory_symlink(npmFile("node_modules"), folder_.path() / "node_modules");
        ProcessRequest request{.program = npmFile("node"),
                               .arguments = {npmFile("node_modules/typescript/lib/tsc.js"), "--noEmit", "--strict",
                                             "--skipLibCheck", "--target", "es2022", "--module", "nodenext"},
                               .timeLimit = kTimeLimit};
        request.arguments.insert(request.arguments.end(), files_.begin(), files_.end());
        auto result = PosixProcessRunner().run(request, {});
        if (!result) throw std::runtime_error("tsc: " + result.error().message);
        return *std::move(result);
    }

private:
    TemporaryFolder folder_;
    std::vector<std::string> files_;
};

TEST_F(RequestTypesTest, WhatIsSentFitsTheTypesOfTheProvidersLibraries) {
    for (const AIProviderKind kind : kHttpProviders) {
        add(std::string(enumName(kind)) + ".ts", moduleOf(kind, bodiesOf(kind)));
    }
    const ProcessResult result = check();
    EXPECT_EQ(result.exitStatus, 0) << result.output << result.errors;
}

TEST_F(RequestTypesTest, TheTypesRefuseWhatDoesNotFit) {
    struct Case {
        AIProviderKind kind;
        std::string_view from;
        std::string_view to;
    };
    const std::vector<Case> cases{
        {AIProviderKind::openai, R"("model":"gpt-4.1-mini")", R"("model":5)"},
        {AIProviderKind::openai, R"("response_format")", R"("responseFormat")"},
        {AIProviderKind::openai, R"("json_object")", R"("json_objekt")"},
        {AIProviderKind::openai, R"("content":)", R"("contents":)"},
        {AIProviderKind::claude, R"("max_tokens":8000,)", ""},
        {AIProviderKind::claude, R"("system":)", R"("sistem":)"},
        {AIProviderKind::claude, R"("input_schema":)", R"("inputSchema":)"},
        {AIProviderKind::claude, R"("tool_choice":{"type":"tool")", R"("tool_choice":{"type":"tools")"},
        {AIProviderKind::gemini, R"("systemInstruction":)", R"("system_instruction":)"},
        {AIProviderKind::gemini, R"("parts":)", R"("part":)"},
        {AIProviderKind::gemini, R"("maxOutputTokens":)", R"("maxTokens":)"},
        {AIProviderKind::gemini, R"("temperature":0.3)", R"("temperature":"0.3")"},
        {AIProviderKind::ollama, R"("model":)", R"("name":)"},
        {AIProviderKind::ollama, R"("format":"json")", R"("format":true)"},
        {AIProviderKind::ollama, R"("stream":false)", R"("stream":true)"},
        {AIProviderKind::ollama, R"("role":"system",)", ""},
    };
    for (const Case& wrong : cases) {
        const std::string name(enumName(wrong.kind));
        const std::string body = bodiesOf(wrong.kind).front();
        ASSERT_NE(body.find(wrong.from), std::string::npos) << name << ": " << wrong.from;
        add(name + std::to_string(&wrong - cases.data()) + ".ts",
            moduleOf(wrong.kind, {replacedAll(body, wrong.from, wrong.to)}));
    }
    const ProcessResult result = check();
    EXPECT_NE(result.exitStatus, 0);
    for (const Case& wrong : cases) {
        const std::string name = std::string(enumName(wrong.kind)) + std::to_string(&wrong - cases.data()) + ".ts(";
        EXPECT_NE(result.output.find(name), std::string::npos) << wrong.from << " became " << wrong.to;
    }
    // Only the types are to blame: their modules were found and are more than "any".
    EXPECT_EQ(result.output.find("TS2307"), std::string::npos) << result.output;
}

}  // namespace
}  // namespace tessary
