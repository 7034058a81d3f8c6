#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "accounts/Actor.h"
#include "accounts/Author.h"
#include "accounts/LoginRecord.h"
#include "authoring/PageProperties.h"
#include "platform/Value.h"
#include "platform/db/ConnectionSource.h"
#include "records/ItemLocks.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace db {
template <typename Result>
struct Outcome;
}
class EditRights;
class PageModules;
struct HostContext;

/// Everything that authors and administrators do. An object is made for one request, in the name of the login
/// that the visitor's session holds, and is used by one thread. It carries one page record, the properties
/// `pg...`, which `getPage` fills and the two save operations read.
///
/// Rights are the caller's business: the operations test that somebody is logged in, locks and states, and
/// the register of operations names the right that a caller from outside needs.
///
/// A refusal is a code. Everything else that fails is `Error` with the operation's line in front; an atomic
/// operation that fails has changed nothing and answers with a code instead.
///
/// A `pageIdent` is a page's number or its node. A `mode` is "D" for the design, anything else for the live
/// data. An `advId` is the entry of the administration menu that called, for the audit line; 0 writes none.
class cManager : public PageProperties {
  public:
    /// `modules` may be missing; it must outlive the object.
    explicit cManager(HostContext& host, PageModules* modules = nullptr);

    void connect(db::ConnectionSource connection) { connection_ = std::move(connection); }

    // ---- The login of the object ----

    int loginId() const { return author_.loginId; }
    const std::string& username() const { return author_.username; }
    /// In its stored form.
    const std::string& password() const { return author_.password; }
    const std::string& Fullname() const { return author_.fullname; }

    // ---- Logins and sessions (administration/Logins.cpp) ----

    /// 0 logged in; 1 unknown name, wrong password or outside the dates; 2 the address is refused; 3 held by
    /// a session at another address. Without arguments the session's login is verified again.
    int login(const std::string& username = "", const std::string& password = "");
    /// Frees the login and abandons the session.
    void logout();
    /// Frees another login's row; its session notices by `getLoginState`.
    void endLogin(int loginId);
    /// Whether a login is online; for 0, whether this session still owns its login.
    bool getLoginState(int loginId = 0);
    /// -1 when there is none. Without a name the object's login.
    int getLoginId(const std::string& username = "");
    /// The full name, or a bracketed word for a login that is gone.
    std::string getLoginName(int loginId);

    // ---- The register of logins (administration/LoginRecords.cpp) ----

    /// The login's number or a code. `loginId` 0 adds a login; else what is empty stays as it is. A bound
    /// ("yyyymmdd") of "-1" stays, an empty one is taken away; `emailNotification` below 0 stays.
    std::string saveLogin(int advId, int loginId, const std::string& username, const std::string& password,
                          const std::string& name, const std::string& job, const std::string& email = "",
                          int emailNotification = -1, const std::string& validFrom = "-1",
                          const std::string& validTo = "-1");
    /// "" or a code. With its roles and settings.
    std::string deleteLogin(int loginId, int advId = 0);
    /// Fills the properties `admin...`.
    void getLoginDetails(int loginId);
    /// By name for 1, else by username; an empty text when there is none.
    Value getLoginList(int sortId = 1);
    /// All roles, marked where the login has them.
    Value getLoginRoles(int loginId);

    /// -1 when the login asked for isn't there.
    int adminLoginId() const { return login_.loginId; }
    const std::string& adminUsername() const { return login_.username; }
    const std::string& adminFullname() const { return login_.fullname; }
    const std::string& adminJob() const { return login_.job; }
    const std::string& adminEmail() const { return login_.email; }
    int adminEmailNotification() const { return login_.emailNotification; }
    const std::string& adminValidFrom() const { return login_.validFrom; }
    const std::string& adminValidTo() const { return login_.validTo; }

    // ---- Rights (administration/EditRights.cpp, AdvancedRights.cpp, Roles.cpp) ----

