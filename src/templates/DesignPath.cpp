#include "templates/DesignPath.h"

#include "platform/ApplicationValues.h"

namespace torvex {

std::string designPath(const ApplicationValues& application, std::string_view folderKey,
                       std::string_view site, std::string_view lang, std::string_view file) {
    std::string path = application.text(folderKey);
    return path.append(site).append("/").append(lang).append("/").append(file);
}

}  // namespace torvex
