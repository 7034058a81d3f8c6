#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/db/ConnectionSource.h"
#include "records/PageId.h"

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
    /// Renews the snapshots of these pages, as far as they are live.
    void renewSnapshots(const std::vector<PageId>& pages);

  private:
    void removeLanguageFolders(db::Connection& connection);
    void warn(std::string_view subject, std::string_view reason);

    HostContext& host_;
    db::ConnectionSource connection_;
};

}  // namespace torvex
