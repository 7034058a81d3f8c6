#pragma once

#include <span>
#include <string_view>

#include "installation/EmbeddedFile.h"

namespace torvex {

/// One file of the folder `install/`.
using InstallFile = EmbeddedFile;

/// All of them, ordered by name, as long as the program runs.
std::span<const InstallFile> installFiles();

/// Those whose names begin with `prefix`, in the same order.
std::span<const InstallFile> installFiles(std::string_view prefix);

/// The bytes of one. Throws `Error` when there is none of that name.
std::string_view installFile(std::string_view name);

}  // namespace torvex
