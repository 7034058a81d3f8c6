#pragma once

#include <boost/json/value.hpp>
#include <string_view>

#include "platform/Value.h"

namespace torvex::operations {

/// What isn't UTF-8 in it becomes U+FFFD.
boost::json::value textJson(std::string_view content);

/// A value that is no grid. A moment is a text, a number that isn't finite null.
boost::json::value singleJson(const Value& value);

}  // namespace torvex::operations
