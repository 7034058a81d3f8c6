#pragma once

#include <string>

namespace torvex {
struct HostContext;
}

namespace torvex::api {

/// Answers with JSON that browsers may keep as long as they ask whether it is still the same, which they do by its
/// tag.
void answerKept(HostContext& host, const std::string& content);

}  // namespace torvex::api
