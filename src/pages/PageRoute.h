#pragma once

#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Response.h"
#include "platform/net/Method.h"

namespace torvex {

class BuiltInterface;
struct HostContext;

/// What answers one address: reads the request, calls the classes and fills the response. Called on a worker
/// thread, with the visitor's session held. What it throws is logged and answered with a page that shows a
/// reference number; `ResponseEnded` is a normal end.
using PageHandler = std::function<void(HostContext&)>;

/// A request that an address took and that came to nothing.
struct Refused {
    int status = 500;
    std::string_view languages{};             ///< the request's Accept-Language
    std::string_view reference{};             ///< under which the log tells of a failure; "" when it doesn't
    const std::exception* failure = nullptr;  ///< what the handler threw, if anything
};

/// Says so in the address's own form. Asked on event loops too, so it must be quick; safe from any thread. The
/// host adds `Allow` and `Retry-After`.
using RefusalHandler = std::function<Response(const Refused&)>;

/// An address of the server's own, and what answers it.
struct PageRoute {
    enum class Reach { Exact, Below, BelowButFiles };

    std::string path;  ///< lower case: "/tvx.asp" or "/"; requests match it ignoring case
    PageHandler handler;
    MethodSet methods = methods::page;
    /// Bytes that a body may have; without a value, as many as the server takes in general.
    std::optional<std::uint64_t> bodyLimit{};
    /// In place of forms, a request may bring a body of these media types, which is then `Request::body`.
    std::vector<std::string> bodyTypes{};
    /// `Below` takes every address that begins with the path, unless another one's path is longer or exact.
    /// `BelowButFiles` leaves those that by their names are public files.
    Reach reach = Reach::Exact;
    RefusalHandler refusal{};  ///< none: the server's own pages say what went wrong
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
