#pragma once

#include <string>

#include "records/PageIdentity.h"

namespace torvex {

/// The script by which a page that is shown in a frame tells the frame set which page it is.
std::string framesScript(const PageIdentity& page);

}  // namespace torvex
