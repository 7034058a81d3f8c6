#pragma once

#include <string>
#include <string_view>

#include "records/PageId.h"

namespace torvex {

struct HostContext;

/// What there is to say around the results of a search.
struct SearchAnswer {
    PageId pageId = 0;       ///< the search page
    std::string words;       ///< "" when none were asked for
    std::string error;       ///< as `search_error` says it
    std::string suggestion;  ///< other words, or ""
};

/// Fills what a results template may hold besides the results:
///
///     search_pageId                      tag    the search page
///     search_stringURL                   tag    the words, for an address
///     search_asked, search_notAsked      block  words were asked for, or none
///     search_answered                    block  it went well, whether or not something was found
///     search_noWords                     block  no word was left to look for
///     search_tooMany                     block  too much is like the words
///     search_failed                      block  anything else went wrong
///     search_suggestion                  block and tag  what was probably meant
///     search_suggestionURL               tag    the same, for an address
std::string withSearchExtras(HostContext& host, std::string html, const SearchAnswer& answer);

/// Whether a template shows a suggestion at all.
bool showsSuggestion(std::string_view html);

}  // namespace torvex