    /// Whether a login may do "onoff", "move", "publish", "approve" or "edit" in a site and language, and to
    /// a page if one is given.
    bool checkEditRights(const std::string& action, const std::string& site, const std::string& lang,
                         const std::string& pageIdent = "", const std::string& username = "");
    /// Five flags: onOff, move, publish, approve, edit.
    std::string getLoginEditRights(const std::string& site, const std::string& lang,
                                   const std::string& pageIdent = "", const std::string& username = "");
    /// The nodes, divided by commas, under which a login may do a task; "" for none.
    std::string getLoginScope(const std::string& site, const std::string& lang, const std::string& task,
                              const std::string& username = "");
    /// Whether a node is one of the scope's or lies under one. Asks no database.
    bool isMemberOfScope(const std::string& nodeId, const std::string& scope);
    /// Whether a login has the "view" or "edit" right ("" either one) of an entry of the administration menu.
    bool checkAdvRights(const std::string& flag, int advId, const std::string& site = "",
                        const std::string& lang = "", const std::string& username = "");
    /// The administration menu as one text for the browser; enters the site and language. "-1" while they are
    /// locked.
    std::string getAdvancedMap(const std::string& site, const std::string& lang, int order = 0);
    Value getAdvList();
    std::string getAdvTitle(int advId);
    Value getRoleAdvancedRights(int roleId, const std::string& site, const std::string& lang, int order = 0);
    std::string getRoleEditRights(int roleId, const std::string& site, const std::string& lang);
    std::string getRoleScope(const std::string& site, const std::string& lang, int roleId);
    int getRoleId(const std::string& roleName);
    std::string getRoleName(int roleId);
    std::string getRoleDescription(int roleId);
    /// "" or a code. With its rights and its memberships.
    std::string deleteRole(int roleId, int advId = 0);

    // ---- Sites and languages (administration/Sites.cpp, Languages.cpp, Websites.cpp, Existence.cpp) ----

    bool addSite(const std::string& siteId, const std::string& siteName, const std::string& siteDescription,
                 int advId = 0);
    bool updateSite(const std::string& site, const std::string& name, const std::string& description,
                    int advId = 0);
    /// "" or a code. Its files go as well.
    std::string deleteSite(const std::string& site, int advId = 0);
    bool addLanguage(const std::string& langId, const std::string& langName, int charsetID, int advId = 0);
    bool updateLanguage(const std::string& lang, const std::string& name, int charsetID, int advId = 0);
    /// "" or a code. Its files go as well.
    std::string deleteLanguage(const std::string& lang, int advId = 0);
    bool saveWebsiteTitle(const std::string& site, const std::string& lang, const std::string& title,
                          int advId = 0);
    std::string getWebsiteTitle(const std::string& site, const std::string& lang);
    /// Every pair of a site and a language, with its title.
    Value getWebsites(const std::string& site = "", int sortId = 1);

    std::string getSiteName(const std::string& site);
    std::string getSiteDescription(const std::string& site);
    std::string getSiteId(const std::string& siteName);
    Value getSites(int sortId = 1);
    std::string getLanguageName(const std::string& lang);
    std::string getLanguageId(const std::string& languageName);
    Value getLanguages(int sortId = 1);
    Value getCharsets(int sortId = 1);
    int getCharsetID(const std::string& lang);
    std::string getCharsetName(const std::string& lang);
    std::string getCharsetLabel(const std::string& lang);
    std::string getCharsetCodepage(const std::string& lang);

    bool isSite(const std::string& site);
    bool isLang(const std::string& lang);
    bool isApplication(int appId);
    bool isBaseTemplate(int baseTemplateId);
    bool isStylesheet(int stylesheetId);
    bool isTemplate(int templateId);

    // ---- Files and the other servers (administration/Files.cpp, Servers.cpp) ----

    /// Copies a file of the installation to the other servers, or removes it there. False only when there is
    /// nothing to copy to or from: a server that can't be reached is passed over.
    bool replicateFile(const std::string& file, bool overwrite = false, bool remove = false);
    /// Makes a folder on the other servers, without its contents, or removes it there with them.
    bool replicateFolder(const std::string& dir, bool remove = false);
    /// Whether a file can be written, found and removed on a server.
    bool testServer(int serverId);
    Value getServerList();
    /// The name of this machine.
    std::string getServerName();
    /// "" or a code.
    std::string deleteServer(int serverId, int advId = 0);
    // These do here what they say, and then on the other servers.
    bool createDirectory(const std::string& dir);
    bool deleteDirectory(const std::string& dir);
    /// The name may hold the wild cards "*" and "?".
    bool deleteFile(const std::string& file);

