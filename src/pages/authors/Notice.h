#pragma once

#include <string>
#include <vector>

namespace torvex {
struct HostContext;

/// A small page that tells an author what happened, in her language.
struct Notice {
    int status = 200;
    std::string error{};  ///< by which the shell knows what happened, when this stands in its frame
    double title = 4911;  ///< a label, as the others
    double message = 4919;
    double link = 4010;  ///< of what leads on; 0 for none
    std::string href = "/torvex/";
};

/// Answers with it: kept by nobody, running no script.
void showNotice(HostContext& host, const Notice& notice);

}  // namespace torvex
