#include "delivery/cServer.h"
#include "pages/Pages.h"
#include "platform/ApplicationValues.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Request.h"
#include "platform/Response.h"
#include "platform/Session.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

// The functions are those that links in pages call on the top window.
constexpr std::string_view frameset = R"(<!DOCTYPE html>
<html lang="{{lang}}">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>{{title}}</title>
<style>html,body{margin:0;height:100%;overflow:hidden}iframe{display:block;width:100%;height:100%;border:0}</style>
<script>
var torvex_empty = '';
function pageFrame() { return document.getElementById('page'); }
function page(pageId, nodeId) { pageFrame().src = '/tvx.asp?pageId=' + encodeURIComponent(pageId); }
function popup(site, file) { window.open('{{documents}}' + site + '/' + file, '_blank', 'noopener'); }
function navigation(pageId, nodeId) {
  history.replaceState(null, '', '/frameset.asp?pageId=' + encodeURIComponent(pageId));
  try { document.title = pageFrame().contentDocument.title || document.title; } catch (e) { /* another site */ }
}
</script>
</head>
<body>
<iframe id="page" name="page" src="/tvx.asp?{{query}}" title="{{title}}"></iframe>
<noscript><a href="/tvx.asp?{{query}}">{{title}}</a></noscript>
</body>
</html>
)";

}  // namespace

void framesetPage(HostContext& host) {
    const auto connection = db::openOwn(host, db::Purpose::Everything);
    cServer server(host);
    server.connect(*connection);
    std::string pageId = host.request.queryString("pageId");
    std::string query = host.request.queryString();
    if (text::trim(pageId).empty()) {
        const bool isNamed = text::contains(query, "pageId");  // blank, which means the default page as well
        pageId = host.application.text(applicationKey::defaultPageId);
        if (!isNamed) query = "pageId=" + pageId + (query.empty() ? "" : "&" + query);
    }
    const PageIdentity page = identify(*connection, pageId);
    const std::string lang(langOf(page.nodeId));
    const std::string title = server.getWebsiteTitle(std::string(siteOf(page.nodeId)), lang);
    host.session.set(sessionKey::ssl, text::equals(host.request.serverVariable("https"), "on"));
    std::string html(frameset);
    html = text::replaceAll(html, "{{lang}}", text::htmlEncode(page.isValid() ? lang : "en"));
    html = text::replaceAll(html, "{{title}}", text::htmlEncode(title));
    html = text::replaceAll(html, "{{documents}}",
                            text::htmlEncode(host.application.text(applicationKey::documentsUrl)));
    html = text::replaceAll(html, "{{query}}", text::htmlEncode(query));
    host.response.write(html);
}

}  // namespace torvex
