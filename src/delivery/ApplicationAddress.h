#pragma once

#include <string>
#include <string_view>

#include "records/PageId.h"

namespace torvex {

/// What the address of a page's application is made of.
struct ApplicationCall {
    std::string_view address;  ///< as registered; not empty
    PageId pageId;
    std::string_view query;       ///< the request's, as it stands
    std::string_view parameters;  ///< the page's own, divided by commas
};

/// The application's address with the page's number, the request's query and the page's parameters. The
/// number is left out when `numbered` names it already: visitors' pages look into the query, authors' into
/// the address.
std::string applicationAddress(const ApplicationCall& call, std::string_view numbered);

/// A query string with its values encoded, in which "=" and "&" stay.
std::string encodedQuery(std::string_view query);

}  // namespace torvex
