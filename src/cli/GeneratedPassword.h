#pragma once

#include <string>

namespace torvex::cli {

/// A random password of four groups of four, some 79 bits: "k7mp-2wqa-x9rt-h4ze". Made of small letters and
/// digits that can't be taken for each other, since stored passwords ignore case.
std::string generatePassword();

}  // namespace torvex::cli
