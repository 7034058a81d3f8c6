#include "authoring/cManager.h"
#include "operations/register/Binding.h"
#include "operations/register/ManagerRows.h"

namespace torvex::operations {

namespace {

std::vector<PropertyRow<cManager>> loginProperties() {
    return {
        property("loginId", &cManager::loginId, "The number of the session's login, 0 for none."),
        property("username", &cManager::username, "The name by which it logs in."),
        secret(property("password", &cManager::password, "Its password in the stored form.")),
        property("Fullname", &cManager::Fullname, "Its full name."),
    };
}

std::vector<PropertyRow<cManager>> detailProperties() {
    return {
        property("adminLoginId", &cManager::adminLoginId,
                 "The number of the login that `getLoginDetails` read; -1 when there is none."),
        property("adminUsername", &cManager::adminUsername, "The name by which that login logs in."),
        property("adminFullname", &cManager::adminFullname, "Its full name."),
        property("adminJob", &cManager::adminJob, "Its job."),
        property("adminEmail", &cManager::adminEmail, "Its address for mail."),
        property("adminEmailNotification", &cManager::adminEmailNotification,
                 "Whether it is told by mail what waits for it."),
        property("adminValidFrom", &cManager::adminValidFrom, "Its first day, yyyymmdd; empty for no bound."),
        property("adminValidTo", &cManager::adminValidTo, "Its last day, yyyymmdd; empty for no bound."),
    };
}

std::vector<PropertyRow<cManager>> pageProperties() {
    return {
        property("pgExists", &cManager::pgExists, "Whether the page was found."),
        property("pgPageId", &cManager::pgPageId, &cManager::setPgPageId, "The page's number."),
        property("pgNodeId", &cManager::pgNodeId, &cManager::setPgNodeId, "The page's place in the tree."),
        property("pgOrderId", &cManager::pgOrderId, &cManager::setPgOrderId,
                 "The page's place among its siblings."),
        property("pgType", &cManager::pgType, &cManager::setPgType,
                 "\"P\" a content page, \"A\" an application, \"F\" a folder."),
        property("pgTitle", &cManager::pgTitle, &cManager::setPgTitle, "The page's title."),
        property("pgNavigation", &cManager::pgNavigation, &cManager::setPgNavigation,
                 "\"A\" when previous, next and up are computed, \"M\" when they are set by hand."),
        property("pgPrevious", &cManager::pgPrevious, &cManager::setPgPrevious,
                 "The page before this one; -1 for none."),
        property("pgNext", &cManager::pgNext, &cManager::setPgNext, "The page behind this one; -1 for none."),
        property("pgUp", &cManager::pgUp, &cManager::setPgUp, "The page above this one; -1 for none."),
        property("pgOnline", &cManager::pgOnline, "1 when the live page shows today."),
        property("pgOnlineFrom", &cManager::pgOnlineFrom, &cManager::setPgOnlineFrom,
                 "The first day of the page, yyyymmdd; empty for no limit."),
        property("pgOnlineTo", &cManager::pgOnlineTo, &cManager::setPgOnlineTo,
                 "The last day of the page, yyyymmdd; empty for no limit."),
        property("pgEditStatus", &cManager::pgEditStatus, &cManager::setPgEditStatus,
                 "Of the design: \"N\" new, \"M\" modified, \"P\" published."),
        property("pgLockStatus", &cManager::pgLockStatus, &cManager::setPgLockStatus,
                 "Of the design: 1 when the page is checked out."),
        property("pgDeleteStatus", &cManager::pgDeleteStatus, &cManager::setPgDeleteStatus,
                 "1 when the page is marked for deletion."),
        property("pgApproveStatus", &cManager::pgApproveStatus, &cManager::setPgApproveStatus,
                 "1 when the page is approved for publishing."),
        property("pgAuthor", &cManager::pgAuthor, "Who wrote the live page."),
        property("pgPublisher", &cManager::pgPublisher, "Who published the live page."),
        property("pgAuthoringDate", &cManager::pgAuthoringDate, "When the live page was written."),
        property("pgPublishingDate", &cManager::pgPublishingDate, "When the live page was published."),
        property("pgEditor", &cManager::pgEditor, &cManager::setPgEditor, "Who changed the design last."),
        property("pgLockedBy", &cManager::pgLockedBy, &cManager::setPgLockedBy,
                 "Who has checked the page out."),
        property("pgDeletedBy", &cManager::pgDeletedBy, &cManager::setPgDeletedBy,
                 "Who marked the page for deletion."),
        property("pgApprovedBy", &cManager::pgApprovedBy, &cManager::setPgApprovedBy,
                 "Who approved the page."),
        property("pgEditingDate", &cManager::pgEditingDate, &cManager::setPgEditingDate,
                 "When the design was changed last."),
        property("pgLockingDate", &cManager::pgLockingDate, &cManager::setPgLockingDate,
                 "When the page was checked out."),
        property("pgDeletingDate", &cManager::pgDeletingDate, &cManager::setPgDeletingDate,
                 "When the page was marked for deletion."),
        property("pgApprovingDate", &cManager::pgApprovingDate, &cManager::setPgApprovingDate,
                 "When the page was approved."),
        property("pgTemplateId", &cManager::pgTemplateId, &cManager::setPgTemplateId,
                 "The page's own content template; 0 when it inherits."),
        property("pgTemplateFile", &cManager::pgTemplateFile, "The file of the page's own content template."),
        property("pgTemplateName", &cManager::pgTemplateName, "The name of the page's own content template."),
        property("pgStylesheetId", &cManager::pgStylesheetId, &cManager::setPgStylesheetId,
                 "The page's own stylesheet; 0 when it inherits."),
        property("pgStylesheetFile", &cManager::pgStylesheetFile, "The file of the page's own stylesheet."),
        property("pgStylesheetName", &cManager::pgStylesheetName, "The name of the page's own stylesheet."),
        property("pgBaseTemplateId", &cManager::pgBaseTemplateId, &cManager::setPgBaseTemplateId,
                 "The page's own base template; 0 when it inherits."),
        property("pgBaseTemplateFile", &cManager::pgBaseTemplateFile,
                 "The file of the page's own base template."),
        property("pgBaseTemplateName", &cManager::pgBaseTemplateName,
                 "The name of the page's own base template."),
        property("pgAppId", &cManager::pgAppId, &cManager::setPgAppId,
                 "The page's application; -1 for none."),
        property("pgAppName", &cManager::pgAppName, "The name of the page's application."),
        property("pgAppDesc", &cManager::pgAppDesc, "The description of the page's application."),
        property("pgAppParamPublic", &cManager::pgAppParamPublic, &cManager::setPgAppParamPublic,
                 "The parameters that the page gives its application."),
        property("pgAppParamAdmin", &cManager::pgAppParamAdmin, &cManager::setPgAppParamAdmin,
                 "The parameters that the page gives its application's administration."),
        property("pgAppURLpublic", &cManager::pgAppURLpublic,
                 "The application's address with all parameters."),
        property("pgAppURLadmin", &cManager::pgAppURLadmin,
                 "The address of the application's administration with all parameters."),
        property("pgAppSystemFolder", &cManager::pgAppSystemFolder, &cManager::setPgAppSystemFolder,
                 "The page that is the application's system folder."),
        property("pgGroups", &cManager::pgGroups, &cManager::setPgGroups,
                 "The page's groups: names when it was read; numbers or names to be saved."),
        property("pgLoginPage", &cManager::pgLoginPage, &cManager::setPgLoginPage,
                 "The page where visitors of the page log in; -1 for none."),
        property("pgBreadcrumb", &cManager::pgBreadcrumb, &cManager::setPgBreadcrumb,
                 "1 when the page stands in the breadcrumb trail."),
        property("pgDynMenu", &cManager::pgDynMenu, &cManager::setPgDynMenu,
                 "1 when the page stands in the dynamic menu."),
        property("pgTotalHits", &cManager::pgTotalHits, "The hits of the live page."),
    };
}

}  // namespace

std::vector<PropertyRow<cManager>> managerProperties() {
    return joined({loginProperties(), detailProperties(), pageProperties()});
}

}  // namespace torvex::operations
