#pragma once

#include <string>

#include "platform/Deadline.h"
#include "platform/net/Freshness.h"

namespace torvex {

/// The field and the name in it by which a server knows that a request is a fetch of one like itself.
inline constexpr const char* fetchMarkField = "CDN-Loop";
inline constexpr const char* fetchMark = "torvex";

/// Fetching an address over http or https, for feeds. Implementations are safe to share between threads.
class HttpClient {
  public:
    struct Answer {
        int status = 0;
        std::string statusText;
        std::string body;         ///< UTF-8
        std::string contentType;  ///< as it was sent; "" when there was none
        std::string bytes;        ///< the body as it came, for formats that name their own encoding
        Freshness freshness{};    ///< how long others may be given it
    };

    virtual ~HttpClient() = default;

    /// One try. Throws `Error` with the reason when no answer comes, or none before the deadline.
    virtual Answer get(const std::string& url, Deadline deadline) = 0;
    Answer get(const std::string& url) { return get(url, Deadline()); }
};

}  // namespace torvex
