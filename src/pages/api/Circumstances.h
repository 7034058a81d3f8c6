#pragma once

#include <string>

#include "operations/register/PublicObject.h"

namespace torvex {
struct HostContext;
}

namespace torvex::api {

/// What the sentence of a refusal tells besides: each "" when it can't be told or isn't asked for.
struct Circumstances {
    std::string holder;   ///< the full name of the login that has what the caller wanted
    std::string since;    ///< "9:12", or "2026-06-14 9:12" when that isn't today
    std::string parent;   ///< the title of the page above
    std::string address;  ///< from which somebody else holds the login
};

/// Looked up when a call was refused, by the pages that its arguments name.
Circumstances circumstancesOf(HostContext& host, const operations::Operation& operation,
                              const operations::StatusCode& code, const operations::GivenValues& arguments);

}  // namespace torvex::api
