#include "support/TranslatedLine.h"

#include <algorithm>
#include <cstdlib>
#include <sstream>

#include "host/http/Ascii.h"

namespace torvex::test {

namespace {

constexpr std::string_view lineEnd = "\r\n";

bool isOfTheOldProtocol(const std::string& name) {
    return name == "connection" || name == "transfer-encoding";
}

/// The target's, if it names one, or else the header's.
std::string authorityOf(std::string& target) {
    const std::size_t scheme = target.find("://");
    if (scheme == std::string::npos) return {};
    const std::size_t end = std::min(target.find('/', scheme + 3), target.size());
    std::string authority = target.substr(scheme + 3, end - scheme - 3);
    target.erase(0, end);
    return authority;
}

Fields translated(std::string head) {
    std::istringstream stream(head);
    std::string method;
    std::string target;
    std::string line;
    stream >> method >> target;
    std::getline(stream, line);
    const std::string authority = authorityOf(target);
    Fields fields{{":method", method}, {":scheme", "https"}, {":path", target}};
    if (!authority.empty()) fields.insert(fields.begin(), {":authority", authority});
    while (std::getline(stream, line) && line.size() > 1) {
        const std::size_t colon = line.find(':');
        std::string name = ascii::lowered(line.substr(0, colon));
        const std::string value(
            ascii::trimmed(std::string_view(line).substr(colon + 1, line.size() - colon - 2)));
        if (name == "host" && authority.empty())
            fields.insert(fields.begin(), {":authority", value});
        else if (!isOfTheOldProtocol(name))
            fields.emplace_back(std::move(name), value);
    }
    return fields;
}

std::string valueOf(const Fields& fields, std::string_view name) {
    const auto found =
        std::find_if(fields.begin(), fields.end(), [&](const auto& one) { return one.first == name; });
    return found == fields.end() ? std::string() : found->second;
}

}  // namespace

void TranslatedLine::send(std::string_view bytes) {
    pending_ += bytes;
    while (isInBody_ ? (isChunked_ ? translateChunk() : translateBody()) : translateHead()) {
    }
}

bool TranslatedLine::translateHead() {
    const std::size_t end = pending_.find("\r\n\r\n");
    if (end == std::string::npos) return false;
    const std::string head = pending_.substr(0, end + 2);
    pending_.erase(0, end + 4);
    const Fields fields = translated(head);
    id_ = id_ < 0 ? 1 : id_ + 2;
    order_.push_back(id_);
    isChunked_ = head.find("Transfer-Encoding") != std::string::npos;
    bodyLeft_ = std::strtoul(valueOf(fields, "content-length").c_str(), nullptr, 10);
    isInBody_ = isChunked_ || bodyLeft_ > 0;
    client_.headers(id_, fields, NGHTTP2_FLAG_END_HEADERS | (isInBody_ ? 0 : NGHTTP2_FLAG_END_STREAM));
    return !pending_.empty();
}

bool TranslatedLine::translateBody() {
    const std::size_t size = std::min(bodyLeft_, pending_.size());
    if (size == 0) return false;
    bodyLeft_ -= size;
    isInBody_ = bodyLeft_ > 0;
    client_.body(id_, pending_.substr(0, size), !isInBody_);
    pending_.erase(0, size);
    return !pending_.empty();
}

bool TranslatedLine::translateChunk() {
    if (pending_.starts_with(lineEnd)) pending_.erase(0, lineEnd.size());  // behind the last one
    const std::size_t line = pending_.find(lineEnd);
    if (line == std::string::npos) return false;
    const std::size_t size = std::strtoul(pending_.c_str(), nullptr, 16);
    if (size == 0) {
        const std::size_t end = pending_.find("\r\n\r\n");
        if (end == std::string::npos) return false;
        pending_.erase(0, end + 4);
        isInBody_ = false;
        client_.body(id_, {}, true);
        return !pending_.empty();
    }
    if (pending_.size() < line + 2 + size) return false;
    client_.body(id_, pending_.substr(line + 2, size), false);
    pending_.erase(0, line + 2 + size);
    return true;
}

void TranslatedLine::endSending() {
    client_.frame(NGHTTP2_RST_STREAM, 0, id_, number(NGHTTP2_CANCEL));
}

void TranslatedLine::note(const Frame& frame) {
    Answer& answer = answers_[frame.id];
    // The first line is written as it is read.
    if (frame.type == NGHTTP2_HEADERS) answer.text += "HTTP/1.1" + frame.head.substr(frame.head.find(' '));
    if (frame.type == NGHTTP2_DATA) answer.body += frame.payload;
    if (frame.isLast()) answer.isWhole = true;
}

/// What comes ahead of an answer isn't held back until it is whole.
std::string TranslatedLine::takeReady() {
    std::string text;
    while (!order_.empty()) {
        Answer& first = answers_[order_.front()];
        if (first.isWhole || first.text.starts_with("HTTP/1.1 100")) text += std::exchange(first.text, {});
        if (!first.isWhole) break;
        text += first.body;
        answers_.erase(order_.front());
        order_.pop_front();
    }
    return text;
}

std::optional<std::string> TranslatedLine::receive(std::chrono::milliseconds time) {
    const auto end = std::chrono::steady_clock::now() + time;
    while (true) {
        if (std::string ready = takeReady(); !ready.empty()) return ready;
        const auto left =
            std::chrono::ceil<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
        const auto frame = client_.next(std::max(left, std::chrono::milliseconds(0)));
        if (!frame && client_.isClosedWithin(std::chrono::milliseconds(0))) return std::string();
        if (!frame) return std::nullopt;
        if (frame->type == NGHTTP2_HEADERS || frame->type == NGHTTP2_DATA) note(*frame);
    }
}

}  // namespace torvex::test