    // ---- Feeds (administration/Feeds.cpp) ----

    /// "1" when another feed of the site and language has the name, else "0".
    std::string checkHTMLfeed(const std::string& site, const std::string& lang, const std::string& name,
                              int feedId = 0);
    std::string checkXMLfeed(const std::string& site, const std::string& lang, const std::string& name,
                             int feedId = 0);
    Value getHTMLfeedList(const std::string& site, const std::string& lang);
    Value getXMLfeedList(const std::string& site, const std::string& lang);
    // "" or a code. A feed that a body of either twin shows stays.
    std::string deleteHTMLfeed(int feedId, int advId = 0);
    std::string deleteXMLfeed(int feedId, int advId = 0);

    // ---- Meta data (administration/MetaTags.cpp, MetaData.cpp) ----

    /// "1" when another tag of the site has the name, else "0".
    std::string checkMetadata(const std::string& site, int metaDataId, const std::string& name);
    Value getMetaTags(const std::string& site);
    /// 0 when there is none.
    int getMetaTagId(const std::string& site, const std::string& metaTagName);
    std::string getMetaTagName(int metaTagId);
    /// Describes a tag of a site, and makes it if it isn't there.
    void saveMetaTag(const std::string& site, const std::string& metaTagName,
                     const std::string& metaTagDescription);
    /// "" or a code. With its values of all pages, and out of the settings of the site's search pages. The
    /// tag is given by its number or its name.
    std::string deleteMetaTag(const std::string& site, const std::string& metaTagIdent, int advId = 0);
    /// Gives a page of the design a value of its own ("###" in it is a new line), or its ancestors' value, or
    /// with neither takes away what it has.
    void saveMetaData(const std::string& pageIdent, const std::string& metaIdent,
                      const std::string& metaDataValue, bool inherited = false);
    /// All tags of the page's site, with the page's own values.
    Value getMetaData(const std::string& pageIdent, const std::string& mode = "L");
    /// The lines for the head of a live page.
    std::string getMetaDataHTML(const std::string& pageIdent);

    // ---- Visitors' groups and accounts (administration/Groups.cpp, Users.cpp) ----

    std::string getGroupName(int groupId);
    std::string getGroupDescription(int groupId);
    /// 0 when there is none of that name.
    int getGroupId(const std::string& groupName);
    // -1 for none; 0 when there is no such group.
    PageId getGroupEntryPage(int groupId);
    PageId getGroupExitPage(int groupId);
    /// "0" or a code, none of which is negative. With all that it guards and its memberships.
    std::string deleteGroup(int groupId, int advId = 0);
    /// A bracketed word for one who has no name or is gone.
    std::string getUserFullname(double userId);
    /// All groups but the reserved ones, marked where the user is a member.
    Value getUserGroups(double userId);
    /// "" or a code. With the memberships.
    std::string deleteUser(double userId, int advId = 0);

    // ---- The interface and the settings (administration/Interfaces.cpp, Settings.cpp) ----

    Value getInterfaceLanguages();
    std::string getInterfaceName(const std::string& langId);
    std::string getInterfaceId(const std::string& languageName);
    /// Makes a language's templates anew from the master templates. "" or a code.
    std::string createInterface(const std::string& langId, int advId = 0);
    /// "" or a code. With its words and its templates.
    std::string deleteInterface(const std::string& langId, int advId = 0);
    /// The state that it is in afterwards: 1 on, 0 off, -1 off because it has no templates yet. The default
    /// language stays on.
    int setInterfaceOnOff(const std::string& langId, int state, int advId = 0);
    /// "" or a code. The templates follow when they are made anew.
    std::string saveVocab(const std::string& langId, double labelId, const std::string& text, int advId = 0);
    /// Sets a parameter of a login, and in this session, or with 0 of the installation. The type is "N" a
    /// 16-bit number, "C" a text, "B" whether the value is "1".
    void updateParam(int loginId, const std::string& parameter, const std::string& value,
                     const std::string& dataType = "C");

    // ---- Media (administration/MediaFolders.cpp, MediaFiles.cpp, UploadFolders.cpp) ----
    //
    // A `folderType` or `job` is "images" ("pictures"), anything else means documents. A folder is a text of
    // three digits for each level.

