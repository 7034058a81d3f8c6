#pragma once

#include <string>

namespace torvex::test {

/// The bytes of a file below tests/; fails the test when there is none.
std::string testFile(const std::string& name);

/// Compares `actual` with the file below tests/ that holds what is expected. With TORVEX_ACCEPT=1 in the
/// environment the file is written instead, so that a new expectation is accepted by looking at its
/// difference.
void expectFile(const std::string& name, const std::string& actual);

}  // namespace torvex::test
