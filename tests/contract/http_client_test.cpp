#include "platform/http_client.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <thread>

#include "platform/adapters/curl/curl_http_client.h"
#include "support/loopback_server.h"

namespace tessary {
namespace {

using Answer = LoopbackServer::Answer;
using Manner = LoopbackServer::Answer::Manner;
using Kind = HttpFailure::Kind;
using Outcome = std::expected<HttpReply, HttpFailure>;

constexpr double kLong = 60;  // seconds; reached only when a test fails
constexpr double kForever = 3600;

class HttpClientTest : public ::testing::Test {
protected:
    HttpClientTest() {
        for (const char* name :
             {"http_proxy", "https_proxy", "all_proxy", "HTTPS_PROXY", "ALL_PROXY", "no_proxy", "NO_PROXY"}) {
            unsetenv(name);
        }
    }

    HttpRequest post(const std::string& path, std::string body = "{}") {
        return {.url = server_.address() + path, .headers = {}, .body = std::move(body), .timeout = kForever};
    }
    HttpRequest get(const std::string& path) {
        HttpRequest request = post(path, "");
        request.method = HttpRequest::Method::get;
        return request;
    }
    /// The reply, or a failed test.
    HttpReply replyTo(const HttpRequest& request) {
        Outcome outcome = client_.send(request, {});
        EXPECT_TRUE(outcome) << outcome.error().message;
        return outcome.value_or(HttpReply{});
    }
    HttpFailure failureOf(const HttpRequest& request) {
        const Outcome outcome = client_.send(request, {});
        EXPECT_FALSE(outcome) << request.url << " gave " << outcome->status;
        return outcome ? HttpFailure{} : outcome.error();
    }
    /// Sends from another thread, stops once the server has the request.
    Outcome stoppedWhenReceived(const HttpRequest& request) {
        const std::size_t before = server_.requests().size();
        std::stop_source source;
        Outcome outcome;
        std::jthread sender([&] { outcome = client_.send(request, source.get_token()); });
        server_.waitForRequests(before + 1);
        source.request_stop();
        sender.join();
        return outcome;
    }

