#pragma once

#include <string>
#include <string_view>

#include "delivery/PageModules.h"

namespace torvex {

/// A newsflash as it is drawn. After one that could not be drawn, whatever was there by then.
struct NewsflashBox {
    std::string source;   ///< the whole template, for those for whom it is drawn
    std::string header;   ///< its part of the page's head
    std::string content;  ///< drawn
};

/// Draws the newsflash of that number into `box`; false when there is none, or when its template isn't there
/// or is none of the system's. Site and language are in small letters. What of it fails has its own line in
/// front, but for the outermost one.
bool drawNewsflash(const ModuleCall& call, std::string_view site, std::string_view lang, int number,
                   NewsflashBox& box);

}  // namespace torvex
