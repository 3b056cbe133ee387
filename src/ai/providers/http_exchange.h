#pragma once

#include <stop_token>
#include <string>

#include "ai/ai_error.h"
#include "platform/http_client.h"

namespace tessary {

/// Whose server is asked.
struct HttpPeer {
    AIProviderKind provider = AIProviderKind::openai;
    std::string key = {};           ///< must not come out again in any error; empty when there is none
    std::string limitReached = {};  ///< the sentence for status 429; empty for the usual one
    std::string unreachable = {};  ///< the sentence for a server that does not listen; empty for the system's reason
};

/// Seconds.
inline constexpr double kCloudTimeout = 120;

/// Sends a request, a post as JSON. Gives the body of a reply whose status is 200 to 299; anything else as the error
/// that it means to the user.
[[nodiscard]] AIResult<std::string> exchange(HttpClient& http, const HttpPeer& peer, HttpRequest request,
                                             std::stop_token stop);

/// What a server says, as it can be shown: one short line without the key.
[[nodiscard]] std::string shownText(std::string text, const HttpPeer& peer);

/// An address without white space around it and slashes at its end.
[[nodiscard]] std::string baseAddress(std::string_view address);

}  // namespace tessary
