#pragma once

#include <string>

namespace torvex::test {

/// Writes a key and a certificate for it, signed by itself.
void writeCertificate(const std::string& certificateFile, const std::string& keyFile);

}  // namespace torvex::test
