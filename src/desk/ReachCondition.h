#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "accounts/EditReach.h"
#include "platform/db/Connection.h"

namespace torvex {

/// As a condition of a statement: that a node lies within a reach. Must not be asked for nowhere.
class ReachCondition {
  public:
    /// `column` is the column of nodes.
    ReachCondition(std::string_view column, const EditReach& reach);

    const std::string& text() const { return text_; }
    /// The values of its places, which view the condition.
    void addTo(std::vector<db::Parameter>& values) const {
        values.insert(values.end(), bounds_.begin(), bounds_.end());
    }

  private:
    std::string text_;
    std::vector<std::string> bounds_;
};

}  // namespace torvex
