#pragma once

#include <exception>
#include <string>
#include <string_view>

#include "platform/net/HttpClient.h"

namespace torvex {
struct HostContext;
}

/// What both kinds of feed share about where their content lies.
namespace torvex::feeds {

/// The file of a feed in its site's folder of documents; "" for one that would lie elsewhere.
std::string filePath(HostContext& host, std::string_view site, std::string_view file);

/// An address as a register holds it, made one: trimmed, "\" as "/".
std::string address(std::string_view column);

/// One try to fetch an address for the page that is being made. Throws `Error` when there is no answer, and
/// at once when the page is itself fetched as a feed: a page that shows itself would ask without end.
HttpClient::Answer fetch(HostContext& host, const std::string& address);

/// The description of an error, fit to be shown: without the folders of the installation.
std::string shownReason(HostContext& host, const std::exception& error);

}  // namespace torvex::feeds
