#pragma once

#include <string>

#include "platform/DateTime.h"
#include "records/PageId.h"

namespace torvex {

/// The moment that stands for "never" in a workflow date.
inline constexpr DateTime noDate{1900, 1, 1, 0, 0, 0};

/// One page's record, from either of the twin tables, as authors read and change it. As made, it is the
/// record of no page.
struct PageBuffer {
    bool exists = false;
    PageId pageId = 0;
    std::string nodeId;
    int orderId = -1;
    std::string type;  ///< "P" content page, "A" application, "F" folder; "S" asks for a system branch
    std::string title;
    std::string navigation;  ///< "A" neighbours are computed, "M" they are set by hand; "" for other types
    PageId previous = -1;
    PageId next = -1;
    PageId up = -1;
    std::string onlineFrom;  ///< yyyymmdd, "" for no limit
    std::string onlineTo;
    int templateId = -1;
    std::string templateFile;
    std::string templateName;
    int stylesheetId = -1;
    std::string stylesheetFile;
    std::string stylesheetName;
    int baseTemplateId = -1;
    std::string baseTemplateFile;
    std::string baseTemplateName;
    int appId = -1;
    std::string appName;
    std::string appDesc;
    std::string appParamPublic;
    std::string appParamAdmin;
    std::string appUrlPublic;
    std::string appUrlAdmin;
    PageId appSystemFolder = 0;
    std::string groups;  ///< names when it was read; ids or names to be saved. Divided by commas
    PageId loginPage = 0;
    int breadcrumb = -1;
    int dynMenu = -1;

    // Of the live page
    int online = -1;
    std::string author;
    DateTime authoringDate = noDate;
    std::string publisher;
    DateTime publishingDate = noDate;
    double totalHits = 0;

    // Of the workflow
    std::string editStatus;  ///< "N" new, "M" modified, "P" published
    std::string editor;
    DateTime editingDate = noDate;
    int lockStatus = 0;
    std::string lockedBy;
    DateTime lockingDate = noDate;
    int deleteStatus = 0;
    std::string deletedBy;
    DateTime deletingDate = noDate;
    int approveStatus = 0;
    std::string approvedBy;
    DateTime approvingDate = noDate;
};

}  // namespace torvex
