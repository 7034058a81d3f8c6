#pragma once

#include <string_view>

namespace torvex {

/// Whether a password is one of the 100,000 commonest, which whoever guesses tries first. Case and blanks around
/// it are ignored, as everywhere with passwords. Safe from any thread. The list (`install/passwords`) is looked up
/// as the program carries it, in blocks: 392 KiB of the program's file, of which the system reads the pages that are
/// asked for, and nothing of the process's own memory.
bool isCommonPassword(std::string_view password);

}  // namespace torvex
