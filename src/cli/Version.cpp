#include "cli/Version.h"

namespace torvex::cli {

std::string versionText() {
    return "torvex " TORVEX_VERSION;
}

}  // namespace torvex::cli
