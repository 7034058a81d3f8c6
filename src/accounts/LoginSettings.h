#pragma once

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

}  // namespace torvex
