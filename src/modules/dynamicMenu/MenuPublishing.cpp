#include "modules/dynamicMenu/MenuPublishing.h"

#include "platform/HostContext.h"
#include "platform/db/Connection.h"
#include "platform/db/ConnectionSource.h"

namespace torvex {

namespace {

constexpr std::string_view publishing[] = {
    "delete from TORVEX_DYNMENU_DESIGN where site = ? and lang = ? and deleted = 1",
    "update TORVEX_DYNMENU_DESIGN set modified = 0 where site = ? and lang = ?",
    "delete from TORVEX_DYNMENU_LIVE where site = ? and lang = ?",
    "insert into TORVEX_DYNMENU_LIVE "
    "(site, lang, pageId, minLevels, maxLevels, templateId, display, extranet, deleted, modified) "
    "select site, lang, pageId, minLevels, maxLevels, templateId, display, extranet, deleted, modified "
    "from TORVEX_DYNMENU_DESIGN where site = ? and lang = ?",
};

constexpr std::string_view removing[] = {
    "delete from TORVEX_DYNMENU_DESIGN where pageId not in (select pageId from TORVEX_PAGES_DESIGN)",
    "delete from TORVEX_DYNMENU_LIVE where pageId not in (select pageId from TORVEX_PAGES_LIVE)",
    "delete from TORVEX_DYNMENU_DESIGN where templateId not in (select tpl_id from TORVEX_TEMPLATES)",
    "delete from TORVEX_DYNMENU_LIVE where templateId not in (select tpl_id from TORVEX_TEMPLATES)",
};

}  // namespace

void publishMenus(HostContext& host, std::string_view site, std::string_view lang) {
    const auto own = db::openOwn(host);
    db::Transaction transaction(*own);
    for (const auto statement : publishing) own->execute(statement, {site, lang});
    transaction.commit();
}

void removeOrphanMenus(HostContext& host) {
    const auto own = db::openOwn(host);
    db::Transaction transaction(*own);
    for (const auto statement : removing) own->execute(statement);
    transaction.commit();
}

}  // namespace torvex
