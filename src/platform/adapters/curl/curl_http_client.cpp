#include "platform/adapters/curl/curl_http_client.h"

#include <curl/curl.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <new>
#include <optional>
#include <string_view>
#include <utility>

#include "base/text.h"

namespace tessary {
namespace {

constexpr double kShortestTimeout = 0.001;        // seconds; curl takes 0 for "never"
constexpr double kLongestTimeout = 24 * 60 * 60;  // seconds
constexpr double kMillisecondsPerSecond = 1000;
constexpr int kLongestPoll = 60 * 60 * 1000;  // milliseconds; curl shortens it to its own timers
// Taken away unless the caller has them: waiting for the server's consent, and calling every body a form.
constexpr std::array kSuppressedHeaders{"Expect:", "Content-Type:"};

template <auto Free>
struct FreedBy {
    void operator()(auto* object) const { Free(object); }
};

using EasyHandle = std::unique_ptr<CURL, FreedBy<curl_easy_cleanup>>;
using MultiHandle = std::unique_ptr<CURLM, FreedBy<curl_multi_cleanup>>;
using Address = std::unique_ptr<CURLU, FreedBy<curl_url_cleanup>>;
using HeaderList = std::unique_ptr<curl_slist, FreedBy<curl_slist_free_all>>;
using CurlText = std::unique_ptr<char, FreedBy<curl_free>>;

template <class Handle>
Handle made(Handle handle) {
    if (handle == nullptr) throw std::bad_alloc();
    return handle;
}

CURLcode initializeOnce() {
    static const CURLcode code = curl_global_init(CURL_GLOBAL_DEFAULT);
    return code;
}

bool isControl(char c) { return (c >= 0 && c < ' ') || c == '\x7f'; }

bool isNameCharacter(char c) { return c > ' ' && c < '\x7f' && c != ':' && c != ';'; }

HttpFailure failure(HttpFailure::Kind kind, std::string_view message) {
    std::string line = scrubbedUtf8(trimmed(message));
    std::ranges::replace_if(line, isControl, ' ');
    return {.kind = kind, .message = std::move(line)};
}

CurlText partOf(CURLU* address, CURLUPart part) {
    char* text = nullptr;
    if (curl_url_get(address, part, &text, 0) != CURLUE_OK) return nullptr;
    return CurlText(text);
}

std::optional<HttpFailure> addressFailure(const std::string& url) {
    constexpr auto kKind = HttpFailure::Kind::invalidAddress;
    if (std::ranges::any_of(url, isControl)) return failure(kKind, "The address holds a control character");
    const auto address = made(Address(curl_url()));
    const CURLUcode code = curl_url_set(address.get(), CURLUPART_URL, url.c_str(), 0);
    if (code != CURLUE_OK) return failure(kKind, curl_url_strerror(code));
    const CurlText scheme = partOf(address.get(), CURLUPART_SCHEME);
    const std::string_view name = scheme ? scheme.get() : "";
    if (name != "http" && name != "https") return failure(kKind, "The address begins with neither http nor https");
    // curl also takes one slash, or three, before the host.
    const std::string_view rest = std::string_view(url).substr(name.size());
    if (!rest.starts_with("://") || rest.starts_with(":///")) return failure(kKind, "The address names no host");
    return std::nullopt;
}

/// A proxy can't reach what runs on the user's own machine.
bool isThisMachine(const std::string& url) {
    const auto address = made(Address(curl_url()));
    curl_url_set(address.get(), CURLUPART_URL, url.c_str(), 0);
    const CurlText host = partOf(address.get(), CURLUPART_HOST);
    const std::string name = asciiLowered(host ? host.get() : "");
    return name == "localhost" || name == "[::1]" || name.starts_with("127.");
}

std::optional<HttpFailure> headerFailure(const std::vector<HttpHeader>& headers) {
    for (const auto& [name, value] : headers) {
        if (name.empty() || !std::ranges::all_of(name, isNameCharacter)) {
            return failure(HttpFailure::Kind::other, "The name of a header holds a character that can't be sent");
        }
        if (std::ranges::any_of(value, isControl)) {
            return failure(HttpFailure::Kind::other, "The header " + name + " holds a character that can't be sent");
        }
    }
    return std::nullopt;
}

void append(HeaderList& list, const std::string& line) {
    curl_slist* start = list.release();
    list.reset(curl_slist_append(start, line.c_str()));
    if (list != nullptr) return;
    list.reset(start);
    throw std::bad_alloc();
}

HeaderList listOf(const std::vector<HttpHeader>& headers) {
    HeaderList list;
    for (const auto& [name, value] : headers) {
        // "Name:" would take the header away; "Name;" sends it empty.
        std::string line = name;
        const std::string_view text = trimmed(value);
        text.empty() ? line.append(";") : line.append(": ").append(text);
        append(list, line);
    }
    for (const char* line : kSuppressedHeaders) append(list, line);
    return list;
}

long millisecondsOf(double seconds) {
    const double usable =
        std::isnan(seconds) ? kShortestTimeout : std::clamp(seconds, kShortestTimeout, kLongestTimeout);
    return std::lround(std::ceil(usable * kMillisecondsPerSecond));
}

HttpFailure::Kind kindOf(CURLcode code) {
    switch (code) {
        case CURLE_URL_MALFORMAT: return HttpFailure::Kind::invalidAddress;
        case CURLE_COULDNT_CONNECT: return HttpFailure::Kind::unreachable;
        case CURLE_OPERATION_TIMEDOUT: return HttpFailure::Kind::timedOut;
        case CURLE_FILESIZE_EXCEEDED: return HttpFailure::Kind::tooLarge;
        default: return HttpFailure::Kind::other;
    }
}

/// One exchange. Points into the request, which must live as long.
class Transfer {
public:
    explicit Transfer(const HttpRequest& request) : headers_(listOf(request.headers)) {
        setUp(request);
        if (settingUp_ == CURLE_OK && curl_multi_add_handle(multi_.get(), easy_.get()) != CURLM_OK) {
            settingUp_ = CURLE_FAILED_INIT;
        }
    }
    Transfer(const Transfer&) = delete;
    Transfer& operator=(const Transfer&) = delete;
    ~Transfer() { curl_multi_remove_handle(multi_.get(), easy_.get()); }

