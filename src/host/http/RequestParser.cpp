#include "host/http/RequestParser.h"

#include <boost/beast/http/basic_parser.hpp>
#include <cstring>
#include <limits>
#include <optional>

#include "host/http/BodyGrowth.h"
#include "host/http/MethodNames.h"

namespace torvex {

namespace http = boost::beast::http;
using boost::beast::error_code;
using boost::beast::string_view;

namespace {

constexpr std::size_t notFound = std::string_view::npos;

std::string_view view(string_view text) {
    return {text.data(), text.size()};
}

bool isTokenStart(char c) {
    return (ascii::lower(c) >= 'a' && ascii::lower(c) <= 'z') || ascii::isDigit(c) ||
           std::string_view("!#$%&'*+-.^_`|~").find(c) != notFound;
}

bool isAllDigits(std::string_view text) {
    return !text.empty() && std::all_of(text.begin(), text.end(), ascii::isDigit);
}

int statusOf(const error_code& error) {
    return error == http::error::body_limit ? 413 : 400;
}

}  // namespace

/// Hands on what the library's parser finds. Fields of a trailer, behind the body, are dropped: nothing may
/// come in there that the header's checks have not seen.
class RequestParser::Reader final : public http::basic_parser<true> {
  public:
    Reader(RequestHead& head, std::string& body) : head_(head), body_(body) {}

  private:
    void on_request_impl(http::verb, string_view method, string_view target, int version,
                         error_code& error) override {
        error = {};
        head_.method = methodOf(view(method));
        head_.methodText = view(method);
        head_.target = view(target);
        head_.version = version;
    }
    void on_field_impl(http::field, string_view name, string_view value, error_code& error) override {
        error = {};
        if (!headerDone_) head_.fields.emplace_back(view(name), view(value));
    }
    void on_header_impl(error_code& error) override {
        error = {};
        headerDone_ = true;
    }
    void on_body_init_impl(const boost::optional<std::uint64_t>& length, error_code& error) override {
        error = {};
        growth_.begin(body_, static_cast<std::size_t>(length.value_or(0)));
    }
    std::size_t on_body_impl(string_view bytes, error_code& error) override { return add(bytes, error); }
    std::size_t on_chunk_body_impl(std::uint64_t, string_view bytes, error_code& error) override {
        return add(bytes, error);
    }
    void on_response_impl(int, string_view, int, error_code&) override {}
    void on_chunk_header_impl(std::uint64_t, string_view, error_code& error) override { error = {}; }
    void on_finish_impl(error_code& error) override { error = {}; }

    std::size_t add(string_view bytes, error_code& error) {
        error = {};
        growth_.add(body_, view(bytes));
        return bytes.size();
    }

