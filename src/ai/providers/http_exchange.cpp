#include "ai/providers/http_exchange.h"

#include "ai/reply_json.h"
#include "base/text.h"

namespace tessary {
namespace {

/// A server may send a whole page of HTML.
constexpr std::size_t kLongestMessage = 500;  ///< bytes

std::string withoutKey(std::string text, const HttpPeer& peer) {
    return peer.key.empty() ? text : replacedAll(text, peer.key, "…");
}

/// One line of a length that can be shown.
std::string shortened(std::string_view message) {
    std::string line = replacedAll(scrubbedUtf8(trimmed(message)), "\n", " ");
    if (line.size() <= kLongestMessage) return line;
    std::size_t end = kLongestMessage;
    while (end > 0 && (static_cast<unsigned char>(line[end]) & 0xC0) == 0x80) --end;  // not inside a character
    return line.substr(0, end) + "…";
}

/// "error" → "message" where the body has it, else the body.
std::string messageIn(const std::string& body) {
    try {
        const JsonDocument document(body);
        const std::optional<JsonValue> error = document.root().member("error");
        const std::optional<JsonValue> message = error ? error->member("message") : std::nullopt;
        if (message && message->kind() == JsonKind::string) return std::string(message->asString());
    } catch (const JsonMismatch&) {
    }
    return body;
}

/// Seconds that an error's RetryInfo asks to wait ("37s").
std::optional<double> retryDelayIn(const std::string& body) {
    std::optional<double> delay;
    try {
        const JsonDocument document(body);
        const std::optional<JsonValue> error = document.root().member("error");
        const std::optional<JsonValue> details = error ? error->member("details") : std::nullopt;
        if (!details || details->kind() != JsonKind::array) return delay;
        details->forEachElement([&](JsonValue detail) {
            if (textIn(detail, {"@type"}).find("RetryInfo") == std::string::npos) return;
            std::string text = textIn(detail, {"retryDelay"});
            if (text.ends_with('s')) text.pop_back();
            if (const auto seconds = parseNumber<double>(text); seconds && *seconds >= 0) delay = seconds;
        });
    } catch (const JsonMismatch&) {
    }
    return delay;
}

AIError errorOf(const HttpFailure& failure, const HttpPeer& peer) {
    switch (failure.kind) {
        case HttpFailure::Kind::cancelled: return AIError::cancelled();
        case HttpFailure::Kind::invalidAddress:
            return AIError::unavailable("The " + std::string(labelOf(peer.provider)) + " address isn't valid");
        case HttpFailure::Kind::tooLarge: return AIError::badResponse("the reply was too large");
        case HttpFailure::Kind::unreachable:
            if (!peer.unreachable.empty()) return AIError::unavailable(peer.unreachable);
            break;
        default: break;
    }
    return AIError::network(withoutKey(failure.message, peer));
}

std::optional<AIError> statusError(const HttpReply& reply, const HttpPeer& peer) {
    const std::string label(labelOf(peer.provider));
    if (reply.status >= 200 && reply.status < 300) return std::nullopt;
    if (reply.status == 401 || reply.status == 403) return AIError::rejectedKey(peer.provider);
    if (reply.status == 429 || reply.status == 529) {
        const bool ownText = reply.status == 429 && !peer.limitReached.empty();
        AIError error = AIError::unavailable(ownText ? peer.limitReached : label + " is busy, try again in a minute");
        error.retryAfter = retryDelayIn(reply.body);
        return error;
    }
    return AIError::badResponse("HTTP " + std::to_string(reply.status) + ": " + shownText(messageIn(reply.body), peer));
}

}  // namespace

AIResult<std::string> exchange(HttpClient& http, const HttpPeer& peer, HttpRequest request, std::stop_token stop) {
    if (request.method == HttpRequest::Method::post) {
        request.headers.push_back({.name = "content-type", .value = "application/json"});
    }
    std::expected<HttpReply, HttpFailure> reply = http.send(request, stop);
    if (!reply) return std::unexpected(errorOf(reply.error(), peer));
    if (std::optional<AIError> error = statusError(*reply, peer)) return std::unexpected(*std::move(error));
    return std::move(reply->body);
}

std::string shownText(std::string text, const HttpPeer& peer) { return shortened(withoutKey(std::move(text), peer)); }

std::string baseAddress(std::string_view address) {
    address = trimmed(address);
    while (address.ends_with('/')) address.remove_suffix(1);
    return std::string(address);
}

}  // namespace tessary
