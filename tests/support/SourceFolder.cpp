#include "support/SourceFolder.h"

namespace torvex::test {

std::string sourceFolder() {
    return TORVEX_SOURCE_DIR;
}

}  // namespace torvex::test
