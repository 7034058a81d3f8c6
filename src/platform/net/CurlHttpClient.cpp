#include "platform/net/CurlHttpClient.h"

#include <algorithm>
#include <array>
#include <exception>
#include <fmt/format.h>
#include <memory>
#include <new>
#include <string_view>
#include <sys/socket.h>

#include "platform/Errors.h"
#include "platform/net/CurlHandles.h"
#include "platform/text/ContentType.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

using SteadyClock = std::chrono::steady_clock;

struct CloseMulti {
    void operator()(CURLM* handle) const { curl_multi_cleanup(handle); }
};
using Multi = std::unique_ptr<CURLM, CloseMulti>;

std::string sizeText(std::size_t bytes) {
    constexpr std::size_t megabyte = 1u << 20;
    if (bytes % megabyte == 0) return std::to_string(bytes / megabyte) + " MB";
    return std::to_string(bytes) + " bytes";
}

bool mustBeEncoded(unsigned char c) {
    return c <= ' ' || c >= 127 || c == '"' || c == '<' || c == '>';
}

/// A host name beyond ASCII stays: the library turns it into its own notation.
std::string encodedAddress(std::string_view url) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    const std::size_t host = url.find("//") + 2;
    const std::size_t path = std::min(url.find_first_of("/?#", host), url.size());
    std::string encoded(url.substr(0, path));
    for (const char c : url.substr(path)) {
        const auto byte = static_cast<unsigned char>(c);
        if (mustBeEncoded(byte)) {
            encoded.append({'%', digits[byte / 16], digits[byte % 16]});
        } else {
            encoded += c;
        }
    }
    return encoded;
}

/// One fetch. The library calls back into it, so it stays where it is.
class Transfer {
  public:
    Transfer(const HttpLimits& limits, const std::string& proxy, const std::string& address);
    Transfer(const Transfer&) = delete;
    Transfer& operator=(const Transfer&) = delete;
    ~Transfer() { curl_multi_remove_handle(multi_.get(), easy_.get()); }

    HttpClient::Answer run(Deadline deadline);

  private:
    /// Whatever changes when a fetch gets on.
    using Progress = std::array<curl_off_t, 7>;

    template <typename Value>
    void set(CURLoption option, Value value) {
        const CURLcode code = curl_easy_setopt(easy_.get(), option, value);
        if (code != CURLE_OK) throw Error(curl_easy_strerror(code));
    }
    curl_off_t measured(CURLINFO info) const;
    Progress progress() const;
    bool advance();  ///< false when it is done
    void wait(SteadyClock::time_point until);
    CURLcode outcome() const;
    std::string reason(CURLcode code) const;
    HttpClient::Answer answer();
    std::string tooLarge() const { return "the answer is larger than " + sizeText(limits_.bodyBytes); }

    bool takeBody(std::string_view piece);
    bool takeHeader(std::string_view line);
    static std::size_t onBody(char* data, std::size_t, std::size_t size, void* self) noexcept;
    static std::size_t onHeader(char* data, std::size_t, std::size_t size, void* self) noexcept;
    static curl_socket_t onSocket(void* self, curlsocktype purpose, curl_sockaddr* address) noexcept;
    std::string field(const char* name) const;
    Freshness freshness() const;

    const HttpLimits& limits_;
    curl::List header_;
    Multi multi_;
    curl::Easy easy_;
    std::string bytes_;
    std::string statusText_;
    std::string refusal_;  ///< why a callback stopped the fetch
    std::size_t headerBytes_ = 0;
};

