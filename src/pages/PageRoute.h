#pragma once

#include <functional>
#include <string>

namespace torvex {

struct HostContext;

/// What answers one address: reads the request, calls the classes and fills the response. Called on a worker
/// thread, with the visitor's session held.
using PageHandler = std::function<void(HostContext&)>;

/// An address of the server's own, and what answers it. Addresses compare ignoring case.
struct PageRoute {
    std::string path;  ///< lower case, as "/tvx.asp"
    PageHandler handler;
    bool acceptsPost = false;
};

}  // namespace torvex