    RequestHead& head_;
    std::string& body_;
    BodyGrowth growth_;
    bool headerDone_ = false;
};

RequestParser::RequestParser(const RequestLimits& limits) : limits_(limits) {
    reset();
}

RequestParser::~RequestParser() = default;

void RequestParser::reset() {
    state_ = State::Header;
    refusal_ = 0;
    scanned_ = 0;
    emptyLines_ = 0;
    head_.fields.clear();
    head_.method = Method::Unknown;
    body_.clear();
    if (body_.capacity() > BodyGrowth::reserved) body_.shrink_to_fit();
    reader_.reset();
}

std::size_t RequestParser::refuse(int status) {
    state_ = State::Refused;
    refusal_ = status;
    return 0;
}

std::size_t RequestParser::feed(std::string_view bytes) {
    if (state_ == State::Header) return feedHeader(bytes);
    if (state_ == State::Body) return feedBody(bytes);
    return 0;
}

std::size_t RequestParser::feedHeader(std::string_view bytes) {
    if (const std::size_t skipped = skipEmptyLines(bytes)) return skipped;
    if (bytes.empty()) return 0;
    if (!isTokenStart(bytes.front())) return bytes == "\r" && emptyLines_ < 4 ? 0 : refuse(400);
    const std::size_t end = findHeaderEnd(bytes);
    if (state_ == State::Refused || !isWithinLimits(bytes, end) || end == notFound) return 0;
    return readHeader(bytes.substr(0, end));
}

/// Some clients send an empty line behind a form's body: one or two are passed over.
std::size_t RequestParser::skipEmptyLines(std::string_view bytes) {
    if (!bytes.starts_with("\r\n") || emptyLines_ >= 4) return 0;
    emptyLines_ += 2;
    return 2;
}

/// Where the header ends, or `notFound`. Looks at each byte once however the header is cut in pieces.
std::size_t RequestParser::findHeaderEnd(std::string_view bytes) {
    while (scanned_ < bytes.size()) {
        const std::size_t feed = bytes.find('\n', scanned_);
        if (feed == notFound) {
            scanned_ = bytes.size();
            return notFound;
        }
        if (feed == 0 || bytes[feed - 1] != '\r') return refuse(400), notFound;
        if (feed >= 3 && bytes[feed - 2] == '\n') return feed + 1;
        if (feed + 1 == bytes.size()) {
            scanned_ = feed;  // the byte behind it decides whether the line is folded
            return notFound;
        }
        if (bytes[feed + 1] == ' ' || bytes[feed + 1] == '\t') return refuse(400), notFound;
        scanned_ = feed + 1;
    }
    return notFound;
}

bool RequestParser::isWithinLimits(std::string_view bytes, std::size_t end) {
    const std::size_t lineEnd = bytes.substr(0, limits_.requestLine + 2).find("\r\n");
    if (lineEnd == notFound && bytes.size() >= limits_.requestLine + 2) return refuse(414), false;
    const std::size_t size = end == notFound ? bytes.size() : end;
    if (size > limits_.header) return refuse(431), false;
    return true;
}

std::size_t RequestParser::readHeader(std::string_view bytes) {
    headerBytes_.assign(bytes);
    reader_ = std::make_unique<Reader>(head_, body_);
    reader_->header_limit(std::numeric_limits<std::uint32_t>::max());  // counted by us
    reader_->body_limit(boost::none);                                  // known when the header is
    reader_->eager(false);
    error_code error;
    const std::size_t consumed = reader_->put(boost::asio::buffer(headerBytes_), error);
    if (error) return refuse(statusOf(error));
    if (consumed != bytes.size() || !reader_->is_header_done()) return refuse(400);
    checkHeader();
    return state_ == State::Refused ? 0 : consumed;
}

void RequestParser::checkHeader() {
    state_ = State::HeaderDone;
    head_.keepAlive = reader_->keep_alive();
    head_.hasBody = !reader_->is_done();
    head_.contentLength.reset();
    if (const auto length = reader_->content_length()) head_.contentLength = *length;
    if (head_.fields.size() > limits_.fields) refuse(431);
    const std::size_t lengths = head_.count("Content-Length");
    const std::size_t encodings = head_.count("Transfer-Encoding");
    if (lengths > 1 || encodings > 1 || (lengths == 1 && encodings == 1)) refuse(400);
    if (lengths == 1 && !isAllDigits(head_.field("Content-Length"))) refuse(400);
    if (encodings == 1 && head_.version == 10) refuse(400);
    if (encodings == 1 && !ascii::equals(head_.field("Transfer-Encoding"), "chunked")) refuse(501);
}

void RequestParser::readBody(std::uint64_t limit) {
    if (head_.hasMoreThan(limit)) {
        refuse(413);
        return;
    }
    reader_->body_limit(limit);
    reader_->eager(true);
    state_ = reader_->is_done() ? State::Complete : State::Body;
}

std::size_t RequestParser::feedBody(std::string_view bytes) {
    if (bytes.empty()) return 0;
    error_code error;
    const std::size_t consumed = reader_->put(boost::asio::buffer(bytes.data(), bytes.size()), error);
    if (error == http::error::need_more) {
        // Nothing used of so much: a chunk's line or the trailer without an end.
        if (consumed == 0 && bytes.size() >= limits_.requestLine) refuse(400);
    } else if (error) {
        return refuse(statusOf(error));
    } else if (reader_->is_done()) {
        state_ = State::Complete;
    }
    return consumed;
}

}  // namespace torvex
