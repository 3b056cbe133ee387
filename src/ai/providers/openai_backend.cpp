#include "ai/providers/openai_backend.h"

#include "ai/providers/chat_messages.h"
#include "ai/providers/http_exchange.h"
#include "ai/reply_json.h"

namespace tessary {
namespace {

constexpr AIProviderKind kKind = AIProviderKind::openai;

std::string bodyOf(const JSONJob& job, std::string_view model) {
    JsonWriter writer;
    writer.beginObject();
    writer.key("model");
    writer.string(model);
    writer.key("response_format");
    writer.beginObject();
    writer.key("type");
    writer.string("json_object");
    writer.endObject();
    writer.key("messages");
    writer.beginArray();
    writeMessage(writer, "system", job.system);
    writeMessage(writer, "user", job.user + shapeInstruction(job.shape));
    writer.endArray();
    writer.endObject();
    return writer.finish().value_or("");
}

AIResult<std::string> decode(const std::string& body) {
    return readBody(body, [](JsonValue root) -> AIResult<std::string> {
        const std::optional<JsonValue> choices = root.member("choices");
        const std::optional<JsonValue> choice = choices ? choices->firstElement() : std::nullopt;
        const std::optional<JsonValue> message = choice ? choice->member("message") : std::nullopt;
        std::string content = message ? textIn(*message, {"content"}) : "";
        if (content.empty()) return std::unexpected(AIError::badResponse("OpenAI returned no message"));
        return content;
    });
}

}  // namespace

AIResult<std::string> OpenAIBackend::completeJSON(const JSONJob& job, std::stop_token stop) {
    if (access_.key.empty()) return std::unexpected(AIError::missingKey(kKind));
    const HttpPeer peer{.provider = kKind, .key = access_.key};
    AIResult<std::string> body = exchange(http_, peer,
                                          {.url = baseAddress(access_.endpoint) + "/v1/chat/completions",
                                           .headers = {{.name = "Authorization", .value = "Bearer " + access_.key}},
                                           .body = bodyOf(job, access_.model),
                                           .timeout = kCloudTimeout},
                                          stop);
    if (!body) return std::unexpected(std::move(body.error()));
    return decode(*body);
}

}  // namespace tessary
