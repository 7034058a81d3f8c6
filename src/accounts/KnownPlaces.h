#pragma once

#include <cstddef>
#include <list>
#include <string>
#include <unordered_map>
#include <vector>

namespace torvex {

/// From which networks a name has logged in. Bounded in both ways, so that nobody can push out another's
/// places by logging in from many: the places of a name that go first are its own. Not safe to share: whoever
/// owns it locks.
class KnownPlaces {
  public:
    explicit KnownPlaces(std::size_t mostNames = 20'000) : mostNames_(mostNames) {}

    bool contains(const std::string& name, const std::string& network) const;
    void add(const std::string& name, const std::string& network);
    std::size_t size() const { return byName_.size(); }

  private:
    static constexpr std::size_t mostNetworks = 8;

    struct Places {
        std::vector<std::string> networks;  ///< the latest is the last
        std::list<std::string>::iterator age;
    };

    std::size_t mostNames_;
    std::unordered_map<std::string, Places> byName_;
    std::list<std::string> names_;  ///< the latest is the last
};

}  // namespace torvex
