#pragma once

#include <string>

#include "records/PageId.h"

namespace torvex {

/// What resolving a page found out. As made, it is the record of no page.
struct PageRecord {
    int access = -1;  ///< one of `pageAccess`
    PageId pageId = -1;
    std::string nodeId;
    double orderId = -1;
    std::string type;  ///< "P" content page, "A" application, "F" folder
    std::string title;
    std::string navigation;  ///< "M" when previous, next and up were set by hand
    PageId previous = -1;
    PageId next = -1;
    PageId up = -1;
    int online = -1;
    std::string onlineFrom;
    std::string onlineTo;
    std::string templateFile;
    std::string stylesheetFile;
    std::string baseTemplateFile;
    std::string appParamPublic;
    std::string appUrlPublic;  ///< with the parameters of the page and the request
    std::string appUrl;        ///< as registered
    std::string breadcrumb = "-1";
    std::string dynMenu = "-1";
};

/// The verdict on a page.
namespace pageAccess {
inline constexpr int member = 1;          ///< may be shown, to a user of a group that has it
inline constexpr int open = 0;            ///< may be shown to everyone
inline constexpr int notFound = -1;       ///< no such page, an empty folder, or a bad identifier
inline constexpr int offline = -2;        ///< switched off or outside its dates
inline constexpr int noGroups = -3;       ///< the extranet is on and no group has the page
inline constexpr int needsLogin = -4;     ///< secured, and no name or no password was given
inline constexpr int refused = -5;        ///< no such user in a group of the page, or outside the dates
inline constexpr int noTemplate = -6;     ///< no template could be loaded
inline constexpr int noApplication = -7;  ///< its application is missing or has no address
}  // namespace pageAccess

}  // namespace torvex
