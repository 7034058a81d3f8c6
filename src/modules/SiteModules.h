#pragma once

#include "delivery/PageModules.h"

namespace torvex {

/// The modules of this program that stand in every page, as assembly asks for them. Has no state; any thread
/// may use it.
class SiteModules final : public PageModules {
  public:
    std::optional<ModuleOutput> dynamicMenu(const ModuleCall& call, PageId pageId) override;
    std::optional<ModuleOutput> newsflash(const ModuleCall& call, std::string_view site,
                                          std::string_view lang, int number) override;
};

}  // namespace torvex
