#include "pages/visitors/PostNews.h"

#include "platform/HostContext.h"
#include "platform/Session.h"

namespace torvex {

namespace {

constexpr std::string_view newsKey = "tvx_forum_news";

}  // namespace

void noteNews(HostContext& host, PostNews news) {
    host.session.set(newsKey, static_cast<int>(news));
}

PostNews takeNews(HostContext& host) {
    const double kept = host.session.number(newsKey);
    if (kept == 0) return PostNews::None;
    host.session.set(newsKey, 0);
    return kept == static_cast<int>(PostNews::Shown) ? PostNews::Shown : PostNews::Waits;
}

}  // namespace torvex
