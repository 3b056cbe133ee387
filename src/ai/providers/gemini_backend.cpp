#include "ai/providers/gemini_backend.h"

#include <algorithm>

#include "ai/providers/http_exchange.h"
#include "ai/reply_json.h"
#include "base/text.h"

namespace tessary {
namespace {

constexpr AIProviderKind kKind = AIProviderKind::gemini;

/// A path segment's characters (RFC 3986, pchar without percent-encoding) and "/".
bool isPathCharacter(char c) {
    constexpr std::string_view kMarks = "-._~!$&'()*+,;=:@/";
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
           kMarks.find(c) != std::string_view::npos;
}

void writeParts(JsonWriter& writer, std::string_view text) {
    writer.key("parts");
    writer.beginArray();
    writer.beginObject();
    writer.key("text");
    writer.string(text);
    writer.endObject();
    writer.endArray();
}

std::string bodyOf(const JSONJob& job) {
    JsonWriter writer;
    writer.beginObject();
    writer.key("systemInstruction");
    writer.beginObject();
    writeParts(writer, job.system);
    writer.endObject();
    writer.key("contents");
    writer.beginArray();
    writer.beginObject();
    writeParts(writer, job.user);
    writer.endObject();
    writer.endArray();
    writer.key("generationConfig");
    writer.beginObject();
    writer.key("temperature");
    writer.number(0.3);
    writer.key("maxOutputTokens");
    writer.integer(8192);
    writer.key("responseMimeType");
    writer.string("application/json");
    writer.key("responseJsonSchema");
    writer.raw(job.schema);
    writer.endObject();
    writer.endObject();
    return writer.finish().value_or("");
}

/// The texts of all parts that are no thoughts of the model, one after the other.
std::string answerIn(JsonValue candidate) {
    std::string answer;
    const std::optional<JsonValue> content = candidate.member("content");
    const std::optional<JsonValue> parts = content ? content->member("parts") : std::nullopt;
    if (!parts || parts->kind() != JsonKind::array) return answer;
    parts->forEachElement([&](JsonValue part) {
        const std::optional<JsonValue> thought = part.member("thought");
        if (thought && thought->kind() == JsonKind::boolean && thought->asBool()) return;
        const std::optional<JsonValue> text = part.member("text");
        if (text && text->kind() == JsonKind::string) answer += text->asString();
    });
    return answer;
}

AIResult<std::string> decode(const std::string& body, const HttpPeer& peer) {
    return readBody(body, [&](JsonValue root) -> AIResult<std::string> {
        if (const std::optional<JsonValue> feedback = root.member("promptFeedback")) {
            const std::string reason = shownText(textIn(*feedback, {"blockReason"}), peer);
            if (!reason.empty()) {
                return std::unexpected(AIError::unavailable("Gemini blocked the request (" + reason + ")"));
            }
        }
        const std::optional<JsonValue> candidates = root.member("candidates");
        const std::optional<JsonValue> candidate = candidates ? candidates->firstElement() : std::nullopt;
        const std::string reason = candidate ? textIn(*candidate, {"finishReason"}) : "";
        if (reason == "SAFETY" || reason == "RECITATION") {
            return std::unexpected(AIError::unavailable("Gemini declined to answer (" + reason + ")"));
        }
        std::string answer = candidate ? answerIn(*candidate) : "";
        if (trimmed(answer).empty()) return std::unexpected(AIError::badResponse("Gemini returned no message"));
        return answer;
    });
}

}  // namespace

AIResult<std::string> GeminiBackend::completeJSON(const JSONJob& job, std::stop_token stop) {
    if (access_.key.empty()) return std::unexpected(AIError::missingKey(kKind));
    const std::string model(trimmed(access_.model));
    if (model.empty() || !std::ranges::all_of(model, isPathCharacter)) {
        return std::unexpected(AIError::unavailable("The Gemini model name isn't valid"));
    }
    const HttpPeer peer{.provider = kKind,
                        .key = access_.key,
                        .limitReached = "Gemini's free limit was reached. Wait a minute and try again."};
    AIResult<std::string> body =
        exchange(http_, peer,
                 {.url = baseAddress(access_.endpoint) + "/v1beta/models/" + model + ":generateContent",
                  .headers = {{.name = "x-goog-api-key", .value = access_.key}},
                  .body = bodyOf(job),
                  .timeout = kCloudTimeout},
                 stop);
    if (!body) return std::unexpected(std::move(body.error()));
    return decode(*body, peer);
}

}  // namespace tessary