    /// Adds a folder, called "New folder", unless the parent has one of the name given: its id, or "".
    std::string addFolder(const std::string& site, const std::string& parentFolder,
                          const std::string& newFolderName, const std::string& folderType, int advId = 0);
    /// With all that is in it and below it.
    bool deleteFolder(const std::string& site, const std::string& folder, const std::string& folderType,
                      int advId = 0);
    std::string getFolderName(const std::string& folderType, const std::string& site,
                              const std::string& folder);
    /// All groups, marked where the folder has them.
    Value getFolderGroups(const std::string& folderType, const std::string& site, const std::string& folder);
    void setFolderGroup(const std::string& folderType, const std::string& site, const std::string& folder,
                        int groupId, bool accessFlag);
    /// Registers a file that lies in the folder's directory: its name, or a code.
    std::string saveFile(const std::string& site, const std::string& folder, const std::string& folderType,
                         const std::string& filename, const std::string& title);
    /// The images of a folder and those below it; a negative size is any.
    Value getImageList(const std::string& site, const std::string& folderId = "", int width = -1,
                       int height = -1);
    Value getDocumentList(const std::string& site, const std::string& folderId = "",
                          const std::string& docType = "");
    std::string getImageTitle(const std::string& site, const std::string& filename);
    std::string getDocTitle(const std::string& site, const std::string& filename);
    std::string getDocType(const std::string& site, const std::string& filename);
    /// The folders that hold what applications keep for a site and language.
    Value getSystemFolders(const std::string& site, const std::string& lang);
    /// The script of the folder tree beside a list of files.
    std::string getUploadFolders(const std::string& site, const std::string& tvMode,
                                 const std::string& activeFolder, const std::string& job);
    /// A name that is safe in the web space; with `flag` 1 a random one.
    std::string encryptFilename(const std::string& filename, int flag = 0);

    // ---- The page tree (authoring/Tree.cpp, TreePlaces.cpp, PageList.cpp) ----

    /// "" when there is no such page.
    std::string getNodeId(PageId pageId);
    /// 0 when there is no such page.
    PageId getPageId(const std::string& nodeId);
    bool isPage(const std::string& pageIdent, const std::string& mode = "L");
    /// Whether a child of the parent, other than the page given, has this title.
    bool isPageTitle(const std::string& parentIdent, const std::string& title, const std::string& mode = "",
                     const std::string& pageIdent = "");
    /// An untitled page gives a bracketed word.
    std::string getPageTitle(const std::string& pageIdent, const std::string& mode = "L");
    std::string getPageType(const std::string& pageIdent, const std::string& mode = "L");
    int getPageCount(const std::string& mode = "L", bool folders = false);
    /// The design pages under a node, this many levels down.
    int countPages(const std::string& parentIdent, int levels = 1);
    /// The node for a new child; "" when all numbers are taken.
    std::string getNewChild(const std::string& parentIdent);
    /// The sort position for a page that joins the siblings of the page given; -1 when there is none.
    int getNewOrderId(const std::string& pageIdent);
    /// The titles from the root to the page.
    std::string getBreadcrumb(const std::string& pageIdent, const std::string& mode = "L");
    Value getPageList(const std::string& site, const std::string& lang, const std::string& mode = "L",
                      const std::string& parentIdent = "", const std::string& docType = "",
                      bool system = true);

    // ---- The page record (authoring/PageProperties.h, PageReading.cpp, PageLookups.cpp) ----

    /// Fills the properties `pg...`.
    void getPage(const std::string& pageIdent, const std::string& mode = "L");
    /// Type, edit, lock, delete and approve status in one text, and whether another login holds the page.
    std::string getPageParameters(const std::string& pageIdent);
    /// All groups, marked where the page has them.
    Value getPageGroups(const std::string& pageIdent, const std::string& mode = "L");
    /// -1 when no login page guards the page.
    PageId getLoginPage(const std::string& pageIdent, const std::string& mode = "L");
    /// The hits of a page, or of a folder and all under it.
    double getNumberOfViews(const std::string& pageIdent);
    /// A label in a language, given by code or column number; with `flag` 1 the English text where there is
    /// none.
    std::string getVocab(const std::string& langId, double labelId, int flag = 1);
    std::string urlencode(const std::string& queryString);

