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

/// Where a body goes that is too large for memory. Made for one request; one thread at a time uses it, and
/// each call returns at once.
class BodySink {
  public:
    virtual ~BodySink() = default;

    /// The next bytes. False when no more can be taken: the request is then refused.
    virtual bool take(std::string_view bytes) = 0;
    /// Under which the handler finds what was taken: the request's server variable "body_receipt".
    virtual std::string receipt() const = 0;
};

/// What an address says to a body before it comes.
struct BodyReception {
    int refusal = 0;  ///< a status, or 0 when the body may come
    std::shared_ptr<BodySink> sink{};
    std::uint64_t limit = 0;  ///< bytes
};

/// The value of a request's field, "" when it isn't there.
using FieldOf = std::function<std::string_view(std::string_view name)>;
/// Asked on event loops with the address and the fields, so it must be quick; safe from any thread. Nobody has
/// said yet who sends the request: that is for the handler to find out before it makes use of the body. The
/// handler also gets what came of a body whose sender has gone.
using BodyReceiver = std::function<BodyReception(const std::string& path, const FieldOf& field)>;

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
    /// A request that has a field Authorization has a session that ends with it: its cookie isn't looked at.
    bool takesTokens = false;
    /// False where answers are the same for everybody, so that browsers may keep what a login has got, and that they may
    /// be compressed.
    bool isPersonal = true;
    /// True where an answer to somebody who isn't logged in holds nothing that others mayn't know, as the token of a form:
    /// it may be compressed together with what the request brought.
    bool isOpen = false;
    /// True where an answer follows from what the host lets a handler read, and from nothing else: visitors without a
    /// session may then share it as long as all of that stands.
    bool isShared = false;
    RefusalHandler refusal{};  ///< none: the server's own pages say what went wrong
    BodyReceiver receiver{};   ///< none: bodies are kept in memory
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
