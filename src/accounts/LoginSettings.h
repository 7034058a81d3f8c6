#pragma once

#include <string_view>

namespace torvex {
namespace db {
class Connection;
}
struct HostContext;

/// Puts the settings of a login into its session: when it logs in, in place of those that every session
/// starts with. The language of the interface is taken over, with the folder of its templates, if it is
/// switched on. A setting that says who somebody is or where files lie is passed over, and so is a number
/// that isn't one.
void takeOverSettings(HostContext& host, db::Connection& connection, int loginId);

/// The language of the interface that the session works in from now on, with the folder of its templates.
/// Changes nothing for one that isn't switched on.
void useInterface(HostContext& host, db::Connection& connection, std::string_view language);

}  // namespace torvex