Transfer::Transfer(const HttpLimits& limits, const std::string& proxy, const std::string& address)
    : limits_(limits), multi_(curl_multi_init()), easy_(curl_easy_init()) {
    if (!multi_ || !easy_) throw std::bad_alloc();
    set(CURLOPT_URL, address.c_str());
    set(CURLOPT_PROTOCOLS_STR, "http,https");
    set(CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
    set(CURLOPT_FOLLOWLOCATION, 1L);
    set(CURLOPT_MAXREDIRS, static_cast<long>(limits.redirects));
    // Later versions have no status text, and pages show it.
    set(CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
    set(CURLOPT_PROXY, proxy.c_str());
    set(CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);
    set(CURLOPT_USERAGENT, "Torvex");
    set(CURLOPT_NOSIGNAL, 1L);
    // A search for a name that doesn't end is left behind, not waited for.
    set(CURLOPT_QUICK_EXIT, 1L);
    set(CURLOPT_WRITEFUNCTION, &Transfer::onBody);
    set(CURLOPT_WRITEDATA, static_cast<void*>(this));
    set(CURLOPT_HEADERFUNCTION, &Transfer::onHeader);
    set(CURLOPT_HEADERDATA, static_cast<void*>(this));
    header_.reset(curl_slist_append(nullptr, fmt::format("{}: {}", fetchMarkField, fetchMark).c_str()));
    if (!header_) throw std::bad_alloc();
    set(CURLOPT_HTTPHEADER, header_.get());
    set(CURLOPT_OPENSOCKETFUNCTION, &Transfer::onSocket);
    set(CURLOPT_OPENSOCKETDATA, static_cast<void*>(this));
    curl_multi_add_handle(multi_.get(), easy_.get());
}

curl_off_t Transfer::measured(CURLINFO info) const {
    curl_off_t value = 0;
    curl_easy_getinfo(easy_.get(), info, &value);
    return value;
}

Transfer::Progress Transfer::progress() const {
    long requestBytes = 0;
    long redirects = 0;
    curl_easy_getinfo(easy_.get(), CURLINFO_REQUEST_SIZE, &requestBytes);
    curl_easy_getinfo(easy_.get(), CURLINFO_REDIRECT_COUNT, &redirects);
    return {measured(CURLINFO_NAMELOOKUP_TIME_T),
            measured(CURLINFO_CONNECT_TIME_T),
            measured(CURLINFO_APPCONNECT_TIME_T),
            measured(CURLINFO_SIZE_DOWNLOAD_T),
            static_cast<curl_off_t>(headerBytes_),
            requestBytes,
            redirects};
}

HttpClient::Answer Transfer::run(Deadline deadline) {
    const auto end = Deadline::in(limits_.total).orEarlier(deadline).until();
    auto stepEnd = SteadyClock::now() + limits_.step;
    for (Progress before{}; advance();) {
        const Progress now = progress();
        if (now != before) stepEnd = SteadyClock::now() + limits_.step;
        before = now;
        // What comes with a redirect is thrown away unseen by `takeBody`.
        if (measured(CURLINFO_SIZE_DOWNLOAD_T) > static_cast<curl_off_t>(limits_.bodyBytes)) {
            throw Error(tooLarge());
        }
        wait(std::min(stepEnd, end));
    }
    const CURLcode code = outcome();
    if (code != CURLE_OK) throw Error(reason(code));
    return answer();
}

bool Transfer::advance() {
    int running = 0;
    const CURLMcode code = curl_multi_perform(multi_.get(), &running);
    if (code != CURLM_OK) throw Error(curl_multi_strerror(code));
    return running > 0;
}

void Transfer::wait(SteadyClock::time_point until) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(until - SteadyClock::now());
    if (left.count() <= 0) throw Error(reason(CURLE_OPERATION_TIMEDOUT));
    const auto most = std::min<std::chrono::milliseconds::rep>(left.count(), 1000);
    const CURLMcode code = curl_multi_poll(multi_.get(), nullptr, 0, static_cast<int>(most), nullptr);
    if (code != CURLM_OK) throw Error(curl_multi_strerror(code));
}

CURLcode Transfer::outcome() const {
    int left = 0;
    const CURLMsg* message = curl_multi_info_read(multi_.get(), &left);
    return message == nullptr ? CURLE_GOT_NOTHING : message->data.result;
}

std::string Transfer::reason(CURLcode code) const {
    if (!refusal_.empty()) return refusal_;
    switch (code) {
        case CURLE_UNSUPPORTED_PROTOCOL:
            return "only http and https addresses can be fetched";
        case CURLE_URL_MALFORMAT:
            return "the address is not valid";
        case CURLE_COULDNT_RESOLVE_HOST:
            return "the server's name could not be found";
        case CURLE_COULDNT_CONNECT:
            return "the server could not be reached";
        case CURLE_OPERATION_TIMEDOUT:
            return "the server took too long to answer";
        case CURLE_TOO_MANY_REDIRECTS:
            return "more than " + std::to_string(limits_.redirects) + " redirects";
        case CURLE_GOT_NOTHING:
            return "the server gave no answer";
        case CURLE_PARTIAL_FILE:
            return "the answer broke off";
        case CURLE_PEER_FAILED_VERIFICATION:
            return "the server's certificate is not trusted";
        default:
            return curl_easy_strerror(code);
    }
}

/// Of the last answer on the way; "" when it isn't there.
std::string Transfer::field(const char* name) const {
    std::string value;
    curl_header* found = nullptr;
    for (std::size_t index = 0;
         curl_easy_header(easy_.get(), name, index, CURLH_HEADER, -1, &found) == CURLHE_OK; ++index) {
        value.append(value.empty() ? "" : ", ").append(found->value);
        if (index + 1 >= found->amount) break;
    }
    return value;
}

Freshness Transfer::freshness() const {
    const std::string cacheControl = field("Cache-Control");
    const std::string expires = field("Expires");
    const std::string date = field("Date");
    const std::string age = field("Age");
    const std::string vary = field("Vary");
    return freshnessOf({cacheControl, expires, date, age, vary, !field("Set-Cookie").empty()},
                       std::chrono::system_clock::now());
}

HttpClient::Answer Transfer::answer() {
    long status = 0;
    const char* contentType = nullptr;
    curl_easy_getinfo(easy_.get(), CURLINFO_RESPONSE_CODE, &status);
    curl_easy_getinfo(easy_.get(), CURLINFO_CONTENT_TYPE, &contentType);
    HttpClient::Answer answer;
    answer.status = static_cast<int>(status);
    answer.statusText = text::toValidUtf8(statusText_);
    if (contentType != nullptr) answer.contentType = contentType;
    answer.freshness = freshness();
    answer.body = decodeText(bytes_, answer.contentType);
    answer.bytes = std::move(bytes_);
    return answer;
}

bool Transfer::takeBody(std::string_view piece) {
    if (piece.size() > limits_.bodyBytes - bytes_.size()) {
        refusal_ = tooLarge();
        return false;
    }
    bytes_ += piece;
    return true;
}

/// Called for each line of the header of every answer on the way; the last one's status counts.
bool Transfer::takeHeader(std::string_view line) {
    headerBytes_ += line.size();
    if (headerBytes_ > limits_.headerBytes) {
        refusal_ = "the answer's header is too long";
        return false;
    }
    if (!line.starts_with("HTTP/")) return true;
    line = line.substr(0, line.find_last_not_of("\r\n") + 1);
    for (int part = 0; part < 2; ++part) line.remove_prefix(std::min(line.find(' '), line.size() - 1) + 1);
    statusText_ = text::trim(line);
    return true;
}

// The two below are called from C, which no exception may cross.

std::size_t Transfer::onBody(char* data, std::size_t, std::size_t size, void* self) noexcept {
    try {
        return static_cast<Transfer*>(self)->takeBody({data, size}) ? size : 0;
    } catch (const std::exception&) {
        return 0;
    }
}

std::size_t Transfer::onHeader(char* data, std::size_t, std::size_t size, void* self) noexcept {
    try {
        return static_cast<Transfer*>(self)->takeHeader({data, size}) ? size : 0;
    } catch (const std::exception&) {
        return 0;
    }
}

curl_socket_t Transfer::onSocket(void* self, curlsocktype, curl_sockaddr* address) noexcept {
    auto* transfer = static_cast<Transfer*>(self);
    auto* const mayReach = transfer->limits_.mayReach;
    if (mayReach != nullptr && !mayReach(address->addr)) {
        transfer->refusal_ = "the address is not a public one";
        return CURL_SOCKET_BAD;
    }
    return ::socket(address->family, address->socktype | SOCK_CLOEXEC, address->protocol);
}

}  // namespace

CurlHttpClient::CurlHttpClient(HttpLimits limits, std::string proxy)
    : limits_(limits), proxy_(std::move(proxy)) {
    curl::initialise();
}

HttpClient::Answer CurlHttpClient::get(const std::string& url, Deadline deadline) {
    if (!text::startsWith(url, "http://") && !text::startsWith(url, "https://")) {
        throw Error("only http and https addresses can be fetched");
    }
    return Transfer(limits_, proxy_, encodedAddress(url)).run(deadline);
}

}  // namespace torvex
