#pragma once

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

namespace tessary {

/// A real HTTP/1.1 server on 127.0.0.1 for tests, on a free port and with threads of its own. It answers one request
/// for each connection, several at once, and keeps what it was sent. Any thread may call it.
///
///     LoopbackServer server;
///     server.answerNext({.status = 429, .body = "slow down"});
///     server.setHandler([](const LoopbackServer::Received& request) { return LoopbackServer::Answer{…}; });
class LoopbackServer {
public:
    using Header = std::pair<std::string, std::string>;

    struct Received {
        std::string method;
        std::string path;  ///< with the query; the whole URL when the server is used as a proxy
        std::vector<Header> headers;
        std::string body;

        /// The first value under this name, in any case; empty when there is none.
        [[nodiscard]] std::string header(std::string_view name) const;
    };

    struct Answer {
        enum class Manner {
            whole,
            cutOff,       ///< announces all of the body, sends half of it and closes
            drip,         ///< announces all of the body, sends half of it, then nothing more
            endless,      ///< announces no length and sends the body over and over until the client goes
            hang,         ///< nothing at all, until the client goes
            garbage,      ///< the bare body, without status and headers
            closeAtOnce,  ///< closes in good order without a byte
            reset,        ///< drops the connection
        };
        int status = 200;
        std::string body = {};
        std::string contentType = "application/json";
        std::vector<Header> headers = {};  ///< further ones
        Manner manner = Manner::whole;
    };

    /// Called on the server's threads, by several at once, for a request given up too; what it refers to must outlive
    /// the server. Must return by itself and not throw.
    using Handler = std::function<Answer(const Received&)>;

    LoopbackServer();
    LoopbackServer(const LoopbackServer&) = delete;
    LoopbackServer& operator=(const LoopbackServer&) = delete;
    /// Drops every connection, also one that hangs.
    ~LoopbackServer();

    /// "http://127.0.0.1:PORT"
    [[nodiscard]] std::string address() const;
    /// An address where nobody ever listens, as long as this process lives.
    [[nodiscard]] static std::string refusedAddress();

    /// Answers what no queued answer is for. Before the first call that is an empty 404.
    void setHandler(Handler handler);
    /// Queues an answer: each is used once, in order, before the handler is asked.
    void answerNext(Answer answer);

    /// All complete requests so far, in the order in which they came in.
    [[nodiscard]] std::vector<Received> requests() const;
    /// Blocks until so many complete requests have come in since the start, however they are answered.
    void waitForRequests(std::size_t count) const;

private:
    /// Closes a descriptor at its end.
    class Descriptor {
    public:
        explicit Descriptor(int number);
        Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
        Descriptor& operator=(Descriptor&&) = delete;
        ~Descriptor();
        [[nodiscard]] int number() const { return number_; }

    private:
        int number_;
    };
    class Connection;

    static Descriptor boundSocket();
    static std::uint16_t portOf(const Descriptor& socket);

    void acceptAll();
    Answer answerTo(const Received& request);

    Descriptor listener_;
    Descriptor stop_;  // readable for good once the server stops
    mutable std::mutex mutex_;
    mutable std::condition_variable arrived_;
    std::vector<Received> requests_;
    std::deque<Answer> queue_;
    Handler handler_;
    std::jthread acceptor_;  // last: it is joined before the rest goes away
};

}  // namespace tessary
