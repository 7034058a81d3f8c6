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

std::vector<PropertyRow<PageProperties>> pageProperties() {
    return {
        property("pgExists", &PageProperties::pgExists, "Whether the page was found."),
        property("pgPageId", &PageProperties::pgPageId, &PageProperties::setPgPageId, "The page's number."),
        property("pgNodeId", &PageProperties::pgNodeId, &PageProperties::setPgNodeId,
                 "The page's place in the tree."),
        property("pgOrderId", &PageProperties::pgOrderId, &PageProperties::setPgOrderId,
                 "The page's place among its siblings."),
        property("pgType", &PageProperties::pgType, &PageProperties::setPgType,
                 "\"P\" a content page, \"A\" an application, \"F\" a folder."),
        property("pgTitle", &PageProperties::pgTitle, &PageProperties::setPgTitle, "The page's title."),
        property("pgNavigation", &PageProperties::pgNavigation, &PageProperties::setPgNavigation,
                 "\"A\" when previous, next and up are computed, \"M\" when they are set by hand."),
        property("pgPrevious", &PageProperties::pgPrevious, &PageProperties::setPgPrevious,
                 "The page before this one; -1 for none."),
        property("pgNext", &PageProperties::pgNext, &PageProperties::setPgNext,
                 "The page behind this one; -1 for none."),
        property("pgUp", &PageProperties::pgUp, &PageProperties::setPgUp,
                 "The page above this one; -1 for none."),
        property("pgOnline", &PageProperties::pgOnline, "1 when the live page shows today."),
        property("pgOnlineFrom", &PageProperties::pgOnlineFrom, &PageProperties::setPgOnlineFrom,
                 "The first day of the page, yyyymmdd; empty for no limit."),
        property("pgOnlineTo", &PageProperties::pgOnlineTo, &PageProperties::setPgOnlineTo,
                 "The last day of the page, yyyymmdd; empty for no limit."),
        property("pgEditStatus", &PageProperties::pgEditStatus, &PageProperties::setPgEditStatus,
                 "Of the design: \"N\" new, \"M\" modified, \"P\" published."),
        property("pgLockStatus", &PageProperties::pgLockStatus, &PageProperties::setPgLockStatus,
                 "Of the design: 1 when the page is checked out."),
        property("pgDeleteStatus", &PageProperties::pgDeleteStatus, &PageProperties::setPgDeleteStatus,
                 "1 when the page is marked for deletion."),
        property("pgApproveStatus", &PageProperties::pgApproveStatus, &PageProperties::setPgApproveStatus,
                 "1 when the page is approved for publishing."),
        property("pgAuthor", &PageProperties::pgAuthor, "Who wrote the live page."),
        property("pgPublisher", &PageProperties::pgPublisher, "Who published the live page."),
        property("pgAuthoringDate", &PageProperties::pgAuthoringDate, "When the live page was written."),
        property("pgPublishingDate", &PageProperties::pgPublishingDate, "When the live page was published."),
        property("pgEditor", &PageProperties::pgEditor, &PageProperties::setPgEditor,
                 "Who changed the design last."),
        property("pgLockedBy", &PageProperties::pgLockedBy, &PageProperties::setPgLockedBy,
                 "Who has checked the page out."),
        property("pgDeletedBy", &PageProperties::pgDeletedBy, &PageProperties::setPgDeletedBy,
                 "Who marked the page for deletion."),
        property("pgApprovedBy", &PageProperties::pgApprovedBy, &PageProperties::setPgApprovedBy,
                 "Who approved the page."),
        property("pgEditingDate", &PageProperties::pgEditingDate, &PageProperties::setPgEditingDate,
                 "When the design was changed last."),
        property("pgLockingDate", &PageProperties::pgLockingDate, &PageProperties::setPgLockingDate,
                 "When the page was checked out."),
        property("pgDeletingDate", &PageProperties::pgDeletingDate, &PageProperties::setPgDeletingDate,
                 "When the page was marked for deletion."),
        property("pgApprovingDate", &PageProperties::pgApprovingDate, &PageProperties::setPgApprovingDate,
                 "When the page was approved."),
        property("pgTemplateId", &PageProperties::pgTemplateId, &PageProperties::setPgTemplateId,
                 "The page's own content template; 0 when it inherits."),
        property("pgTemplateFile", &PageProperties::pgTemplateFile,
                 "The file of the page's own content template."),
        property("pgTemplateName", &PageProperties::pgTemplateName,
                 "The name of the page's own content template."),
        property("pgStylesheetId", &PageProperties::pgStylesheetId, &PageProperties::setPgStylesheetId,
                 "The page's own stylesheet; 0 when it inherits."),
        property("pgStylesheetFile", &PageProperties::pgStylesheetFile,
                 "The file of the page's own stylesheet."),
        property("pgStylesheetName", &PageProperties::pgStylesheetName,
                 "The name of the page's own stylesheet."),
        property("pgBaseTemplateId", &PageProperties::pgBaseTemplateId, &PageProperties::setPgBaseTemplateId,
                 "The page's own base template; 0 when it inherits."),
        property("pgBaseTemplateFile", &PageProperties::pgBaseTemplateFile,
                 "The file of the page's own base template."),
        property("pgBaseTemplateName", &PageProperties::pgBaseTemplateName,
                 "The name of the page's own base template."),
        property("pgAppId", &PageProperties::pgAppId, &PageProperties::setPgAppId,
                 "The page's application; -1 for none."),
        property("pgAppName", &PageProperties::pgAppName, "The name of the page's application."),
        property("pgAppDesc", &PageProperties::pgAppDesc, "The description of the page's application."),
        property("pgAppParamPublic", &PageProperties::pgAppParamPublic, &PageProperties::setPgAppParamPublic,
                 "The parameters that the page gives its application."),
        property("pgAppParamAdmin", &PageProperties::pgAppParamAdmin, &PageProperties::setPgAppParamAdmin,
                 "The parameters that the page gives its application's administration."),
        property("pgAppURLpublic", &PageProperties::pgAppURLpublic,
                 "The application's address with all parameters."),
        property("pgAppURLadmin", &PageProperties::pgAppURLadmin,
                 "The address of the application's administration with all parameters."),
        property("pgAppSystemFolder", &PageProperties::pgAppSystemFolder,
                 &PageProperties::setPgAppSystemFolder, "The page that is the application's system folder."),
        property("pgGroups", &PageProperties::pgGroups, &PageProperties::setPgGroups,
                 "The page's groups: names when it was read; numbers or names to be saved."),
        property("pgLoginPage", &PageProperties::pgLoginPage, &PageProperties::setPgLoginPage,
                 "The page where visitors of the page log in; -1 for none."),
        property("pgBreadcrumb", &PageProperties::pgBreadcrumb, &PageProperties::setPgBreadcrumb,
                 "1 when the page stands in the breadcrumb trail."),
        property("pgDynMenu", &PageProperties::pgDynMenu, &PageProperties::setPgDynMenu,
                 "1 when the page stands in the dynamic menu."),
        property("pgTotalHits", &PageProperties::pgTotalHits, "The hits of the live page."),
    };
}

}  // namespace

std::vector<PropertyRow<cManager>> managerProperties() {
    return joined({loginProperties(), detailProperties(), inherited<cManager>(pageProperties())});
}

}  // namespace torvex::operations
