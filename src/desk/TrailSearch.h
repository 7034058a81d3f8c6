#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/db/Connection.h"

namespace torvex {

/// Which lines of the audit trail are looked for, as a statement asks for them. The trail may have millions of lines:
/// of all that is asked for, the statement is led by what the fewest lines hold for, and counts no more of them than it
/// takes to find that out.
class TrailSearch {
  public:
    /// `filters` are divided by commas, each at most once: "login:7", "page:12" (a page's number or node, whatever
    /// place it had), "branch:aa.en.01" (what was done at that node and below), "action:check in", "entry:61" of the
    /// administration menu, "from:20261101" and "to:20261130". Nothing for one that isn't known or has no such
    /// value: it finds no line.
    static std::optional<TrailSearch> of(db::Connection& connection, std::string_view filters);

    /// What stands behind "where".
    const std::string& condition() const { return condition_; }
    /// The values of its places, which view the search.
    std::vector<db::Parameter> values() const { return {values_.begin(), values_.end()}; }

  private:
    std::string condition_;
    std::vector<std::string> values_;
};

}  // namespace torvex