    CurlHttpClient client_;
    LoopbackServer server_;
};

std::string everyByte() {
    std::string bytes;
    for (int i = 0; i < 256; ++i) bytes.push_back(static_cast<char>(i));
    return bytes;
}

TEST_F(HttpClientTest, PostsByteForByte) {
    const std::string megabytes = std::string(3000000, 'x') + everyByte();
    for (const std::string& body : {everyByte(), std::string(), std::string("{\"a\":\"é\"}"), megabytes}) {
        server_.answerNext({.body = body});
        HttpRequest request = post("/v1/chat?key=1&q=%20", body);
        request.headers = {
            {"Content-Type", "application/json"}, {"x-key", "a: b; c"}, {"x-empty", ""}, {"x-blank", " "}};
        const HttpReply reply = replyTo(request);
        EXPECT_EQ(reply.status, 200);
        EXPECT_TRUE(reply.body == body) << reply.body.size();
        const LoopbackServer::Received received = server_.requests().back();
        EXPECT_EQ(received.method, "POST");
        EXPECT_EQ(received.path, "/v1/chat?key=1&q=%20");
        EXPECT_TRUE(received.body == body) << received.body.size();
        EXPECT_EQ(received.header("content-type"), "application/json");
        EXPECT_EQ(received.header("X-Key"), "a: b; c");
        EXPECT_EQ(std::ranges::count(received.headers, LoopbackServer::Header("x-empty", "")), 1);
        EXPECT_EQ(std::ranges::count(received.headers, LoopbackServer::Header("x-blank", "")), 1);
    }
}

TEST_F(HttpClientTest, AddsNothingToARequestButItsName) {
    server_.setHandler([](const auto&) { return Answer{.headers = {{"Set-Cookie", "id=1; Path=/"}}}; });
    replyTo(post("/", std::string(2000000, 'x')));
    replyTo(get("/"));
    for (const LoopbackServer::Received& received : server_.requests()) {
        EXPECT_EQ(received.header("User-Agent"), "Tessary");
        for (const char* name : {"Expect", "Content-Type", "Cookie", "Authorization", "Accept-Encoding", "Referer"}) {
            EXPECT_EQ(received.header(name), "") << name;
        }
    }
    EXPECT_EQ(server_.requests().back().method, "GET");
    EXPECT_EQ(server_.requests().back().body, "");
}

TEST_F(HttpClientTest, EveryStatusIsAReply) {
    for (const int status : {200, 201, 400, 401, 404, 407, 429, 500, 503}) {
        server_.answerNext({.status = status, .body = "why"});
        const HttpReply reply = replyTo(post("/"));
        EXPECT_EQ(reply.status, status);
        EXPECT_EQ(reply.body, "why");
    }
    server_.answerNext({.status = 204});
    EXPECT_EQ(replyTo(get("/")).body, "");
}

TEST_F(HttpClientTest, FollowsNoRedirect) {
    const LoopbackServer elsewhere;
    for (const int status : {301, 302, 303, 307, 308}) {
        server_.answerNext({.status = status, .headers = {{"Location", elsewhere.address() + "/"}}});
        EXPECT_EQ(replyTo(post("/")).status, status);
    }
    EXPECT_TRUE(elsewhere.requests().empty());
    EXPECT_EQ(server_.requests().size(), 5U);
}

TEST_F(HttpClientTest, TellsWhyThereIsNoReply) {
    const std::string tooLarge(kLargestHttpReply + 1, 'x');
    struct Case {
        const char* name;
        Answer answer;
        double timeout;
        Kind kind;
    };
    const Case cases[] = {
        {"cut off", {.body = "half of this", .manner = Manner::cutOff}, kForever, Kind::other},
        {"garbage", {.body = "SSH-2.0-server\r\n", .manner = Manner::garbage}, kForever, Kind::other},
        {"closed", {.manner = Manner::closeAtOnce}, kForever, Kind::other},
        {"reset", {.manner = Manner::reset}, kForever, Kind::other},
        {"silent", {.manner = Manner::hang}, 0.2, Kind::timedOut},
        {"silent in mid body", {.body = "half of this", .manner = Manner::drip}, 0.2, Kind::timedOut},
        {"no time at all", {.manner = Manner::hang}, 0, Kind::timedOut},
        {"announces too much", {.body = tooLarge, .manner = Manner::drip}, kLong, Kind::tooLarge},
        {"sends too much", {.body = std::string(65536, 'x'), .manner = Manner::endless}, kLong, Kind::tooLarge},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.name);
        server_.setHandler([answer = each.answer](const auto&) { return answer; });
        HttpRequest request = post("/path?key=hidden");
        request.headers = {{"Authorization", "Bearer hidden"}};
        request.timeout = each.timeout;
        const HttpFailure failure = failureOf(request);
        EXPECT_EQ(failure.kind, each.kind) << failure.message;
        EXPECT_FALSE(failure.message.empty());
        EXPECT_FALSE(failure.message.contains("hidden")) << failure.message;
        EXPECT_FALSE(failure.message.contains('\n')) << failure.message;
    }
}

TEST_F(HttpClientTest, TakesTheLargestReply) {
    server_.answerNext({.body = std::string(kLargestHttpReply, 'x')});
    EXPECT_EQ(replyTo(get("/")).body.size(), kLargestHttpReply);
}

TEST_F(HttpClientTest, TellsWhenNobodyListens) {
    HttpRequest request = post("/");
    request.url = LoopbackServer::refusedAddress() + "/";
    EXPECT_EQ(failureOf(request).kind, Kind::unreachable);
}

TEST_F(HttpClientTest, RefusesInvalidAddresses) {
    const std::string host = server_.address().substr(std::string_view("http://").size());
    const std::string urls[] = {"",
                                "localhost:11434",
                                "http://",
                                "http:///x",
                                "http:/" + host,
                                "ftp://x/",
                                "ftp://" + host + "/",
                                "http://a b/",
                                "http://h:99999/",
                                "http://h:port/",
                                "file:///etc/passwd",
                                host + "/",
                                "/path",
                                " " + server_.address(),
                                server_.address() + "/a\r\nHost: x",
                                server_.address() + std::string("/a\0b", 4)};
    for (const std::string& url : urls) {
        HttpRequest request = post("/");
        request.url = url;
        const HttpFailure failure = failureOf(request);
        EXPECT_EQ(failure.kind, Kind::invalidAddress) << url << ": " << failure.message;
        EXPECT_FALSE(failure.message.empty()) << url;
    }
    EXPECT_TRUE(server_.requests().empty());
}

TEST_F(HttpClientTest, RefusesHeadersThatWouldBeSeveral) {
    const HttpHeader headers[] = {
        {"x-key", "hidden\r\nx-admin: 1"}, {"x-key", "hidden\n"},  {"x-key", std::string("hidden\0", 7)},
        {"x-key\r\nx-admin", "hidden"},    {"x-key: 1", "hidden"}, {"", "hidden"}};
    for (const HttpHeader& header : headers) {
        HttpRequest request = post("/");
        request.headers = {header};
        const HttpFailure failure = failureOf(request);
        EXPECT_EQ(failure.kind, Kind::other);
        EXPECT_FALSE(failure.message.empty());
        EXPECT_FALSE(failure.message.contains("hidden")) << failure.message;
    }
    EXPECT_TRUE(server_.requests().empty());
}

TEST_F(HttpClientTest, SendsNothingOnceStopped) {
    std::stop_source source;
    source.request_stop();
    const Outcome outcome = client_.send(post("/"), source.get_token());
    ASSERT_FALSE(outcome);
    EXPECT_EQ(outcome.error().kind, Kind::cancelled);
    EXPECT_TRUE(server_.requests().empty());
}

TEST_F(HttpClientTest, StopsInMidExchange) {
    server_.answerNext({.manner = Manner::hang});
    server_.answerNext({.body = std::string(2000000, 'x'), .manner = Manner::drip});
    std::stop_source source;
    std::array<Outcome, 2> outcomes;
    std::vector<std::jthread> senders;
    senders.reserve(outcomes.size());
    for (Outcome& outcome : outcomes) {
        senders.emplace_back([&] { outcome = client_.send(post("/"), source.get_token()); });
    }
    server_.waitForRequests(outcomes.size());
    // While this one runs out of time, the others come to wait for nothing but the server and the stop.
    server_.answerNext({.manner = Manner::hang});
    HttpRequest shorter = post("/");
    shorter.timeout = 0.5;
    EXPECT_EQ(failureOf(shorter).kind, Kind::timedOut);
    source.request_stop();
    senders.clear();
    for (const Outcome& outcome : outcomes) {
        ASSERT_FALSE(outcome);
        EXPECT_EQ(outcome.error().kind, Kind::cancelled);
    }
}

TEST_F(HttpClientTest, StopsWhileTheReplyComesIn) {
    server_.setHandler([](const auto&) { return Answer{.body = "done"}; });
    for (int i = 0; i < 50; ++i) {
        const Outcome outcome = stoppedWhenReceived(post("/"));
        if (outcome) {
            EXPECT_EQ(outcome->body, "done");
        } else {
            EXPECT_EQ(outcome.error().kind, Kind::cancelled);
        }
    }
}

TEST_F(HttpClientTest, UsesTheProxyOfTheEnvironment) {
    LoopbackServer proxy;
    proxy.answerNext({.body = "from the proxy"});
    HttpRequest request = post("/");
    request.url = "http://notebook.invalid/v1/chat?q=1";
    setenv("http_proxy", proxy.address().c_str(), 1);
    const HttpReply reply = replyTo(request);
    server_.answerNext({.body = "from the machine's own server"});
    EXPECT_EQ(replyTo(post("/")).body, "from the machine's own server");
    unsetenv("http_proxy");
    EXPECT_EQ(reply.body, "from the proxy");
    ASSERT_EQ(proxy.requests().size(), 1U);
    EXPECT_EQ(proxy.requests().front().path, request.url);
}

TEST_F(HttpClientTest, ServesManyThreadsAtOnce) {
    server_.setHandler(
        [](const LoopbackServer::Received& received) { return Answer{.body = received.path + " " + received.body}; });
    std::atomic<int> correct = 0;
    const auto sendSome = [&](int sender) {
        for (int i = 0; i < 20; ++i) {
            const std::string path = "/" + std::to_string(sender);
            const Outcome outcome = client_.send(post(path, std::to_string(i)), {});
            if (outcome && outcome->body == path + " " + std::to_string(i)) ++correct;
        }
    };
    std::array<std::jthread, 8> senders;
    for (int i = 0; std::jthread & sender : senders) sender = std::jthread(sendSome, i++);
    for (std::jthread& sender : senders) sender.join();
    EXPECT_EQ(correct, 8 * 20);
    EXPECT_EQ(server_.requests().size(), 8U * 20U);
}

/// A TLS server whose certificate, though otherwise in order, nobody vouches for.
class UntrustedServer {
public:
    UntrustedServer() {
        std::filesystem::create_directories(folder_);
        const std::string key = folder_ / "key.pem";
        const std::string certificate = folder_ / "certificate.pem";
        const std::string command =
            "openssl req -x509 -newkey rsa:2048 -nodes -days 2 -subj /CN=127.0.0.1 -addext "
            "subjectAltName=IP:127.0.0.1 -keyout " +
            key + " -out " + certificate + " 2>" + (folder_ / "log").string();
        if (std::system(command.c_str()) != 0) throw std::runtime_error("openssl made no certificate");
        start({"openssl", "s_server", "-accept", "127.0.0.1:0", "-www", "-key", key, "-cert", certificate});
    }
    UntrustedServer(const UntrustedServer&) = delete;
    UntrustedServer& operator=(const UntrustedServer&) = delete;
    ~UntrustedServer() {
        ::kill(process_, SIGKILL);
        ::waitpid(process_, nullptr, 0);
        ::close(output_);
        std::filesystem::remove_all(folder_);
    }