    // ---- Workflow (authoring/Workflow.cpp, WorkflowLists.cpp) ----

    // The four statuses in one text, as they stand afterwards: edit, lock, delete, approve; or a code.
    std::string checkOut(const std::string& pageIdent);
    std::string checkIn(const std::string& pageIdent);
    /// `state` 1 approves, any other value withdraws.
    std::string approvePage(const std::string& pageIdent, int state);
    /// Marks a page for deletion; with `state` 0 takes the mark back.
    std::string deletePage(const std::string& pageIdent, int state);
    // The pages of the list ("12-13,14") with which it could not be done, divided by commas.
    std::string approvePages(const std::string& pageList);
    std::string unlockPages(const std::string& pageList);
    /// The pages that are checked out.
    Value getLockList(const std::string& site, const std::string& lang);

    // ---- Page setup (authoring/PageSetup.cpp, NewPage.cpp) ----

    /// The bodies that a content template has places for; -1 when it can't be read.
    int getNumberOfBodies(int templateId);
    /// Makes a page from the page record: its node, or a code.
    std::string saveNewPageSetup(const std::string& site, const std::string& lang,
                                 const std::string& parentIdent, const std::string& insertIdent = "");
    /// Saves the page record: "0" or a code.
    std::string savePageSetup(const std::string& pageIdent);

    // ---- Bodies (authoring/BodyEditing.cpp). "0" or a code ----

    std::string saveBody(const std::string& pageIdent, int bodyId, const std::string& bodyContent);
    std::string saveBodySetup(const std::string& pageIdent, int bodyId, int bodyType, int feedId);
    std::string clearBody(const std::string& pageIdent, int bodyId);
    std::string pasteBody(const std::string& pageIdentFrom, const std::string& pageIdentTo, int bodyIdFrom,
                          int bodyIdTo, const std::string& modeFrom = "D");

    // ---- The page as authors see it (authoring/Preview.cpp) ----

    std::string getBody(const std::string& pageIdent, int bodyId, int bodyType = 0, int feedId = 0,
                        const std::string& mode = "D");
    std::string getBodyHTML(int feedId);
    std::string getBodyXML(int feedId);
    /// The text with every link turned off; `flag` chooses double quotes.
    std::string disableLinks(const std::string& str, bool flag = true);
    /// The page with its link notations as links of the authoring interface, bad ones marked.
    std::string buildLinks(const std::string& html, const std::string& site, const std::string& lang,
                           const std::string& mode = "L");
    /// `html` with the bodies of the page in their places, framed for editing if asked for.
    std::string fillBodies(const std::string& pageIdent, const std::string& mode, const std::string& html,
                           bool editFlag = false);
    /// The finished page of the record; the subtitle "#edit#" builds it for editing.
    std::string torvex_preparePage(const std::string& mode = "L",
                                   const std::string& applicationSubTitle = "");

    // ---- Publishing (authoring/Publishing.cpp, Removal.cpp, Reset.cpp, OnOff.cpp) ----

    /// Copies an approved page to the live tables, or removes one that is marked for deletion with all under
    /// it. The state it is live in, or a code.
    std::string publishPage(const std::string& pageIdent);
    /// Does so for all approved pages from a node on, in one transaction.
    std::string publishPageCascading(const std::string& pageIdent);
    /// The pages of the list that were not published, divided by commas.
    std::string publishPages(const std::string& pageList);
    /// Overwrites the design with the live page: type and statuses in one text, or a code.
    std::string resetPage(const std::string& pageIdent);
    /// Switches a live page, or all from a node on, "on" or off.
    bool setOnOff(const std::string& pageIdent, const std::string& onOff, bool cascading = false);

    // ---- Copies and moves (authoring/CopyPage.cpp, MovePage.cpp, MoveNode.cpp) ----

    /// Copies a page, with a `flag` other than 0 all below it as well, from the design ("L": from live) to
    /// below another page. The node of the copy, which is in the design alone, or a code.
    std::string pastePage(const std::string& modeFrom, const std::string& pageIdentFrom,
                          const std::string& pageIdentTo, int flag);
    /// Hangs a page and all below it on another page of the same site and language. Its new node, or a code.
    std::string movePage(const std::string& pageIdentFrom, const std::string& pageIdentTo);
    /// Has two siblings change places if the first then stands further "up" or "down". "" or a code.
    std::string moveNode(const std::string& nodeIdentFrom, const std::string& nodeIdentTo,
                         const std::string& direction);

