#pragma once

#include <string_view>

#include "records/PageIdentity.h"

namespace torvex {

/// For whom a menu is drawn, and from which twin of the tables.
struct MenuView {
    Twin twin = Twin::Live;
    bool forAuthors = false;

    /// "" is the visitor, "D" authors who look at the design, anything else authors who look at what is live.
    static MenuView of(std::string_view mode);
};

}  // namespace torvex
