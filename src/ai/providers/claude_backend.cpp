#include "ai/providers/claude_backend.h"

#include "ai/providers/chat_messages.h"
#include "ai/providers/http_exchange.h"
#include "ai/reply_json.h"

namespace tessary {
namespace {

constexpr AIProviderKind kKind = AIProviderKind::claude;
constexpr std::string_view kVersion = "2023-06-01";
constexpr std::int64_t kMaxTokens = 8000;

std::string bodyOf(const JSONJob& job, std::string_view model) {
    JsonWriter writer;
    writer.beginObject();
    writer.key("model");
    writer.string(model);
    writer.key("max_tokens");
    writer.integer(kMaxTokens);
    writer.key("system");
    writer.string(job.system);
    writer.key("messages");
    writer.beginArray();
    writeMessage(writer, "user", job.user);
    writer.endArray();
    writer.key("tools");
    writer.beginArray();
    writer.beginObject();
    writer.key("name");
    writer.string(job.name);
    writer.key("description");
    writer.string("Save the structured result.");
    writer.key("input_schema");
    writer.raw(job.schema);
    writer.endObject();
    writer.endArray();
    writer.key("tool_choice");
    writer.beginObject();
    writer.key("type");
    writer.string("tool");
    writer.key("name");
    writer.string(job.name);
    writer.endObject();
    writer.endObject();
    return writer.finish().value_or("");
}

/// The input of the first call of a tool, as JSON text; absent when there is none.
std::optional<std::string> toolInputIn(JsonValue root) {
    std::optional<std::string> input;
    const std::optional<JsonValue> content = root.member("content");
    if (!content || content->kind() != JsonKind::array) return input;
    content->forEachElement([&](JsonValue block) {
        const std::optional<JsonValue> value = block.member("input");
        if (input || !value || textIn(block, {"type"}) != "tool_use") return;
        JsonWriter writer;
        writeValue(writer, *value);
        input = writer.finish().value_or("");
    });
    return input;
}

AIResult<std::string> decode(const std::string& body) {
    return readBody(body, [](JsonValue root) -> AIResult<std::string> {
        if (std::optional<std::string> input = toolInputIn(root)) return *std::move(input);
        return std::unexpected(AIError::badResponse("Claude didn't return the structured result"));
    });
}

}  // namespace

AIResult<std::string> ClaudeBackend::completeJSON(const JSONJob& job, std::stop_token stop) {
    if (access_.key.empty()) return std::unexpected(AIError::missingKey(kKind));
    const HttpPeer peer{.provider = kKind, .key = access_.key};
    AIResult<std::string> body = exchange(http_, peer,
                                          {.url = baseAddress(access_.endpoint) + "/v1/messages",
                                           .headers = {{.name = "x-api-key", .value = access_.key},
                                                       {.name = "anthropic-version", .value = std::string(kVersion)}},
                                           .body = bodyOf(job, access_.model),
                                           .timeout = kCloudTimeout},
                                          stop);
    if (!body) return std::unexpected(std::move(body.error()));
    return decode(*body);
}

}  // namespace tessary
