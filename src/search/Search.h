#pragma once

#include <string>

#include "platform/db/ConnectionSource.h"

namespace torvex {

struct HostContext;

/// The search of a site. The full text catalogue reads files, so that every published page has a copy for it:
/// its snapshot. An object lives for one request and is used by one thread.
class Search {
  public:
    explicit Search(HostContext& host) : host_(host) {}

    void connect(db::ConnectionSource connection) { connection_ = std::move(connection); }

    /// Renews the snapshots of all pages, or of one: "0", or "-99" when one of them can't be written (the log
    /// says why) and for a `pageIdent` that is no page's. Doing all of them first removes the folders of the
    /// languages.
    std::string initializePages(const std::string& pageIdent = "");

  private:
    void removeLanguageFolders(db::Connection& connection);

    HostContext& host_;
    db::ConnectionSource connection_;
};

}  // namespace torvex
