#pragma once

namespace torvex {
namespace db {
class Connection;
}

/// Keeps all others who call this out until the transaction ends, so that what was looked up in a register
/// still holds when the register is changed: that a name isn't taken, that a row is the last. For changes
/// that are rare, since all registers share it.
void lockRegisters(db::Connection& transaction);

}  // namespace torvex