    std::expected<HttpReply, HttpFailure> run(const std::stop_token& stop);

private:
    static std::size_t receive(const char* data, std::size_t size, std::size_t count, void* transfer) noexcept;

    void setUp(const HttpRequest& request);
    void setUpBody(const HttpRequest& request);
    /// The first option that curl refuses decides: no request goes out with less protection than it was meant to have.
    template <class Value>
    void set(CURLoption option, Value value) {
        if (settingUp_ == CURLE_OK) settingUp_ = curl_easy_setopt(easy_.get(), option, value);
    }
    /// What came of it, once curl has nothing left to do.
    std::expected<HttpReply, HttpFailure> outcome();
    HttpFailure failureOf(CURLcode code) const;

    std::array<char, CURL_ERROR_SIZE> error_{};
    std::string body_;
    bool isTooLarge_ = false;
    CURLcode settingUp_ = CURLE_OK;
    HeaderList headers_;
    MultiHandle multi_ = made(MultiHandle(curl_multi_init()));
    EasyHandle easy_ = made(EasyHandle(curl_easy_init()));
};

void Transfer::setUp(const HttpRequest& request) {
    set(CURLOPT_URL, request.url.c_str());
    set(CURLOPT_PROTOCOLS_STR, "http,https");
    if (isThisMachine(request.url)) set(CURLOPT_NOPROXY, "*");
    set(CURLOPT_FOLLOWLOCATION, 0L);
    set(CURLOPT_SSL_VERIFYPEER, 1L);
    set(CURLOPT_SSL_VERIFYHOST, 2L);
    set(CURLOPT_USERAGENT, "Tessary");
    set(CURLOPT_HTTPHEADER, headers_.get());
    set(CURLOPT_TIMEOUT_MS, millisecondsOf(request.timeout));
    set(CURLOPT_NOSIGNAL, 1L);  // other threads' signals are not curl's to touch
    set(CURLOPT_QUICK_EXIT, 1L);  // or a name server that is silent holds a cancelled request for seconds
    set(CURLOPT_ERRORBUFFER, error_.data());
    set(CURLOPT_MAXFILESIZE_LARGE, static_cast<curl_off_t>(kLargestHttpReply));
    set(CURLOPT_WRITEFUNCTION, &Transfer::receive);
    set(CURLOPT_WRITEDATA, static_cast<void*>(this));
    setUpBody(request);
}

void Transfer::setUpBody(const HttpRequest& request) {
    if (request.method == HttpRequest::Method::get) {
        set(CURLOPT_HTTPGET, 1L);
        return;
    }
    set(CURLOPT_POST, 1L);
    set(CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(request.body.size()));
    set(CURLOPT_POSTFIELDS, request.body.data());
}

std::size_t Transfer::receive(const char* data, std::size_t size, std::size_t count, void* transfer) noexcept {
    auto& self = *static_cast<Transfer*>(transfer);
    const std::size_t length = size * count;
    self.isTooLarge_ = length > kLargestHttpReply - self.body_.size();
    if (self.isTooLarge_) return CURL_WRITEFUNC_ERROR;
    self.body_.append(data, length);
    return length;
}

std::expected<HttpReply, HttpFailure> Transfer::run(const std::stop_token& stop) {
    if (settingUp_ != CURLE_OK) return std::unexpected(failureOf(settingUp_));
    const std::stop_callback wake(stop, [this] { curl_multi_wakeup(multi_.get()); });
    int running = 1;
    while (running > 0) {
        if (stop.stop_requested()) return std::unexpected(failure(HttpFailure::Kind::cancelled, "Cancelled"));
        CURLMcode code = curl_multi_perform(multi_.get(), &running);
        if (code == CURLM_OK && running > 0) code = curl_multi_poll(multi_.get(), nullptr, 0, kLongestPoll, nullptr);
        if (code != CURLM_OK) return std::unexpected(failure(HttpFailure::Kind::other, curl_multi_strerror(code)));
    }
    return outcome();
}

std::expected<HttpReply, HttpFailure> Transfer::outcome() {
    int left = 0;
    const CURLMsg* message = curl_multi_info_read(multi_.get(), &left);
    const CURLcode code = message != nullptr ? message->data.result : CURLE_FAILED_INIT;
    if (code != CURLE_OK) return std::unexpected(failureOf(code));
    long status = 0;
    curl_easy_getinfo(easy_.get(), CURLINFO_RESPONSE_CODE, &status);
    return HttpReply{.status = static_cast<int>(status), .body = std::move(body_)};
}

HttpFailure Transfer::failureOf(CURLcode code) const {
    const auto kind = isTooLarge_ ? HttpFailure::Kind::tooLarge : kindOf(code);
    if (kind == HttpFailure::Kind::tooLarge) return failure(kind, "The reply is too large");
    const std::string_view reason = error_.data();
    return failure(kind, reason.empty() ? curl_easy_strerror(code) : reason);
}

}  // namespace

std::expected<HttpReply, HttpFailure> CurlHttpClient::send(const HttpRequest& request, std::stop_token stop) {
    if (std::optional<HttpFailure> wrong = addressFailure(request.url)) return std::unexpected(std::move(*wrong));
    if (std::optional<HttpFailure> wrong = headerFailure(request.headers)) return std::unexpected(std::move(*wrong));
    if (const CURLcode code = initializeOnce(); code != CURLE_OK) {
        return std::unexpected(failure(HttpFailure::Kind::other, curl_easy_strerror(code)));
    }
    return Transfer(request).run(stop);
}

}  // namespace tessary
