#include "host/TrustedProxies.h"

#include <algorithm>

#include "platform/net/Peer.h"

namespace torvex {

namespace {

namespace ip = boost::asio::ip;

constexpr std::string_view forwardedFor = "X-Forwarded-For";
constexpr std::string_view forwardedProto = "X-Forwarded-Proto";

AddressBytes bytesOf(const ip::address& address) {
    if (address.is_v6()) return address.to_v6().to_bytes();
    return ip::make_address_v6(ip::v4_mapped, address.to_v4()).to_bytes();
}

bool isPort(std::string_view text) {
    return !text.empty() && text.size() <= 5 && std::all_of(text.begin(), text.end(), ascii::isDigit);
}

/// Without the port that some proxies add, and without brackets, which one of version 6 then needs.
std::string_view withoutPort(std::string_view item) {
    if (item.starts_with('[')) {
        const std::size_t end = item.find(']');
        if (end == std::string_view::npos) return {};
        const std::string_view rest = item.substr(end + 1);
        if (!rest.empty() && (rest.front() != ':' || !isPort(rest.substr(1)))) return {};
        const std::string_view inside = item.substr(1, end - 1);
        return inside.find(':') == std::string_view::npos ? std::string_view() : inside;
    }
    const std::size_t colon = item.find(':');
    if (colon == std::string_view::npos || item.find(':', colon + 1) != std::string_view::npos) return item;
    return isPort(item.substr(colon + 1)) ? item.substr(0, colon) : std::string_view();
}

/// The items of a list that several lines may make up together, from its end.
class ItemsFromEnd {
  public:
    ItemsFromEnd(const RequestHead& head, std::string_view name)
        : name_(name), line_(head.fields.rbegin()), end_(head.fields.rend()) {
        findLine();
    }

    std::optional<std::string_view> next() {
        if (line_ == end_) return std::nullopt;
        const std::size_t comma = rest_.rfind(',');
        const std::string_view item =
            ascii::trimmed(comma == std::string_view::npos ? rest_ : rest_.substr(comma + 1));
        if (comma == std::string_view::npos) {
            ++line_;
            findLine();
        } else {
            rest_ = rest_.substr(0, comma);
        }
        return item;
    }

  private:
    using Fields = decltype(RequestHead::fields);

    void findLine() {
        line_ = std::find_if(line_, end_,
                             [this](const auto& field) { return ascii::equals(field.first, name_); });
        if (line_ != end_) rest_ = line_->second;
    }

    std::string_view name_;
    Fields::const_reverse_iterator line_;
    Fields::const_reverse_iterator end_;
    std::string_view rest_;
};

/// What the nearest proxy says; it stands behind whatever came to it.
bool isTlsBefore(const RequestHead& head, bool otherwise) {
    const auto scheme = ItemsFromEnd(head, forwardedProto).next();
    if (!scheme) return otherwise;
    if (ascii::equals(*scheme, "https")) return true;
    return ascii::equals(*scheme, "http") ? false : otherwise;
}

}  // namespace

TrustedProxies::TrustedProxies(const std::vector<std::string>& networks) {
    for (const std::string& text : networks)
        if (const auto network = Network::parse(text)) networks_.push_back(*network);
}

bool TrustedProxies::contains(const AddressBytes& address) const {
    return std::any_of(networks_.begin(), networks_.end(),
                       [&address](const Network& network) { return network.contains(address); });
}

bool TrustedProxies::contains(const ip::address& address) const {
    return !networks_.empty() && contains(bytesOf(address));
}

Client TrustedProxies::visitorOf(const RequestHead& head, const Client& connected) const {
    AddressBytes known = bytesOf(connected.address);
    ItemsFromEnd items(head, forwardedFor);
    while (contains(known)) {
        const auto item = items.next();
        const auto before = item ? parseAddress(withoutPort(*item)) : std::nullopt;
        if (!before) break;
        known = *before;
    }
    return {unmapped(ip::make_address_v6(known)), isTlsBefore(head, connected.isTls)};
}

}  // namespace torvex
