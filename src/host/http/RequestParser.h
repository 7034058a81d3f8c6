#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "host/http/RequestHead.h"
#include "installation/ServerOptions.h"

namespace torvex {

/// Reads one request after the other from bytes as they come. Stricter than the protocol needs where leniency
/// has let requests be smuggled past proxies: bare line feeds, folded lines, doubled or contradicting lengths
/// are refused. One connection uses it.
class RequestParser {
  public:
    enum class State {
        Header,      ///< waiting for the rest of the header
        HeaderDone,  ///< `head` is there; call `readBody` to go on
        Body,        ///< waiting for the rest of the body
        Complete,
        Refused  ///< `refusal` is the status; the connection can't be used any further
    };

    explicit RequestParser(const RequestLimits& limits);
    ~RequestParser();

    /// Reads what it can of all bytes not yet consumed and returns how many it consumed.
    std::size_t feed(std::string_view bytes);
    /// Goes on from the header; a request without a body is complete then. One with a longer body than
    /// `limit` is refused, at once if it says so, and so is any body where none is taken.
    void readBody(std::uint64_t limit);
    /// Ready for the next request.
    void reset();

    State state() const { return state_; }
    int refusal() const { return refusal_; }
    const RequestHead& head() const { return head_; }
    std::string& body() { return body_; }

  private:
    class Reader;

    std::size_t feedHeader(std::string_view bytes);
    std::size_t feedBody(std::string_view bytes);
    std::size_t skipEmptyLines(std::string_view bytes);
    std::size_t findHeaderEnd(std::string_view bytes);
    std::size_t readHeader(std::string_view bytes);
    bool isWithinLimits(std::string_view bytes, std::size_t end);
    void checkHeader();
    std::size_t refuse(int status);

    RequestLimits limits_;
    State state_ = State::Header;
    int refusal_ = 0;
    std::size_t scanned_ = 0;     ///< header bytes that were looked at
    std::size_t emptyLines_ = 0;  ///< bytes of them ahead of the request
    std::string headerBytes_;
    RequestHead head_;
    std::string body_;
    std::unique_ptr<Reader> reader_;
};

}  // namespace torvex
