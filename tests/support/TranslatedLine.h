#pragma once

#include <deque>
#include <map>

#include "support/ClientLine.h"
#include "support/Http2Client.h"

namespace torvex::test {

/// Speaks HTTP/2 for a client that writes and reads HTTP/1.1: each request goes on a stream of its own, and the answers are
/// handed over in the order of the requests. Only well-formed requests can be translated.
class TranslatedLine final : public ClientLine {
  public:
    TranslatedLine(std::uint16_t port, const std::string& from) : client_(port, from) { client_.greet(); }

    void send(std::string_view bytes) override;
    std::optional<std::string> receive(std::chrono::milliseconds time) override;
    /// The rest of what is being sent won't come.
    void endSending() override;
    int descriptor() const override { return client_.descriptor(); }

  private:
    struct Answer {
        std::string text;
        std::string body;
        bool isWhole = false;
    };

    bool translateHead();
    bool translateBody();
    bool translateChunk();
    void note(const Frame& frame);
    std::string takeReady();

    Http2Client client_;
    std::string pending_;  ///< written and not translated
    std::int32_t id_ = -1;
    bool isInBody_ = false;
    bool isChunked_ = false;
    std::size_t bodyLeft_ = 0;
    std::deque<std::int32_t> order_;
    std::map<std::int32_t, Answer> answers_;
};

}  // namespace torvex::test
