#pragma once

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace torvex {

/// The names that a server answers for; without any it answers for all. Doesn't change; safe from any thread.
class HostNames {
  public:
    /// Without ports; "*.example.org" is every name that ends with ".example.org".
    explicit HostNames(const std::vector<std::string>& names);

    /// `name` is the one of a request, without its port and in any case.
    bool answer(std::string_view name) const { return isForAll_ || has(name); }

    /// Whether a text can be one of the names.
    static bool isName(std::string_view text);

  private:
    bool has(std::string_view name) const;

    bool isForAll_;
    std::unordered_set<std::string> names_;
    std::vector<std::string> endings_;
};

}  // namespace torvex
