#include "pages/Pages.h"
#include "pages/visitors/MessagePage.h"
#include "platform/ApplicationValues.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Response.h"

namespace torvex {

void homePage(HostContext& host) {
    const std::string pageId = host.application.text(applicationKey::defaultPageId);
    if (!pageId.empty()) {
        const bool frames = host.application.isTrue(applicationKey::usesFrames);
        host.response.redirect((frames ? "/frameset.asp?pageId=" : "/tvx.asp?pageId=") + pageId);
        return;
    }
    answerMessage(
        host.response, 404,
        {.title = "There is no home page yet",
         .explanation = "This server runs, but its owners have not chosen a page to begin with.",
         .advice = "To the owners: publish a page, store its number as the setting tvx_default_pageId "
                   "and start the server again.",
         .reference = {}});
}

}  // namespace torvex
