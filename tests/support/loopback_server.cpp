#include "support/loopback_server.h"

#include <netinet/in.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <optional>
#include <system_error>

#include "base/text.h"

namespace tessary {
namespace {

constexpr std::size_t kPieceSize = 65536;
constexpr std::string_view kHeadEnd = "\r\n\r\n";

std::string urlOf(std::uint16_t port) { return "http://127.0.0.1:" + std::to_string(port); }

LoopbackServer::Received parsedHead(std::string_view head) {
    LoopbackServer::Received request;
    const std::vector<std::string_view> lines = splitLines(head);
    const std::vector<std::string_view> words = split(lines.empty() ? "" : lines.front(), ' ');
    request.method = words.front();
    if (words.size() > 1) request.path = words[1];
    for (std::size_t i = 1; i < lines.size(); ++i) {
        const std::size_t colon = lines[i].find(':');
        if (colon == std::string_view::npos) continue;
        request.headers.emplace_back(lines[i].substr(0, colon), trimmed(lines[i].substr(colon + 1)));
    }
    return request;
}

std::size_t announcedLength(const LoopbackServer::Received& request) {
    const std::string text = request.header("Content-Length");
    std::size_t length = 0;
    std::from_chars(text.data(), text.data() + text.size(), length);
    return length;
}

std::string headOf(const LoopbackServer::Answer& answer) {
    std::string head = "HTTP/1.1 " + std::to_string(answer.status) + " Status\r\nConnection: close\r\n";
    head += "Content-Type: " + answer.contentType + "\r\n";
    if (answer.manner != LoopbackServer::Answer::Manner::endless) {
        head += "Content-Length: " + std::to_string(answer.body.size()) + "\r\n";
    }
    for (const auto& [name, value] : answer.headers) head.append(name).append(": ").append(value).append("\r\n");
    return head + "\r\n";
}

}  // namespace

/// One client's socket. Every wait ends when the server stops.
class LoopbackServer::Connection {
public:
    Connection(Descriptor socket, const Descriptor& stop) : socket_(std::move(socket)), stop_(stop) {}

    /// Nothing when the client goes or the server stops before the request is complete.
    std::optional<Received> readRequest();
    void send(const Answer& answer);

private:
    bool waitFor(short events);
    bool readMore(std::string& data);
    bool sendAll(std::string_view data);
    void waitUntilTheClientGoes();
    void dropWhenClosed();

