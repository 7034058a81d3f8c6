#include "accounts/KnownPlaces.h"

#include <algorithm>

namespace torvex {

bool KnownPlaces::contains(const std::string& name, const std::string& network) const {
    const auto found = byName_.find(name);
    if (found == byName_.end()) return false;
    const auto& networks = found->second.networks;
    return std::find(networks.begin(), networks.end(), network) != networks.end();
}

void KnownPlaces::add(const std::string& name, const std::string& network) {
    auto found = byName_.find(name);
    if (found == byName_.end()) {
        found = byName_.emplace(name, Places{{}, names_.insert(names_.end(), name)}).first;
    } else {
        names_.splice(names_.end(), names_, found->second.age);
    }
    auto& networks = found->second.networks;
    std::erase(networks, network);
    networks.push_back(network);
    if (networks.size() > mostNetworks) networks.erase(networks.begin());
    if (byName_.size() <= mostNames_) return;
    byName_.erase(names_.front());
    names_.pop_front();
}

}  // namespace torvex
