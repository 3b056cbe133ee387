#include "ai/providers/ollama_backend.h"

#include "ai/providers/chat_messages.h"
#include "ai/providers/http_exchange.h"
#include "ai/reply_json.h"
#include "base/text.h"

namespace tessary {
namespace {

constexpr double kTimeout = 300;      ///< seconds; a local model is slow
constexpr double kListTimeout = 30;   ///< seconds

std::string bodyOf(const JSONJob& job, std::string_view model) {
    JsonWriter writer;
    writer.beginObject();
    writer.key("model");
    writer.string(model);
    writer.key("stream");
    writer.boolean(false);
    writer.key("format");
    writer.string("json");
    writer.key("messages");
    writer.beginArray();
    writeMessage(writer, "system", job.system);
    writeMessage(writer, "user", job.user + shapeInstruction(job.shape));
    writer.endArray();
    writer.endObject();
    return writer.finish().value_or("");
}

/// A reasoning model thinks aloud before it answers. A block that is never closed stays.
std::string withoutThinking(std::string_view text) {
    constexpr std::string_view kOpen = "<think>";
    constexpr std::string_view kClose = "</think>";
    std::string result;
    while (true) {
        const std::size_t open = text.find(kOpen);
        const std::size_t close = open == std::string_view::npos ? open : text.find(kClose, open + kOpen.size());
        if (close == std::string_view::npos) break;
        result += text.substr(0, open);
        text.remove_prefix(close + kClose.size());
    }
    result += text;
    return std::string(trimmed(result));
}

AIResult<std::string> decode(const std::string& body) {
    return readBody(body, [](JsonValue root) -> AIResult<std::string> {
        const std::optional<JsonValue> message = root.member("message");
        std::string answer = message ? withoutThinking(textIn(*message, {"content"})) : "";
        if (answer.empty()) return std::unexpected(AIError::badResponse("Ollama returned no message"));
        return answer;
    });
}

/// A model named without a tag is its latest one.
bool isSameModel(std::string_view chosen, std::string_view pulled) {
    constexpr std::string_view kLatest = ":latest";
    if (chosen == pulled) return true;
    return chosen.find(':') == std::string_view::npos && pulled.ends_with(kLatest) &&
           pulled.substr(0, pulled.size() - kLatest.size()) == chosen;
}

AIResult<bool> hasModel(const std::string& body, std::string_view chosen) {
    return readBody(body, [&](JsonValue root) -> AIResult<bool> {
        const std::optional<JsonValue> models = root.member("models");
        bool found = false;
        if (models && models->kind() == JsonKind::array) {
            models->forEachElement([&](JsonValue model) { found |= isSameModel(chosen, textIn(model, {"name"})); });
        }
        return found;
    });
}

}  // namespace

OllamaBackend::OllamaBackend(HttpClient& http, Access access) : http_(http), access_(std::move(access)) {
    access_.address = baseAddress(access_.address);
    access_.model = trimmed(access_.model);
    peer_ = {.provider = AIProviderKind::ollama, .unreachable = "Ollama isn't running at " + access_.address};
}

AIResult<void> OllamaBackend::prepare(std::stop_token stop) {
    const AIResult<std::string> body = exchange(
        http_, peer_,
        {.method = HttpRequest::Method::get, .url = access_.address + "/api/tags", .timeout = kListTimeout}, stop);
    if (!body) return std::unexpected(body.error());
    const AIResult<bool> found = hasModel(*body, access_.model);
    if (!found) return std::unexpected(found.error());
    if (!*found) return std::unexpected(AIError::unavailable("Run `ollama pull " + access_.model + "` first"));
    return {};
}

AIResult<std::string> OllamaBackend::completeJSON(const JSONJob& job, std::stop_token stop) {
    const AIResult<std::string> body =
        exchange(http_, peer_,
                 {.url = access_.address + "/api/chat", .body = bodyOf(job, access_.model), .timeout = kTimeout}, stop);
    if (!body) return std::unexpected(body.error());
    return decode(*body);
}

}  // namespace tessary
