#pragma once

#include <string>

#include "records/PageIdentity.h"

namespace torvex {

/// What a live page says of itself in its head, as HTML tags that end their line each; "" for a page of the
/// system branch.
std::string metaDataHtml(db::Connection& connection, const PageIdentity& page);

}  // namespace torvex
