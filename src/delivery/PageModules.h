#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "records/PageId.h"
#include "records/PageIdentity.h"

namespace torvex {

struct HostContext;

/// The request that a module works in, and for whom.
struct ModuleCall {
    HostContext& host;
    db::Connection& connection;
    Twin twin = Twin::Live;
    bool forAuthors = false;  ///< in the authoring interface, of either twin
};

/// What a module puts on a page: a text for the page's head, and its content.
struct ModuleOutput {
    std::string header;
    std::string content;
};

/// The modules that fill tags of their own in every page. They stand above assembly, which is why they are
/// handed in; without any, their tags behave as ones that don't load. They keep nothing from one call to the
/// next.
class PageModules {
  public:
    virtual ~PageModules() = default;

    /// Nothing when the page shows no menu.
    virtual std::optional<ModuleOutput> dynamicMenu(const ModuleCall& call, PageId pageId) = 0;
    /// Nothing when there is no such newsflash.
    virtual std::optional<ModuleOutput> newsflash(const ModuleCall& call, std::string_view site,
                                                  std::string_view lang, int number) = 0;
};

}  // namespace torvex
