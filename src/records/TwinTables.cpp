#include "records/TwinTables.h"

#include "platform/text/Text.h"

namespace torvex {

std::string onTwin(std::string_view statement, Twin twin) {
    return text::replaceAll(statement, "_TWIN", twin == Twin::Design ? "_DESIGN" : "_LIVE");
}

}  // namespace torvex