    Descriptor socket_;
    const Descriptor& stop_;
};

bool LoopbackServer::Connection::waitFor(short events) {
    std::array<pollfd, 2> watched{pollfd{stop_.number(), POLLIN, 0}, pollfd{socket_.number(), events, 0}};
    while (::poll(watched.data(), watched.size(), -1) < 0) {
        if (errno != EINTR) return false;
    }
    return watched[0].revents == 0;
}

bool LoopbackServer::Connection::readMore(std::string& data) {
    std::array<char, kPieceSize> piece{};
    if (!waitFor(POLLIN)) return false;
    const ssize_t count = ::recv(socket_.number(), piece.data(), piece.size(), MSG_DONTWAIT);
    if (count < 0) return errno == EAGAIN || errno == EINTR;
    data.append(piece.data(), static_cast<std::size_t>(count));
    return count > 0;
}

bool LoopbackServer::Connection::sendAll(std::string_view data) {
    while (!data.empty()) {
        if (!waitFor(POLLOUT)) return false;
        const ssize_t count = ::send(socket_.number(), data.data(), data.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
        if (count < 0 && errno != EAGAIN && errno != EINTR) return false;
        if (count > 0) data.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

void LoopbackServer::Connection::waitUntilTheClientGoes() {
    std::string ignored;
    while (readMore(ignored)) ignored.clear();
}

void LoopbackServer::Connection::dropWhenClosed() {
    const linger atOnce{.l_onoff = 1, .l_linger = 0};
    ::setsockopt(socket_.number(), SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
}

std::optional<LoopbackServer::Received> LoopbackServer::Connection::readRequest() {
    std::string data;
    while (!data.contains(kHeadEnd)) {
        if (!readMore(data)) return std::nullopt;
    }
    const std::size_t headSize = data.find(kHeadEnd);
    Received request = parsedHead(std::string_view(data).substr(0, headSize));
    request.body = data.substr(headSize + kHeadEnd.size());
    const std::size_t length = announcedLength(request);
    while (request.body.size() < length) {
        if (!readMore(request.body)) return std::nullopt;
    }
    return request;
}

void LoopbackServer::Connection::send(const Answer& answer) {
    const std::string_view half = std::string_view(answer.body).substr(0, answer.body.size() / 2);
    switch (answer.manner) {
        case Answer::Manner::whole: sendAll(headOf(answer) + answer.body); break;
        case Answer::Manner::cutOff: sendAll(headOf(answer).append(half)); break;
        case Answer::Manner::drip:
            if (sendAll(headOf(answer).append(half))) waitUntilTheClientGoes();
            break;
        case Answer::Manner::endless:
            if (!sendAll(headOf(answer))) break;
            while (!answer.body.empty() && sendAll(answer.body)) continue;
            break;
        case Answer::Manner::hang: waitUntilTheClientGoes(); break;
        case Answer::Manner::garbage: sendAll(answer.body); break;
        case Answer::Manner::closeAtOnce: break;
        case Answer::Manner::reset: dropWhenClosed(); break;
    }
}

LoopbackServer::Descriptor::Descriptor(int number) : number_(number) {
    if (number < 0) throw std::system_error(errno, std::generic_category(), "loopback server");
}

LoopbackServer::Descriptor::~Descriptor() {
    if (number_ >= 0) ::close(number_);
}

std::string LoopbackServer::Received::header(std::string_view name) const {
    for (const auto& [key, value] : headers) {
        if (equalsIgnoringAsciiCase(key, name)) return value;
    }
    return {};
}

LoopbackServer::Descriptor LoopbackServer::boundSocket() {
    Descriptor result(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (::bind(result.number(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        throw std::system_error(errno, std::generic_category(), "bind");
    }
    return result;
}

std::uint16_t LoopbackServer::portOf(const Descriptor& socket) {
    sockaddr_in address{};
    socklen_t length = sizeof address;
    ::getsockname(socket.number(), reinterpret_cast<sockaddr*>(&address), &length);
    return ntohs(address.sin_port);
}

LoopbackServer::LoopbackServer() : listener_(boundSocket()), stop_(::eventfd(0, EFD_CLOEXEC)) {
    if (::listen(listener_.number(), SOMAXCONN) != 0) throw std::system_error(errno, std::generic_category(), "listen");
    acceptor_ = std::jthread([this] { acceptAll(); });
}

LoopbackServer::~LoopbackServer() {
    ::eventfd_write(stop_.number(), 1);
    acceptor_.join();
}

std::string LoopbackServer::address() const { return urlOf(portOf(listener_)); }

std::string LoopbackServer::refusedAddress() {
    static const Descriptor kept = boundSocket();  // never listens, and keeps the port from everybody else
    return urlOf(portOf(kept));
}

void LoopbackServer::setHandler(Handler handler) {
    const std::lock_guard lock(mutex_);
    handler_ = std::move(handler);
}

void LoopbackServer::answerNext(Answer answer) {
    const std::lock_guard lock(mutex_);
    queue_.push_back(std::move(answer));
}

std::vector<LoopbackServer::Received> LoopbackServer::requests() const {
    const std::lock_guard lock(mutex_);
    return requests_;
}

void LoopbackServer::waitForRequests(std::size_t count) const {
    std::unique_lock lock(mutex_);
    arrived_.wait(lock, [&] { return requests_.size() >= count; });
}

LoopbackServer::Answer LoopbackServer::answerTo(const Received& request) {
    std::unique_lock lock(mutex_);
    requests_.push_back(request);
    arrived_.notify_all();
    if (!queue_.empty()) {
        Answer answer = std::move(queue_.front());
        queue_.pop_front();
        return answer;
    }
    const Handler handler = handler_;
    lock.unlock();
    return handler ? handler(request) : Answer{.status = 404};
}

void LoopbackServer::acceptAll() {
    std::vector<std::jthread> connections;
    std::array<pollfd, 2> watched{pollfd{stop_.number(), POLLIN, 0}, pollfd{listener_.number(), POLLIN, 0}};
    while (true) {
        if (::poll(watched.data(), watched.size(), -1) < 0) continue;  // a signal
        if (watched[0].revents != 0) return;
        const int number = ::accept4(listener_.number(), nullptr, nullptr, SOCK_CLOEXEC);
        if (number < 0) continue;  // the client has gone already
        connections.emplace_back([this, socket = Descriptor(number)]() mutable {
            Connection connection(std::move(socket), stop_);
            if (const std::optional<Received> request = connection.readRequest()) connection.send(answerTo(*request));
        });
    }
}

}  // namespace tessary
