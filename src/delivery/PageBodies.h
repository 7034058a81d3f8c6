#pragma once

#include <string>
#include <string_view>

#include "records/PageId.h"
#include "records/PageIdentity.h"

namespace torvex {

struct HostContext;
namespace db {
class Connection;
}

/// What a body is.
namespace bodyType {
inline constexpr int storedText = 1;
inline constexpr int htmlFeed = 2;
inline constexpr int xmlFeed = 3;
}  // namespace bodyType

/// One body of a page in its place. As made, it is one that isn't there.
struct PageBody {
    int id = 0;
    int type = bodyType::storedText;
    int feedId = 0;
    std::string text;  ///< as stored
};

/// What is put around a body in its place: the frames by which authors edit.
class BodyFrame {
  public:
    virtual ~BodyFrame() = default;

    virtual std::string around(const PageBody& body, std::string content) = 0;
};

/// The bodies of pages in one of the twin tables. The failure of a body that stands in a page has the line
/// "getBody !" in front.
class PageBodies {
  public:
    /// Gives a feed's output and never throws; see Feeds.h.
    using Feed = std::string (*)(HostContext&, db::Connection&, int feedId);

    PageBodies(HostContext& host, db::Connection& connection, Twin twin, Feed xmlFeed)
        : host_(host), connection_(connection), twin_(twin), xmlFeed_(xmlFeed) {}

    /// `html` with the bodies of the page in their places, which must be numbered without a gap.
    std::string fill(PageId pageId, std::string html, BodyFrame* frame = nullptr);
    /// One body; its kind and feed are looked up when `type` is below 1.
    std::string body(PageId pageId, int bodyId, int type, int feedId);

  private:
    std::string content(PageId pageId, PageBody& body, bool feeds);

    HostContext& host_;
    db::Connection& connection_;
    Twin twin_;
    Feed xmlFeed_;
};

}  // namespace torvex
