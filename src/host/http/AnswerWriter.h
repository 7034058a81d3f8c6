#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "host/http/Answer.h"

namespace torvex {

/// What an answer is sent with.
struct AnswerFrame {
    std::string_view date;  ///< ready for the Date field
    bool keepAlive = true;
    bool isHead = false;  ///< the header as for a full answer, and no body
    bool isHttp10 = false;
    std::string_view fields{};  ///< "Name: value\r\n" for each that every answer carries
};

/// Sends one answer after the other. Header and body go out in one call where they fit; files go from the
/// page cache to the socket without being read. One connection uses it.
class AnswerWriter {
  public:
    enum class Progress { Done, Blocked, Failed };

    void start(Answer answer, const AnswerFrame& frame);
    /// Sends as it stands: the interim answer that asks for a body.
    void startRaw(std::string_view bytes);

    /// Writes as much as the socket, which must not block, takes.
    Progress writeTo(int socket);

    /// The same for an encrypting stream: the next bytes to be written, at most some 16 KB, "" at the end;
    /// then how many were written. `failed` tells that the file has become shorter than announced.
    std::string_view next();
    void advance(std::size_t count);
    bool failed() const { return failed_; }

    /// Bytes written so far, of all answers.
    std::uint64_t written() const { return written_; }
    /// Frees the answer.
    void clear();

  private:
    void composeHead(const AnswerFrame& frame);
    Progress writeText(int socket);
    Progress writeFile(int socket, const FileAnswer& file);
    std::string_view nextOfFile();

    Answer answer_;
    std::string head_;
    std::string chunk_;  ///< of a file, for an encrypting stream
    std::uint64_t bodyToSend_ = 0;
    std::size_t headSent_ = 0;
    std::uint64_t bodySent_ = 0;
    std::uint64_t written_ = 0;
    bool failed_ = false;
};

}  // namespace torvex
