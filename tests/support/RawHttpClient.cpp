#include "support/RawHttpClient.h"

#include <cstdlib>
#include <stdexcept>

#include "support/PlainLine.h"
#include "support/TlsLine.h"
#include "support/TranslatedLine.h"

namespace torvex::test {

namespace {

constexpr std::chrono::milliseconds patience{10'000};

std::unique_ptr<ClientLine> lineOf(std::uint16_t port, const std::string& from, Protocol protocol) {
    if (protocol == Protocol::Http2) return std::make_unique<TranslatedLine>(port, from);
    if (protocol == Protocol::Http1) return std::make_unique<PlainLine>(connectTo(port, from));
    auto line = std::make_unique<TlsLine>(connectTo(port, from));
    if (!line->shakeHands()) throw std::runtime_error("https isn't spoken");
    return line;
}

}  // namespace

std::string nameOf(const testing::TestParamInfo<Protocol>& tested) {
    if (tested.param == Protocol::Http2) return "Http2";
    return tested.param == Protocol::Http1 ? "Http1" : "Http1Tls";
}

RawHttpClient::RawHttpClient(std::uint16_t port, const std::string& from, Protocol protocol)
    : line_(lineOf(port, from, protocol)) {}

void RawHttpClient::send(std::string_view bytes) {
    line_->send(bytes);
}

std::size_t RawHttpClient::drip(std::string_view bytes, std::chrono::milliseconds pause) {
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        line_->send(bytes.substr(i, 1));
        if (receive(pause) || isAtEnd_) return i + 1;
    }
    return bytes.size();
}

void RawHttpClient::endSending() {
    line_->endSending();
}

bool RawHttpClient::receive(std::chrono::milliseconds time) {
    const auto bytes = isAtEnd_ ? std::nullopt : line_->receive(time);
    if (bytes && bytes->empty()) isAtEnd_ = true;
    if (bytes) received_ += *bytes;
    return bytes && !bytes->empty();
}

RawReply RawHttpClient::readHead() {
    RawReply reply;
    std::size_t end = std::string::npos;
    while ((end = received_.find("\r\n\r\n")) == std::string::npos)
        if (!receive(patience)) return reply;
    reply.head = received_.substr(0, end + 4);
    received_.erase(0, end + 4);
    if (reply.head.starts_with("HTTP/1.1 ")) reply.status = std::atoi(reply.head.c_str() + 9);
    return reply;
}

RawReply RawHttpClient::readWithoutBody() {
    return readHead();
}

RawReply RawHttpClient::read() {
    RawReply reply = readHead();
    const std::size_t length = std::strtoul(reply.field("Content-Length").c_str(), nullptr, 10);
    while (received_.size() < length)
        if (!receive(patience)) break;
    reply.body = received_.substr(0, length);
    received_.erase(0, length);
    return reply;
}

bool RawHttpClient::isClosedWithin(std::chrono::milliseconds time) {
    return received_.empty() && !receive(time) && isAtEnd_;
}

std::string RawHttpClient::readAll() {
    while (receive(patience)) {
    }
    return received_;
}

RawReply RawHttpClient::get(std::string_view target, std::string_view lines) {
    std::string request = "GET ";
    request.append(target).append(" HTTP/1.1\r\nHost: test.example\r\n").append(lines).append("\r\n");
    return ask(request);
}

}  // namespace torvex::test
