#include "authoring/EditFrame.h"

#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Session.h"
#include "platform/text/Text.h"
#include "records/Labels.h"
#include "records/Vocabulary.h"
#include "templates/HTMLTemplate.h"

namespace torvex {

namespace {

// The frame stands in pages of any style, so its style is written into its tags; the body keeps the page's.
constexpr std::string_view frameHeader =
    R"~(<table class="bodyborder" style="width:100%;height:100%;table-layout:fixed;margin:0;padding:0;border:1px dashed #64748b;border-collapse:separate;border-spacing:0;background:none">)~"
    "\r\n"
    R"~(<tr style="background:none"><th class="bodyheader" scope="col" style="height:24px;padding:2px 6px;border:0;background:#e2e8f0;color:#1e293b;font:bold 12px/20px sans-serif;letter-spacing:0;text-align:left;text-transform:none">)~"
    R"~(<span style="display:flex;align-items:center;gap:6px"><a id="body<!--!bodyId!-->" name="body<!--!bodyId!-->"></a>)~"
    R"~(<img id="copy<!--!bodyId!-->" src="/torvex/images/body_copy_up.gif" width="20" height="20" alt="<!--!copy!--> <!--!bodyId!-->" title="<!--!copy!--> <!--!bodyId!-->" role="button" tabindex="0" style="display:block;flex:none;width:20px;height:20px;margin:0;cursor:pointer" )~"
    R"~(onmouseover="buttonOver(this)" onmouseout="buttonOut(this)" onmousedown="buttonDown(this)" onmouseup="buttonOver(this)" )~"
    R"~(onclick="top.content.nodeId='<!--!nodeId!-->';top.content.bodyId=<!--!bodyId!-->;top.link.copyBody();" )~"
    R"~(onkeydown="if(event.key==='Enter'||event.key===' '){event.preventDefault();this.click();}">)~"
    R"~(<a href="javascript:top.link.setupBody('<!--!nodeId!-->',<!--!bodyId!-->,<!--!bodyType!-->,<!--!feedId!-->)" style="flex:none">)~"
    R"~(<img src="/torvex/images/body_setup.gif" width="20" height="20" alt="<!--!alt!--> <!--!bodyId!-->" title="<!--!alt!--> <!--!bodyId!-->" style="display:block;width:20px;height:20px;margin:0;border:0"></a>)~"
    R"~(<span style="flex:1;text-align:right"><!--!bodyLink!--></span></span></th></tr>)~"
    "\r\n"
    R"~(<tr style="background:none"><td class="bodycontent" style="padding:0;border:0;background:none;vertical-align:top;overflow-wrap:anywhere">)~";
constexpr std::string_view frameEnd = "</td></tr>\r\n</table>";

constexpr std::string_view linkStyle =
    R"~( style="display:block;padding:0 6px;border:0;background:none;color:#1d4ed8;font:inherit")~";
constexpr std::string_view numberStyle =
    R"( style="display:block;padding:0 6px;border:0;background:none;color:#475569;font:inherit")";

constexpr std::string_view beforeForm =
    "<div id=\"bodySetup\" style=\"display:none;position:absolute;z-index:10000\"></div>\r\n"
    "<form name=\"editBody\" method=\"post\" action=\"view.asp\">"
    "<input type=\"hidden\" name=\"html\" value=\"\">"
    "<input type=\"hidden\" name=\"pageId\" value=\"";
constexpr std::string_view afterPageId =
    "\">"
    "<input type=\"hidden\" name=\"bodyId\" value=\"\">"
    "<input type=\"hidden\" name=\"job\" value=\"save\">"
    "<input type=\"hidden\" name=\"mode\" value=\"D\"></form>\r\n"
    "<script>\r\n"
    "function buttonState(button, state) { button.src = '/torvex/images/body_copy_' + state + '.gif'; }\r\n"
    "function buttonOver(button) { buttonState(button, 'over'); }\r\n"
    "function buttonOut(button) { buttonState(button, 'up'); }\r\n"
    "function buttonDown(button) { buttonState(button, 'down'); }\r\n"
    "document.onclick = function () { document.getElementById('bodySetup').style.display = 'none'; };\r\n"
    "</script>\r\n";

constexpr std::string_view bodyEnd = "</body>";

/// For a script's string in single quotes within an attribute in double ones.
std::string inScript(const HTMLTemplate& frame, std::string_view value) {
    return text::htmlEncode(frame.jsEncode(value));
}

/// A stored text may hold one as well: the page's own is the last.
std::size_t lastBodyEnd(std::string_view html) {
    std::size_t last = text::npos;
    for (std::size_t at = text::find(html, bodyEnd); at != text::npos;
         at = text::find(html, bodyEnd, at + 1)) {
        last = at;
    }
    return last;
}

}  // namespace

EditFrame::EditFrame(HostContext& host, db::Connection& connection, PageIdentity page)
    : host_(host), page_(std::move(page)) {
    const std::string language = host.session.text(sessionKey::interfaceLanguage);
    auto words =
        vocabularyTexts(connection, language, {label::editButton, label::copyButton, label::setupButton});
    words_ = {text::htmlEncode(words[label::editButton]), text::htmlEncode(words[label::copyButton]),
              text::htmlEncode(words[label::setupButton])};
}

/// A feed has no text that could be edited.
std::string EditFrame::textLink(const PageBody& body) const {
    const std::string number = std::to_string(body.id);
    if (body.type != bodyType::storedText) {
        return R"(<span class="bodyLink")" + std::string(numberStyle) + ">" + number + "</span>";
    }
    const std::string call =
        "top.link.editBody('" + inScript(HTMLTemplate(host_), page_.nodeId) + "'," + number + ")";
    return R"(<a class="bodyLink" href="javascript:)" + call + R"(" title=")" + words_.edit + " " + number +
           "\"" + std::string(linkStyle) + ">" + number + "</a>";
}

std::string EditFrame::header(const PageBody& body) const {
    HTMLTemplate frame(host_);
    frame.setStrVal(std::string(frameHeader));
    frame.replaceTag("bodyId", std::to_string(body.id));
    frame.replaceTag("bodyType", std::to_string(body.type));
    frame.replaceTag("feedId", std::to_string(body.feedId));
    frame.replaceTag("nodeId", inScript(frame, page_.nodeId));
    frame.replaceTag("copy", words_.copy);
    frame.replaceTag("alt", words_.setup);
    frame.replaceTag("bodyLink", textLink(body));
    return frame.takeStrVal();
}

std::string EditFrame::around(const PageBody& body, std::string content) {
    return header(body).append(content).append(frameEnd);
}

std::string EditFrame::withForm(std::string html) const {
    std::string form(beforeForm);
    form.append(text::fromNumber(page_.pageId)).append(afterPageId);
    const std::size_t end = lastBodyEnd(html);
    return html.insert(end == text::npos ? html.size() : end, form);
}

}  // namespace torvex
