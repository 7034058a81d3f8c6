#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "records/PageId.h"

namespace torvex {

struct HostContext;
namespace db {
class Connection;
}

/// A page whose title may be meant.
struct Completion {
    PageId pageId = 0;
    std::string title;
};

/// Pages of a site and language whose titles begin with what was typed, by title, at most ten: those that show
/// today and that this visitor may enter. Only so many titles are looked at; less than two characters, or more
/// than a title has, are no beginning.
std::vector<Completion> completions(HostContext& host, db::Connection& connection, std::string_view site,
                                    std::string_view lang, std::string_view typed);

}  // namespace torvex
