#pragma once

#include <string>
#include <vector>

#include "accounts/EditReach.h"
#include "records/PageIdentity.h"

namespace torvex {
struct Actor;

/// What is looked for among pages.
struct PageSearch {
    std::string words;
    std::string site;  ///< in small letters; "" for all
    std::string lang;
    std::vector<std::string> filters;  ///< "state:changed", "type:P", "below:aa.en.01"; in small letters
    int from = 0;
    int most = 0;
};

/// A page that was found.
struct FoundPage {
    PageId pageId = 0;
    std::string site;
    std::string lang;
    std::string nodeId;
    std::string title;
    std::string path;  ///< the titles above it, divided by " / "
    std::string state;
    bool isLive = false;  ///< visitors see it today
    std::string excerpt;  ///< some of its text around the words
};

/// Those in the trees of the reach whose titles and bodies together hold, for each word, one that begins with
/// it: first the page that the words name by its number or node, then those with all words in the title, then
/// the others; in both by title, then node. Of each at most the 1,000 made last are looked at. An unknown filter
/// finds nothing; filters alone, without words, find all that they hold for.
std::vector<FoundPage> foundPages(db::Connection& connection, const Actor& actor, const EditReach& reach,
                                  const PageSearch& search);

}  // namespace torvex
