#pragma once

#include <string>

namespace torvex::test {

/// The checkout that the tests were built from. A function, so that no other source is compiled with its
/// path.
std::string sourceFolder();

}  // namespace torvex::test
