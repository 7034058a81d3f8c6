#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace torvex {

struct HostContext;

/// One page of a long list.
struct ListPage {
    int page = 1;       ///< from 1
    int pageCount = 1;  ///< 0 for a list of nothing
    int pageSize = 0;   ///< the length of the list where all of it is on one page
    int total = 0;

    int first() const { return (page - 1) * pageSize + 1; }
    int last() const;
    int offset() const { return (page - 1) * pageSize; }
};

/// The page that is asked for; the first in place of one before it, the last in place of one behind it. A
/// `pageSize` of 0 and less is all on one page.
ListPage listPage(int total, int pageSize, int asked);

/// The names of the pieces that links to pages are put together from: blocks in the template's own block for
/// them, and the tag in each for a page's number.
struct PageLinkNames {
    std::string_view spacer, previous, dots, active, link, next, number;
};

/// Links to the pages around `page`, from the pieces in `html`; a piece that is missing is left out. "" for
/// fewer than two pages.
std::string pageLinks(HostContext& host, const PageLinkNames& names, int page, int pageCount,
                      const std::string& html);

}  // namespace torvex
