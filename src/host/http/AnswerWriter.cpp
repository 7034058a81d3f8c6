#include "host/http/AnswerWriter.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fmt/format.h>
#include <iterator>
#include <sys/sendfile.h>
#include <sys/socket.h>
#include <sys/uio.h>

#include "host/http/AnswerParts.h"

namespace torvex {

namespace {

constexpr std::size_t chunkSize = 16 * 1024;  ///< one record of TLS
constexpr std::uint64_t burst = 1024 * 1024;  ///< of a file, before others have their turn

iovec vectorOf(std::string_view text) {
    return {const_cast<char*>(text.data()), text.size()};
}

bool isBlocked() {
    return errno == EAGAIN || errno == EWOULDBLOCK;
}

}  // namespace

void AnswerWriter::start(Answer answer, const AnswerFrame& frame) {
    answer_ = std::move(answer);
    headSent_ = 0;
    bodySent_ = 0;
    failed_ = false;
    bodyToSend_ = frame.isHead || !answer_.hasLength ? 0 : answerParts::bodyLength(answer_);
    composeHead(frame);
}

void AnswerWriter::startRaw(std::string_view bytes) {
    clear();
    head_.assign(bytes);
}

void AnswerWriter::clear() {
    answer_ = {};
    head_.clear();
    chunk_.clear();
    headSent_ = 0;
    bodySent_ = 0;
    bodyToSend_ = 0;
}

void AnswerWriter::composeHead(const AnswerFrame& frame) {
    head_.clear();
    auto out = std::back_inserter(head_);
    fmt::format_to(out, "HTTP/1.1 {} {}\r\nDate: {}\r\n", answer_.status, statusName(answer_.status),
                   frame.date);
    if (answer_.hasLength) fmt::format_to(out, "Content-Length: {}\r\n", answerParts::bodyLength(answer_));
    if (!frame.keepAlive) {
        head_ += "Connection: close\r\n";
    } else if (frame.isHttp10) {
        head_ += "Connection: keep-alive\r\n";
    }
    answerParts::appendFields(head_, answer_, frame.fields);
    head_.append("\r\n");
}

AnswerWriter::Progress AnswerWriter::writeTo(int socket) {
    const auto* file = std::get_if<FileAnswer>(&answer_.body);
    if (!file || headSent_ < head_.size()) {
        const Progress progress = writeText(socket);
        if (progress != Progress::Done || !file) return progress;
    }
    return writeFile(socket, *file);
}

/// The header, and the body if it is a text.
AnswerWriter::Progress AnswerWriter::writeText(int socket) {
    const bool isFile = std::holds_alternative<FileAnswer>(answer_.body) && bodyToSend_ > 0;
    const std::string_view body =
        answerParts::bodyText(answer_).substr(0, static_cast<std::size_t>(bodyToSend_));
    while (true) {
        const std::string_view headRest = std::string_view(head_).substr(headSent_);
        const std::string_view bodyRest =
            isFile ? std::string_view() : body.substr(static_cast<std::size_t>(bodySent_));
        if (headRest.empty() && bodyRest.empty()) return Progress::Done;
        std::array<iovec, 2> parts{vectorOf(headRest), vectorOf(bodyRest)};
        msghdr message{};
        message.msg_iov = parts.data();
        message.msg_iovlen = parts.size();
        // More follows: the kernel waits for the file before it fills a packet.
        const ssize_t count = ::sendmsg(socket, &message, MSG_NOSIGNAL | (isFile ? MSG_MORE : 0));
        if (count >= 0) {
            advance(static_cast<std::size_t>(count));
        } else if (errno != EINTR) {
            return isBlocked() ? Progress::Blocked : Progress::Failed;
        }
    }
}

AnswerWriter::Progress AnswerWriter::writeFile(int socket, const FileAnswer& file) {
    const std::uint64_t stopAt = std::min(bodyToSend_, bodySent_ + burst);
    while (bodySent_ < stopAt) {
        auto offset = static_cast<off_t>(file.offset + bodySent_);
        const ssize_t count = ::sendfile(socket, file.file->number(), &offset,
                                         static_cast<std::size_t>(bodyToSend_ - bodySent_));
        if (count > 0) {
            advance(static_cast<std::size_t>(count));
        } else if (count == 0) {
            return Progress::Failed;  // shorter than it was: what was announced can't be kept
        } else if (errno != EINTR) {
            return isBlocked() ? Progress::Blocked : Progress::Failed;
        }
    }
    return bodySent_ == bodyToSend_ ? Progress::Done : Progress::Blocked;
}

void AnswerWriter::advance(std::size_t count) {
    written_ += count;
    const std::size_t ofHead = std::min(count, head_.size() - headSent_);
    headSent_ += ofHead;
    bodySent_ += count - ofHead;
}

std::string_view AnswerWriter::next() {
    if (headSent_ == 0 && !std::holds_alternative<FileAnswer>(answer_.body) && bodyToSend_ < chunkSize) {
        head_.append(answerParts::bodyText(answer_).substr(
            0, static_cast<std::size_t>(bodyToSend_)));  // one record for both
        bodyToSend_ = 0;
    }
    if (headSent_ < head_.size()) return std::string_view(head_).substr(headSent_);
    if (std::holds_alternative<FileAnswer>(answer_.body)) return nextOfFile();
    const std::string_view body =
        answerParts::bodyText(answer_).substr(0, static_cast<std::size_t>(bodyToSend_));
    return body.substr(static_cast<std::size_t>(bodySent_), chunkSize);
}

std::string_view AnswerWriter::nextOfFile() {
    const std::uint64_t rest = bodyToSend_ - bodySent_;
    if (rest == 0) return {};
    const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(rest, chunkSize));
    chunk_.clear();
    failed_ = !answerParts::appendBody(chunk_, answer_, bodySent_, count);
    return chunk_;
}

}  // namespace torvex
