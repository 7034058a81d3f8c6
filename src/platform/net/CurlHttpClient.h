#pragma once

#include <chrono>
#include <cstddef>
#include <string>

#include "platform/net/HttpClient.h"

struct sockaddr;

namespace torvex {

/// What a fetch may cost.
struct HttpLimits {
    /// The longest that one step may take without getting on: finding the name, connecting, sending, and
    /// waiting for the next piece of the answer.
    std::chrono::milliseconds step{30'000};
    /// The whole fetch with all its redirects, so that an answer that drips for ever ends too.
    std::chrono::milliseconds total{120'000};
    std::size_t bodyBytes = 8u << 20;
    std::size_t headerBytes = 64u << 10;  ///< of all answers on the way
    int redirects = 10;
    /// Which addresses are connected to, on redirects too (`isPublicAddress`); null: all. It is the address
    /// itself that is asked about, behind the search for a name's, so that a name can't change its mind in
    /// between.
    bool (*mayReach)(const sockaddr& address) = nullptr;
};

/// The real client, on libcurl. Follows redirects, never to anything but http and https; keeps no cookies and
/// checks certificates. Says in a field of its own (`fetchMark`) that it is a fetch, for those who fetch in
/// turn. What is in no text encoding's range in an address is percent-encoded as browsers do. The
/// environment's proxy variables are not used.
class CurlHttpClient : public HttpClient {
  public:
    /// `proxy` as "http://host:port"; "" for none.
    explicit CurlHttpClient(HttpLimits limits = {}, std::string proxy = {});

    /// The reasons in errors don't name the address: they may be shown to visitors.
    using HttpClient::get;
    Answer get(const std::string& url, Deadline deadline) override;

  private:
    HttpLimits limits_;
    std::string proxy_;
};

}  // namespace torvex
