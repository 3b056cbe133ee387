#pragma once

#include "platform/http_client.h"

namespace tessary {

/// HTTP through libcurl. Each request has a connection of its own, so that calls share nothing and none waits for
/// another.
class CurlHttpClient final : public HttpClient {
public:
    [[nodiscard]] std::expected<HttpReply, HttpFailure> send(const HttpRequest& request, std::stop_token stop) override;
};

}  // namespace tessary
