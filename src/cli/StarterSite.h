#pragma once

#include "installation/FirstRows.h"

namespace torvex::cli {

/// Throws `UsageError` for a code that isn't two small letters or digits, and for an empty or overlong title.
void checkStarterSite(const NewWebsite& site);

}  // namespace torvex::cli
