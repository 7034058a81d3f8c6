#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace torvex {

class BuiltInterface;
struct HostContext;

/// What answers one address: reads the request, calls the classes and fills the response. Called on a worker
/// thread, with the visitor's session held. What it throws is logged and answered with a page that shows a
/// reference number; `ResponseEnded` is a normal end.
using PageHandler = std::function<void(HostContext&)>;

/// An address of the server's own, and what answers it.
struct PageRoute {
    std::string path;  ///< lower case, exact: "/tvx.asp" or "/"; requests match it ignoring case
    PageHandler handler;
    bool acceptsPost = false;
    /// Bytes that a post may bring; without a value, as many as the server takes in general.
    std::optional<std::uint64_t> bodyLimit{};
    /// In place of forms, a post may bring a text of this media type, which is the form's field of the type's
    /// second half: "application/csp-report" gives "csp-report".
    std::string bodyType{};
};

/// A folder of public files whose readers are checked one by one.
struct FileGuard {
    std::string folder;  ///< as in addresses: "/images/"
    /// Asked on the event loop for each request, so it must be quick; false serves the folder unchecked.
    std::function<bool()> isOn;
    /// Called on a worker with the session held; `path` is the decoded address. True sends the file;
    /// otherwise the response says why not (untouched, it becomes a 403).
    std::function<bool(HostContext&, std::string_view path)> mayRead;
};

/// All that visitors are answered by.
struct ServedPages {
    /// Fills the session of a new visitor; called on a worker, before the page.
    std::function<void(HostContext&)> startSession;
    std::vector<PageRoute> pages;
    std::vector<FileGuard> guards = {};
    /// The files of the authors' interface; null serves none.
    std::shared_ptr<const BuiltInterface> interface = nullptr;
};

}  // namespace torvex
