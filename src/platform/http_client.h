#pragma once

#include <cstddef>
#include <expected>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

namespace tessary {

struct HttpHeader {
    std::string name;
    std::string value;
};

struct HttpRequest {
    enum class Method { get, post };

    Method method = Method::post;
    std::string url;  ///< absolute, "http" or "https"
    std::vector<HttpHeader> headers = {};
    std::string body = {};  ///< of a post
    double timeout = 120;   ///< seconds for the whole exchange
};

/// A reply, whatever its status. A redirect is a reply like any other: it is never followed, so that what a request
/// carries reaches no other host.
struct HttpReply {
    int status = 0;
    std::string body;
};

/// Why there was no reply.
struct HttpFailure {
    enum class Kind {
        cancelled,
        invalidAddress,  ///< the URL can't be used; nothing was sent
        unreachable,     ///< refused, or no way to the host
        timedOut,
        tooLarge,        ///< the reply went past `kLargestHttpReply`
        other,           ///< name not found, certificate, connection lost, …
    };
    Kind kind = Kind::other;
    std::string message;  ///< the system's reason, for people; never holds a header or the query of the URL
};

/// Bytes; a longer reply is refused as it comes in.
inline constexpr std::size_t kLargestHttpReply = std::size_t{32} * 1024 * 1024;

/// Blocking HTTP. Certificates are always checked, and proxies of the environment are used, but for the machine's own
/// servers. Any thread.
class HttpClient {
public:
    virtual ~HttpClient() = default;
    /// Returns within 50 ms when `stop` is requested.
    [[nodiscard]] virtual std::expected<HttpReply, HttpFailure> send(const HttpRequest& request,
                                                                     std::stop_token stop) = 0;
};

}  // namespace tessary
