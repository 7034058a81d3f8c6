#pragma once

#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/files/FileSystem.h"
#include "replication/SharedFiles.h"
#include "search/LivePages.h"
#include "search/SnapshotText.h"

namespace torvex {

/// Renews the files that the full text catalogue reads. Each is written whole or not at all, and some of them
/// together; `finish` has to come last. A page that fails is told to `onFailure` and keeps the file that it
/// has; the others go on. What `onFailure` throws passes through. One thread uses an object.
class Snapshots {
  public:
    using OnFailure = std::function<void(const std::string& nodeId, const std::string& reason)>;

    Snapshots(HostContext& host, const db::ConnectionSource& connection, OnFailure onFailure);

    /// Makes the folder of all, here and on the other servers. Throws when it can't be made here.
    void begin();
    /// A folder has no file, and loses one that it had as a page.
    void renew(const LivePage& page);
    void finish();

  private:
    void add(const LivePage& page);
    void makeFolder(std::string_view nodeId);
    void write();

    HostContext& host_;
    OnFailure onFailure_;
    SnapshotText text_;
    SharedFiles shared_;
    std::set<std::string> folders_;  ///< known to be there
    std::vector<TextFile> waiting_;
    std::size_t waitingBytes_ = 0;
};

}  // namespace torvex
