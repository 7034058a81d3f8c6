#include <fmt/format.h>

#include "platform/ApplicationValues.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/text/ScriptText.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"
#include "templates/ApplicationTemplate.h"
#include "templates/FramesScript.h"
#include "templates/HTMLTemplate.h"

namespace torvex {

PageId HTMLTemplate::loadAppTpl(const std::string& pageIdent, const std::string& tplTitle,
                                const std::string& mode) try {
    constexpr PageId none = -1;
    buffer_.clear();
    db::Connection& connection = connection_.use(host_);
    const auto found = applicationTemplate(host_, connection, identify(connection, pageIdent),
                                           text::trim(tplTitle), twinOf(mode));
    return found && load(found->path) ? found->pageId : none;
} catch (...) {
    raiseFrom("loadAppTpl !");
}

std::string framesScript(const PageIdentity& page) {
    return fmt::format("if (window.top.navigation) {{window.top.navigation('{}','{}')}}",
                       text::fromNumber(page.pageId), scriptText(page.nodeId));
}

void HTMLTemplate::syncFrames(const std::string& pageIdent) try {
    if (!host_.application.isTrue(applicationKey::usesFrames)) return;
    tellFrames(identify(connection_.use(host_), pageIdent));
} catch (...) {
    raiseFrom("syncFrames !");
}

void HTMLTemplate::tellFrames(const PageIdentity& page) {
    if (!page.isValid()) return;
    const std::string script = "<script language=\"JavaScript\">" + framesScript(page) + "</script></body>";
    buffer_ = text::replaceAll(buffer_, "</body>", script);
}

std::string HTMLTemplate::getNodeId(PageId pageId) try {
    return nodeIdOf(connection_.use(host_), pageId);
} catch (...) {
    raiseFrom("getNodeId !");
}

PageId HTMLTemplate::getPageId(const std::string& nodeId) try {
    return pageIdOf(connection_.use(host_), nodeId);
} catch (...) {
    raiseFrom("getPageId !");
}

}  // namespace torvex