    // ---- The tree as authors see it (authoring/Sitemap.cpp, TreeView.cpp) ----

    /// The pages of a site and language as one text for the browser, down to the level of the settings, or
    /// with a `flag` other than 0 those just below a node; enters the site and language. "-1" while they are
    /// locked.
    std::string getSitemap(const std::string& site, const std::string& lang,
                           const std::string& startNode = "", int flag = 0);
    /// Answers the browser with a tree to pick a link from ("pages"), an image ("images", "pictures") or a
    /// document ("other").
    void treeView(const std::string& site, const std::string& lang, const std::string& mode,
                  const std::string& tvMode);

    // ---- Statistics (administration/Statistics.cpp) ----

    /// The days on which a page was viewed, as HTML; "" when there are none. Parts of dates are given as
    /// digits; a date that lacks one sets no limit. `statType` 0 counts visitors, any other views.
    std::string statistics(const std::string& pageIdent, const std::string& fromDay,
                           const std::string& fromMonth, const std::string& fromYear,
                           const std::string& toDay, const std::string& toMonth, const std::string& toYear,
                           int statType);
    /// The name of a month from 1 on.
    std::string getMonth(int monthId);

    // ---- Item locks (authoring/ItemLocking.cpp) ----

    /// Takes an administrative record for this session; false when another login's session holds it.
    bool lockItem(const std::string& item, const std::string& itemId);
    /// Lets a record go if this session holds it.
    void unlockItem(const std::string& item, const std::string& itemId);

    // ---- Audit trail (authoring/Audit.cpp) ----

    /// Adds a line, on a connection of its own. `loginId` 0 is the object's login, -99 nobody.
    void addAuditTrail(const std::string& pageIdent, const std::string& advIdent, const std::string& action,
                       const std::string& description, int loginId = 0);

  private:
    db::Connection& connection() { return connection_.use(host_); }
    void loadSessionState();
    /// The object's login at this moment, for the functions that work in its name.
    Actor actor() const;
    EditRights editRights(const std::string& site, const std::string& lang, const std::string& pageIdent,
                          const std::string& username);
    /// A word of the interface language that stands in for a missing name.
    std::string bracketedWord(double label);
    /// Removes an administrative record in one transaction and writes the line of the trail when `advId` is
    /// above 0. `removal` commits what the record was, or refuses with the code that is then the answer; else
    /// that is "".
    using RecordRemoval = std::function<db::Outcome<std::string>(db::Connection& transaction)>;
    std::string removeRecord(std::string_view operation, double id, int advId, const RecordRemoval& removal);
    // The line by itself. That it can't be written is told to operators: the change is made.
    void recordChange(std::string_view operation, int advId, const std::string& action,
                      const std::string& description);
    void recordRemoval(std::string_view operation, int advId, const std::string& what);
    LockSeeker lockSeeker() const;

    /// What `approvePage` and `publishPage` do with a page once it is read, when somebody is logged in.
    std::string approve(PageId pageId, int state);
    std::string publish(const PageIdentity& page);

    /// A page's title, or the word for a page without one; "" for no page.
    std::string titleOrWord(PageId pageId, Twin twin);
    /// The same as one level of an operation: a failure has the line "getPageTitle !" in front.
    std::string pageTitle(PageId pageId, Twin twin);
    /// A line of the trail for a page, in the name of the object's login. No page, no line. As one level of
    /// the operation that was done: a failure has the line "addAuditTrail !" in front.
    void addPageLine(PageId pageId, std::string_view action, std::string_view description = "");
    /// The same for a body that has been changed, which a failure doesn't undo.
    void recordEditing(std::string_view operation, PageId pageId, const std::string& action,
                       const std::string& description);
    /// The lines of the trail for a copy, at both its ends.
    void recordCopy(const PageIdentity& source, const PageIdentity& copy, const std::string& mark);
    std::string movedTitle(PageId pageId);

    HostContext& host_;
    PageModules* modules_;
    db::ConnectionSource connection_;
    Author author_;
    LoginDetails login_;  ///< the one last asked for
};

}  // namespace torvex
