#include "modules/dynamicMenu/MenuLoading.h"

#include <fmt/format.h>

#include "delivery/Access.h"
#include "modules/dynamicMenu/MenuContent.h"
#include "modules/dynamicMenu/MenuDefinition.h"
#include "platform/DateTime.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/db/ScopeMemory.h"
#include "templates/DesignPath.h"
#include "templates/HTMLTemplate.h"
#include "templates/OptionalBlock.h"

namespace torvex {

namespace {

bool loadTemplate(HTMLTemplate& source, HostContext& host, std::string_view nodeId, const std::string& file) {
    return !file.empty() && source.load(designPath(host.application, applicationKey::contentTemplatesPath,
                                                   siteOf(nodeId), langOf(nodeId), file));
}

/// All that a menu's content depends on besides the database, for one who isn't logged in. The parts are
/// texts without line breaks, but for the last one.
std::string keyOf(const HostContext& host, const MenuDefinition& menu, std::string_view nodeId,
                  const MenuView& view, bool asksForGroups, std::string_view content) {
    return fmt::format("menu\n{}\n{}\n{}\n{} {} {} {} {} {} {}\n{}", nodeId, menu.root.nodeId,
                       host.clock.today(), menu.root.pageId, menu.minLevels, menu.maxLevels, menu.display,
                       view.twin == Twin::Design, view.forAuthors, asksForGroups, content);
}

/// Most visitors are strangers, and all of them see the same.
std::string contentOf(HostContext& host, db::Connection& connection, const MenuDefinition& menu,
                      std::string_view nodeId, const MenuView& view, const std::string& content) {
    const auto fill = [&] { return filledMenu(host, connection, menu, nodeId, view, content); };
    const bool asksForGroups = !view.forAuthors && menu.asksForRights() && hasExtranet(host);
    if (asksForGroups && !visitorOf(host).username.empty()) return fill();
    return db::rememberedWhileUnchanged(connection, keyOf(host, menu, nodeId, view, asksForGroups, content),
                                        fill);
}

}  // namespace

std::optional<LoadedMenu> loadMenu(HostContext& host, db::Connection& connection, const PageIdentity& page,
                                   const MenuView& view) {
    if (!page.isValid()) return std::nullopt;
    const auto menu = menuInForce(connection, page.nodeId, view.twin);
    HTMLTemplate source(host);
    if (!menu || !loadTemplate(source, host, page.nodeId, menu->templateFile)) return std::nullopt;
    source.replaceAllBlocks(view.forAuthors ? "torvex_public" : "torvex_admin", "");
    LoadedMenu loaded{source.strVal(), optionalBlock(source, "torvex_head"), {}};
    loaded.content =
        contentOf(host, connection, *menu, page.nodeId, view, optionalBlock(source, "torvex_content"));
    return loaded;
}

}  // namespace torvex
