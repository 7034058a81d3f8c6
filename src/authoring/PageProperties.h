#pragma once

#include <string>

#include "authoring/PageBuffer.h"

namespace torvex {

/// The page record that an object of `cManager` carries, under the names by which callers outside read and
/// set it. What a name means is said in `PageBuffer`; what can't be set is found by reading a page.
class PageProperties {
  public:
    // Which page, and its place
    bool pgExists() const { return page_.exists; }
    PageId pgPageId() const { return page_.pageId; }
    void setPgPageId(PageId value) { page_.pageId = value; }
    const std::string& pgNodeId() const { return page_.nodeId; }
    void setPgNodeId(const std::string& value) { page_.nodeId = value; }
    double pgOrderId() const { return page_.orderId; }
    /// Throws `Error` when it doesn't fit 16 bits.
    void setPgOrderId(double value);
    const std::string& pgType() const { return page_.type; }
    void setPgType(const std::string& value) { page_.type = value; }
    const std::string& pgTitle() const { return page_.title; }
    void setPgTitle(const std::string& value) { page_.title = value; }

    // Neighbours
    const std::string& pgNavigation() const { return page_.navigation; }
    void setPgNavigation(const std::string& value) { page_.navigation = value; }
    PageId pgPrevious() const { return page_.previous; }
    void setPgPrevious(PageId value) { page_.previous = value; }
    PageId pgNext() const { return page_.next; }
    void setPgNext(PageId value) { page_.next = value; }
    PageId pgUp() const { return page_.up; }
    void setPgUp(PageId value) { page_.up = value; }

    // Online
    int pgOnline() const { return page_.online; }
    const std::string& pgOnlineFrom() const { return page_.onlineFrom; }
    void setPgOnlineFrom(const std::string& value) { page_.onlineFrom = value; }
    const std::string& pgOnlineTo() const { return page_.onlineTo; }
    void setPgOnlineTo(const std::string& value) { page_.onlineTo = value; }

    // Workflow: statuses, then who and when
    const std::string& pgEditStatus() const { return page_.editStatus; }
    void setPgEditStatus(const std::string& value) { page_.editStatus = value; }
    int pgLockStatus() const { return page_.lockStatus; }
    void setPgLockStatus(int value) { page_.lockStatus = value; }
    int pgDeleteStatus() const { return page_.deleteStatus; }
    void setPgDeleteStatus(int value) { page_.deleteStatus = value; }
    int pgApproveStatus() const { return page_.approveStatus; }
    void setPgApproveStatus(int value) { page_.approveStatus = value; }
    const std::string& pgAuthor() const { return page_.author; }
    const std::string& pgPublisher() const { return page_.publisher; }
    const DateTime& pgAuthoringDate() const { return page_.authoringDate; }
    const DateTime& pgPublishingDate() const { return page_.publishingDate; }
    const std::string& pgEditor() const { return page_.editor; }
    void setPgEditor(const std::string& value) { page_.editor = value; }
    const std::string& pgLockedBy() const { return page_.lockedBy; }
    void setPgLockedBy(const std::string& value) { page_.lockedBy = value; }
    const std::string& pgDeletedBy() const { return page_.deletedBy; }
    void setPgDeletedBy(const std::string& value) { page_.deletedBy = value; }
    const std::string& pgApprovedBy() const { return page_.approvedBy; }
    void setPgApprovedBy(const std::string& value) { page_.approvedBy = value; }
    const DateTime& pgEditingDate() const { return page_.editingDate; }
    void setPgEditingDate(const DateTime& value) { page_.editingDate = value; }
    const DateTime& pgLockingDate() const { return page_.lockingDate; }
    void setPgLockingDate(const DateTime& value) { page_.lockingDate = value; }
    const DateTime& pgDeletingDate() const { return page_.deletingDate; }
    void setPgDeletingDate(const DateTime& value) { page_.deletingDate = value; }
    const DateTime& pgApprovingDate() const { return page_.approvingDate; }
    void setPgApprovingDate(const DateTime& value) { page_.approvingDate = value; }

    // Looks
    int pgTemplateId() const { return page_.templateId; }
    void setPgTemplateId(int value) { page_.templateId = value; }
    const std::string& pgTemplateFile() const { return page_.templateFile; }
    const std::string& pgTemplateName() const { return page_.templateName; }
    int pgStylesheetId() const { return page_.stylesheetId; }
    void setPgStylesheetId(int value) { page_.stylesheetId = value; }
    const std::string& pgStylesheetFile() const { return page_.stylesheetFile; }
    const std::string& pgStylesheetName() const { return page_.stylesheetName; }
    int pgBaseTemplateId() const { return page_.baseTemplateId; }
    void setPgBaseTemplateId(int value) { page_.baseTemplateId = value; }
    const std::string& pgBaseTemplateFile() const { return page_.baseTemplateFile; }
    const std::string& pgBaseTemplateName() const { return page_.baseTemplateName; }

    // Application
    int pgAppId() const { return page_.appId; }
    void setPgAppId(int value) { page_.appId = value; }
    const std::string& pgAppName() const { return page_.appName; }
    const std::string& pgAppDesc() const { return page_.appDesc; }
    const std::string& pgAppParamPublic() const { return page_.appParamPublic; }
    void setPgAppParamPublic(const std::string& value) { page_.appParamPublic = value; }
    const std::string& pgAppParamAdmin() const { return page_.appParamAdmin; }
    void setPgAppParamAdmin(const std::string& value) { page_.appParamAdmin = value; }
    const std::string& pgAppURLpublic() const { return page_.appUrlPublic; }
    const std::string& pgAppURLadmin() const { return page_.appUrlAdmin; }
    PageId pgAppSystemFolder() const { return page_.appSystemFolder; }
    void setPgAppSystemFolder(PageId value) { page_.appSystemFolder = value; }

    // Who may see it
    const std::string& pgGroups() const { return page_.groups; }
    void setPgGroups(const std::string& value) { page_.groups = value; }
    PageId pgLoginPage() const { return page_.loginPage; }
    void setPgLoginPage(PageId value) { page_.loginPage = value; }

    // Where it is shown, and how often it was
    // These two are held as 16-bit numbers: a text that isn't one throws `Error`.
    std::string pgBreadcrumb() const { return std::to_string(page_.breadcrumb); }
    void setPgBreadcrumb(const std::string& value);
    std::string pgDynMenu() const { return std::to_string(page_.dynMenu); }
    void setPgDynMenu(const std::string& value);
    double pgTotalHits() const { return page_.totalHits; }

  protected:
    PageProperties() = default;
    ~PageProperties() = default;
    PageProperties(const PageProperties&) = default;
    PageProperties& operator=(const PageProperties&) = default;

    PageBuffer page_;
};

}  // namespace torvex
