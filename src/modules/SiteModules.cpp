#include "modules/SiteModules.h"

namespace torvex {

std::optional<ModuleOutput> SiteModules::dynamicMenu(const ModuleCall& /*call*/, PageId /*pageId*/) {
    return std::nullopt;
}

std::optional<ModuleOutput> SiteModules::newsflash(const ModuleCall& /*call*/, std::string_view /*site*/,
                                                   std::string_view /*lang*/, int /*number*/) {
    return std::nullopt;
}

}  // namespace torvex
