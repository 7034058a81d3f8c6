#include "desk/ReachCondition.h"

#include <fmt/format.h>

#include "records/PageIdentity.h"

namespace torvex {

ReachCondition::ReachCondition(std::string_view column, const EditReach& reach) {
    if (reach.isEverywhere) {
        text_ = "1 = 1";
        return;
    }
    for (const std::string& node : reach.nodes) {
        text_ += fmt::format("{0} {1} >= ? and {1} < ?", text_.empty() ? "(" : " or", column);
        bounds_.push_back(node);
        bounds_.push_back(endOfPrefix(node));
    }
    text_ += ")";
}

}  // namespace torvex
