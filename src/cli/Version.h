#pragma once

#include <string>

namespace torvex::cli {

/// "torvex 0.1.0".
std::string versionText();

}  // namespace torvex::cli
