#pragma once

#include <string>
#include <string_view>

#include "records/PageId.h"
#include "records/PageIdentity.h"

namespace torvex {

class PageModules;
struct HostContext;
namespace db {
class Connection;
}

/// Begins the text of a page that is none: the address to go to instead stands behind it.
inline constexpr std::string_view errorMark = "error:";

/// The record of the page to be assembled.
struct AssemblyPage {
    PageId pageId = 0;
    std::string nodeId;
    Twin twin = Twin::Live;
    std::string templateFile;  ///< its own; "" for one that inherits
    PageId previous = -1;
    PageId next = -1;
    PageId up = -1;
    bool isSecured = false;     ///< shown because its visitor is a member of a group
    bool isForAuthors = false;  ///< keeps the parts of a template that are for them
};

/// For whom a page is assembled: what differs between visitors and authors.
class AssemblyView {
  public:
    virtual ~AssemblyView() = default;

    virtual AssemblyPage page() = 0;
    /// Whether a link to a neighbour may be shown.
    virtual bool canLeadTo(PageId pageId) = 0;
    /// Told of the sub-page of an application that is shown in the page's place.
    virtual void countSubPage(PageId pageId) = 0;
    /// Told that the page has a form to log in with.
    virtual void noteLoginForm() {}

    // The files in force for a page, "" for none.
    virtual std::string templateFile(PageId pageId) = 0;
    virtual std::string stylesheetFile(PageId pageId) = 0;
    virtual std::string baseTemplateFile(PageId pageId) = 0;

    // Parts of the page, as HTML.
    virtual std::string metaData() = 0;
    virtual std::string breadcrumb() = 0;
    virtual std::string fillBodies(PageId pageId, std::string html) = 0;

    // The addresses, behind `errorMark`, that stand for a page without a template.
    virtual std::string missingTemplate() const = 0;
    virtual std::string missingBaseTemplate() const = 0;
};

/// Merges a page's templates, modules and bodies into one text. `subTitle` picks a sub-template of an
/// application; "" for a page of its own. `modules` may be missing.
std::string assemblePage(HostContext& host, db::Connection& connection, AssemblyView& view,
                         PageModules* modules, const std::string& subTitle);

}  // namespace torvex
