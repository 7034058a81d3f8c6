#include "delivery/cServer.h"
#include "pages/ContentPolicy.h"
#include "pages/Pages.h"
#include "platform/ApplicationValues.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Request.h"
#include "platform/Response.h"
#include "platform/Session.h"
#include "platform/text/ScriptText.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

// The functions are those that links in pages call on the top window; client.js makes the calls.
constexpr std::string_view frameset = R"(<!DOCTYPE html>
<html lang="{{lang}}">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>{{title}}</title>
<style>html,body{margin:0;height:100%;overflow:hidden}iframe{display:block;width:100%;height:100%;border:0}</style>
<script src="/torvex/client.js"></script>
<script>{{script}}</script>
</head>
<body>
<iframe id="page" name="page" src="/tvx.asp?{{query}}" title="{{title}}"></iframe>
<noscript><a href="/tvx.asp?{{query}}">{{title}}</a></noscript>
</body>
</html>
)";

constexpr std::string_view script = R"(
var torvex_empty = '';
function pageFrame() { return document.getElementById('page'); }
function page(pageId, nodeId) { pageFrame().src = '/tvx.asp?pageId=' + encodeURIComponent(pageId); }
function popup(site, file) { window.open('{{documents}}' + site + '/' + file, '_blank', 'noopener'); }
function watch() {
  try { torvex_watch(pageFrame().contentDocument); } catch (e) { /* another site */ }
}
function navigation(pageId, nodeId) {
  watch();
  history.replaceState(null, '', '/frameset.asp?pageId=' + encodeURIComponent(pageId));
  try { document.title = pageFrame().contentDocument.title || document.title; } catch (e) { /* another site */ }
}
addEventListener('DOMContentLoaded', function () { pageFrame().addEventListener('load', watch); });
)";

/// Pages of other sites may be shown in the frame, where links lead to them.
constexpr std::string_view framePolicy = "; frame-src http: https:";

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
    const std::string functions =
        text::replaceAll(std::string(script), "{{documents}}",
                         scriptText(host.application.text(applicationKey::documentsUrl)));
    host.response.addHeader("Content-Security-Policy", ownPagePolicy(scriptSource(functions), framePolicy));
    std::string html = text::replaceAll(std::string(frameset), "{{script}}", functions);
    html = text::replaceAll(html, "{{lang}}", text::htmlEncode(page.isValid() ? lang : "en"));
    html = text::replaceAll(html, "{{title}}", text::htmlEncode(title));
    html = text::replaceAll(html, "{{query}}", text::htmlEncode(query));
    host.response.write(html);
}

}  // namespace torvex
