#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "records/PageIdentity.h"

namespace torvex {
struct HostContext;

/// A content template that is kept as a page, in the system folder of an application.
struct ApplicationTemplate {
    PageId pageId;
    std::string path;  ///< of its file, which need not be there
};

/// The one that the application page keeps under a title; nothing when it has none, or one without a file. A
/// failure to find the file that an ancestor's template gives it has the line "getTemplateFile !" in front.
std::optional<ApplicationTemplate> applicationTemplate(HostContext& host, db::Connection& connection,
                                                       const PageIdentity& page, std::string_view title,
                                                       Twin twin);

}  // namespace torvex
