#include "host/cache/StrangerViews.h"

#include <sodium.h>

#include "host/http/Exchange.h"

namespace torvex {

namespace {

std::string looksOf(const Exchange& exchange, std::string_view nodeId) {
    std::string looks(nodeId);
    for (const std::string_view part :
         {std::string_view(exchange.remoteAddress), exchange.head().field("User-Agent"),
          exchange.head().field("Accept-Language")})
        looks.append("\n").append(part);
    return looks;
}

}  // namespace

StrangerViews::StrangerViews() {
    static_assert(sizeof key_ == crypto_shorthash_KEYBYTES);
    randombytes_buf(key_.data(), key_.size());
}

std::uint64_t StrangerViews::hashOf(std::string_view text) const {
    std::array<unsigned char, crypto_shorthash_BYTES> bytes{};
    crypto_shorthash(bytes.data(), reinterpret_cast<const unsigned char*>(text.data()), text.size(),
                     key_.data());
    std::uint64_t hash = 0;
    for (const unsigned char byte : bytes) hash = hash << 8U | byte;
    return hash;
}

void StrangerViews::beginDay(std::string_view day) {
    if (day == day_) return;
    day_ = day;
    newer_.clear();
    older_.clear();
    randombytes_buf(key_.data(), key_.size());
}

bool StrangerViews::isFirst(const Exchange& exchange, std::string_view nodeId, std::string_view day) {
    const std::string looks = looksOf(exchange, nodeId);
    const std::scoped_lock guard(mutex_);
    beginDay(day);
    const std::uint64_t view = hashOf(looks);
    const bool isOld = older_.contains(view);
    const bool isNew = newer_.insert(view).second && !isOld;
    if (newer_.size() < mostKept / 2) return isNew;
    older_.swap(newer_);
    newer_.clear();
    return isNew;
}

}  // namespace torvex
