#pragma once

#include <boost/asio/ip/address.hpp>
#include <optional>
#include <string>
#include <vector>

#include "host/http/RequestHead.h"
#include "platform/net/Network.h"

namespace torvex {

/// Who sent a request, as far as it is known.
struct Client {
    boost::asio::ip::address address;
    bool isTls = false;  ///< whether they speak https, to this server or to the proxy in front of it
};

/// The proxies whose word is taken for whom they speak, and nobody else's. Doesn't change; safe from any
/// thread.
class TrustedProxies {
  public:
    /// Texts that are no network are left out: the settings refuse them.
    explicit TrustedProxies(const std::vector<std::string>& networks);

    bool contains(const boost::asio::ip::address& address) const;

    /// For whom a proxy, which is `connected`, has sent a request. Each proxy adds the address that it was
    /// asked from behind the others: the last one that isn't a proxy's is the visitor's, and what stands
    /// ahead of it may be anybody's invention. Where no such address can be read, it is the last proxy that
    /// could be followed.
    Client visitorOf(const RequestHead& head, const Client& connected) const;

  private:
    bool contains(const AddressBytes& address) const;

    std::vector<Network> networks_;
};

}  // namespace torvex
