#pragma once

#include <string_view>

#include "host/http/Answer.h"
#include "host/http/RequestHead.h"

namespace torvex {

class BuiltInterface;

/// Where the files of the authors' interface are, in small letters.
inline constexpr std::string_view interfaceFolder = "/torvex/ui/";

/// The answer for a file of the interface: compressed as it was when it was built, if the browser takes
/// that. One whose name holds the hash of its bytes is good for ever. `path` is the decoded address. 404 for
/// what isn't there. Waits for nothing; safe from any thread.
Answer interfaceAnswer(const BuiltInterface& interface, std::string_view path, const RequestHead& head);

}  // namespace torvex
