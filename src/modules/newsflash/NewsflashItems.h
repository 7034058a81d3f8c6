#pragma once

#include <string>

#include "delivery/PageModules.h"
#include "modules/shared/ImageSizes.h"

namespace torvex {

/// Which items a newsflash shows, and how.
struct NewsflashItems {
    int newsflashId = 0;
    std::string site;
    std::string lang;
    int order = 0;          ///< 1 to 6
    int textLength = 0;     ///< from where a text is cut at the next blank; 0 no text, below 0 all of it
    int most = 0;           ///< how many are shown
    std::string selection;  ///< "M" those marked for newsflashes, "A" all that are online
    int imageAlignment = 0;
    ImageSize imageLimit;
};

/// The content of a template with the items in their place.
std::string drawNewsflashItems(const ModuleCall& call, const NewsflashItems& items, const std::string& html);

}  // namespace torvex
