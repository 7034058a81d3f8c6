#pragma once

namespace torvex {

struct HostContext;

// One function for each address of the server's own, in a file of its own.

/// "/": leads to the installation's default page.
void homePage(HostContext& host);
/// "/tvx.asp?pageId=N": a page, or the way to what the visitor has to see instead.
void tvxPage(HostContext& host);
/// "/error.asp?pageId=N&error=VALUE": tells a visitor why there is no page, with a fitting status.
void errorPage(HostContext& host);

}  // namespace torvex
