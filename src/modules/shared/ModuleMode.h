#pragma once

#include <string>
#include <string_view>

#include "delivery/PageModules.h"

namespace torvex {

/// For whom a module works, by the mode that its callers name: "" is the visitor; anything else the authors,
/// who see the design by "D" and what is live by others.
ModuleCall callInMode(HostContext& host, db::Connection& connection, std::string_view mode);

/// The links of what a module has drawn, as those for whom it works need them.
std::string withModuleLinks(const ModuleCall& call, std::string html, const std::string& site,
                            const std::string& lang);

}  // namespace torvex
