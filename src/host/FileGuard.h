#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace torvex {

struct HostContext;

/// A folder of public files whose readers are checked one by one.
struct FileGuard {
    std::string folder;  ///< as in addresses: "/images/"; requests match it ignoring case
    /// Asked on the event loop for each request, so it must be quick; false serves the folder unchecked.
    std::function<bool()> isOn;
    /// Called on a worker with the session held; `path` is the decoded address. True sends the file; otherwise
    /// the response says why not (untouched, it becomes a 403).
    std::function<bool(HostContext&, std::string_view path)> mayRead;
};

}  // namespace torvex
