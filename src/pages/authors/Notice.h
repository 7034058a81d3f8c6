#pragma once

#include <string>

namespace torvex {
struct HostContext;

/// Words that several of them say.
namespace noticeLabel {
inline constexpr double toStart = 4010;
inline constexpr double cantBeShown = 4911;
inline constexpr double noPage = 4914;
inline constexpr double notPublished = 4915;
inline constexpr double noRight = 4916;
inline constexpr double unknown = 4919;
}  // namespace noticeLabel

/// A small page that tells an author what happened, in her language.
struct Notice {
    int status = 200;
    std::string error{};  ///< by which the shell knows what happened, when this stands in its frame
    double title = noticeLabel::cantBeShown;  ///< a label, as the others
    double message = noticeLabel::unknown;
    double link = noticeLabel::toStart;  ///< of what leads on; 0 for none
    std::string href = "/torvex/";
};

/// Answers with it: kept by nobody, running no script.
void showNotice(HostContext& host, const Notice& notice);

}  // namespace torvex
