#pragma once

#include <string>

#include "platform/Value.h"
#include "platform/db/ConnectionSource.h"

namespace torvex {
struct HostContext;

/// What an author's day needs beside the pages themselves: what waits for whom, what differs, where something
/// is used. It changes no content. An object is made for one request, in the name of the login that the
/// visitor's session holds, and is used by one thread.
///
/// Lists are grids, or an empty value when there is nothing in them; each says in which order it is. A
/// `pageIdent` is a page's number or its node, always of the design; where there is no such page, nothing is
/// listed.
class desk {
  public:
    explicit desk(HostContext& host) : host_(host) {}

    void connect(db::ConnectionSource connection) { connection_ = std::move(connection); }

    // ---- A page (desk/Bodies.cpp) ----

    /// The bodies that have a row in the design or the live data, by their number: kind and feed of the
    /// design's, its length in characters, and whether visitors see another one.
    Value getBodies(const std::string& pageIdent);

  private:
    db::Connection& connection() { return connection_.use(host_); }

    HostContext& host_;
    db::ConnectionSource connection_;
};

}  // namespace torvex
