#include "modules/SiteModules.h"

#include "modules/dynamicMenu/MenuLoading.h"
#include "modules/newsflash/NewsflashBox.h"
#include "platform/Errors.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"

namespace torvex {

std::optional<ModuleOutput> SiteModules::dynamicMenu(const ModuleCall& call, PageId pageId) {
    return asLevel("load (dynMenu) !", [&]() -> std::optional<ModuleOutput> {
        const MenuView view{call.twin, call.forAuthors};
        auto menu = loadMenu(call.host, call.connection, identify(call.connection, pageId), view);
        if (!menu) return std::nullopt;
        return ModuleOutput{std::move(menu->header), std::move(menu->content)};
    });
}

std::optional<ModuleOutput> SiteModules::newsflash(const ModuleCall& call, std::string_view site,
                                                   std::string_view lang, int number) {
    NewsflashBox box;
    const bool isThere = asLevel("Load (newsflash) !", [&] {
        return drawNewsflash(call, text::lower(site), text::lower(lang), number, box);
    });
    if (!isThere) return std::nullopt;
    return ModuleOutput{std::move(box.header), std::move(box.content)};
}

}  // namespace torvex
