#include "modules/dynamicMenu/MenuLoading.h"

#include "modules/dynamicMenu/MenuContent.h"
#include "modules/dynamicMenu/MenuDefinition.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "templates/DesignPath.h"
#include "templates/HTMLTemplate.h"

namespace torvex {

namespace {

bool loadTemplate(HTMLTemplate& source, HostContext& host, std::string_view nodeId, const std::string& file) {
    return !file.empty() && source.load(designPath(host.application, applicationKey::contentTemplatesPath,
                                                   siteOf(nodeId), langOf(nodeId), file));
}

std::string blockOf(const HTMLTemplate& source, std::string_view block) {
    return source.blockExists(block) ? source.extractBlock(block) : std::string();
}

}  // namespace

std::optional<LoadedMenu> loadMenu(HostContext& host, db::Connection& connection, const PageIdentity& page,
                                   const MenuView& view) {
    if (!page.isValid()) return std::nullopt;
    const auto menu = menuInForce(connection, page.nodeId, view.twin);
    HTMLTemplate source(host);
    if (!menu || !loadTemplate(source, host, page.nodeId, menu->templateFile)) return std::nullopt;
    source.replaceAllBlocks(view.forAuthors ? "torvex_public" : "torvex_admin", "");
    LoadedMenu loaded{source.strVal(), blockOf(source, "torvex_head"), {}};
    loaded.content =
        filledMenu(host, connection, *menu, page.nodeId, view, blockOf(source, "torvex_content"));
    return loaded;
}

}  // namespace torvex
