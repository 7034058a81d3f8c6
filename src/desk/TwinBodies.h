#pragma once

#include <map>
#include <string>
#include <string_view>

#include "delivery/PageBodies.h"

namespace torvex {

/// A body as it is designed and as visitors see it. As made, one without a row in either: it shows what an
/// empty text shows.
struct TwinBodies {
    PageBody design;
    PageBody live;
    std::string feedTitle;  ///< of the design
    std::string liveFeedTitle;

    /// To those who look at them: the text of a feed's body isn't shown, nor the feed of a text.
    bool differ() const;
};

/// Those that have a row in the design or the live data, by their number.
using BodiesById = std::map<int, TwinBodies>;
BodiesById twinBodiesOf(db::Connection& connection, PageId pageId);

bool isFeed(const PageBody& body);
/// "text", "html" or "xml".
std::string_view kindOfBody(const PageBody& body);

}  // namespace torvex
