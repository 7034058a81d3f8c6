#pragma once

#include <string>

namespace torvex {

/// Fetching an address over http or https, for feeds. Implementations are safe to share between threads.
class HttpClient {
  public:
    struct Answer {
        int status = 0;
        std::string statusText;
        std::string body;         ///< UTF-8
        std::string contentType;  ///< as it was sent; "" when there was none
        std::string bytes;        ///< the body as it came, for formats that name their own encoding
    };

    virtual ~HttpClient() = default;

    /// One try. Throws `Error` with the reason when no answer comes.
    virtual Answer get(const std::string& url) = 0;
};

}  // namespace torvex
