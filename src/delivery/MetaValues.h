#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "records/PageId.h"

namespace torvex {
namespace db {
class Connection;
}

/// What a live page has for one of its site's meta tags.
struct MetaValue {
    double id = 0;
    std::string name;
    std::string value;
    bool isInherited = false;  ///< then `value` doesn't count
};

/// In the order of the tags' numbers.
std::vector<MetaValue> liveMetaValues(db::Connection& connection, PageId pageId);

/// The line of a page's head.
std::string metaLine(std::string_view name, std::string_view lang, std::string_view value);

}  // namespace torvex