    [[nodiscard]] std::string address() const { return "https://" + host_; }

private:
    void start(std::vector<std::string> arguments) {
        std::vector<char*> pointers(arguments.size() + 1, nullptr);
        std::ranges::transform(arguments, pointers.begin(), [](std::string& argument) { return argument.data(); });
        std::array<int, 2> ends{};
        if (::pipe(ends.data()) != 0) throw std::runtime_error("no pipe");
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
        posix_spawn_file_actions_addclose(&actions, ends[0]);
        const int failed = posix_spawnp(&process_, "openssl", &actions, nullptr, pointers.data(), environ);
        posix_spawn_file_actions_destroy(&actions);
        ::close(ends[1]);
        output_ = ends[0];
        if (failed != 0) throw std::runtime_error("openssl did not start");
        host_ = announcedHost();
    }
    /// What follows "ACCEPT " in its output.
    std::string announcedHost() const {
        std::string output;
        char next = 0;
        while (::read(output_, &next, 1) == 1) {
            if (next != '\n') {
                output.push_back(next);
            } else if (output.starts_with("ACCEPT ")) {
                return output.substr(7);
            } else {
                output.clear();
            }
        }
        throw std::runtime_error("openssl announced no port");
    }

    std::filesystem::path folder_ = ::testing::TempDir() + "tessary-tls-" + std::to_string(::getpid());
    pid_t process_ = -1;
    int output_ = -1;
    std::string host_;
};

TEST_F(HttpClientTest, RefusesAnUntrustedCertificate) {
    const UntrustedServer untrusted;
    HttpRequest request = get("/");
    request.url = untrusted.address() + "/";
    const HttpFailure failure = failureOf(request);
    EXPECT_EQ(failure.kind, Kind::other);
    EXPECT_TRUE(failure.message.contains("certificate")) << failure.message;
}

}  // namespace
}  // namespace tessary
