#pragma once

#include <string>

#include "platform/db/ConnectionSource.h"
#include "search/LivePages.h"

namespace torvex {

/// Turns published pages into the texts that the full text catalogue reads: title and meta data as its head,
/// and the content without what only serves visitors. The feeds of a page are fetched for it.
class SnapshotText {
  public:
    SnapshotText(HostContext& host, const db::ConnectionSource& connection);

    std::string of(const LivePage& page);

  private:
    std::string titleOf(const LivePage& page);
    std::string metaDataOf(const LivePage& page);
    std::string contentOf(const LivePage& page);

    HostContext& host_;
    db::ConnectionSource connection_;
};

}  // namespace torvex
