#pragma once

#include "modules/forum/ForumViews.h"

namespace torvex {

struct HostContext;

// What has become of a visitor's post is told once, on the next page that she sees.
void noteNews(HostContext& host, PostNews news);
PostNews takeNews(HostContext& host);

}  // namespace torvex
