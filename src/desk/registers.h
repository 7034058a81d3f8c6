#pragma once

#include <string>
#include <string_view>

#include "platform/Value.h"
#include "platform/db/ConnectionSource.h"

namespace torvex {
struct HostContext;
struct ModulePlace;

/// Writes the records of the registers, with their checks, locks and lines of the audit trail, and lists what
/// a screen needs to do so. An object is made for one request, in the name of the login that the visitor's
/// session holds, and is used by one thread.
///
/// A change answers "0" or a code; a refused one and one that failed have changed nothing. An `advId` is the
/// entry of the administration menu that called, for the audit line; 0 writes none.
class registers {
  public:
    explicit registers(HostContext& host) : host_(host) {}

    void connect(db::ConnectionSource connection) { connection_ = std::move(connection); }

    // ---- Media (desk/Media.cpp, desk/MediaChanges.cpp, desk/MediaMove.cpp) ----
    // `folderType` is "images" or "documents"; a `path` is a file's as the register has it: "001/rose.gif".

    /// Every folder of a site: id, name, parent, level, how many files lie in it; by id.
    Value getFolders(const std::string& site, const std::string& folderType);
    /// The files of a folder and those below it, by folder and title, of which 500 from the row `from` on:
    /// folder, path, title, type, size, width, height, alternative text. `words` stand in title, path or
    /// alternative text.
    Value getMedia(const std::string& site, const std::string& folderType, const std::string& folder = "",
                   const std::string& words = "", double from = 0);
    /// Whether a file may come into the folder under this name: "0", "-1" no such folder, "exists".
    std::string checkUpload(const std::string& site, const std::string& folderType, const std::string& folder,
                            const std::string& filename);

    /// "-1" gone, "-2" a folder beside it has the name, "-3" no name.
    std::string renameFolder(const std::string& site, const std::string& folderType,
                             const std::string& folder, const std::string& name, int advId = 0);
    /// "-1" gone, "-2" another file of the folder has the title, "-3" no title. An `alt` of "-1" stays, an
    /// empty one says that the picture is decoration.
    std::string saveMedia(const std::string& site, const std::string& folderType, const std::string& path,
                          const std::string& title, const std::string& alt = "-1", int advId = 0);
    /// The file `by` takes the place of the one at `path` under its name, title and alternative text, and is
    /// itself gone. Without it, notes size and measures of what lies at `path` now. "-1" one of them isn't
    /// there, "-2" the two are not of one type.
    std::string replaceMedia(const std::string& site, const std::string& folderType, const std::string& path,
                             const std::string& by = "", int advId = 0);
    /// Brings the file into another folder of the site; the pages that show it or lead to it follow, in design
    /// and live. "-1" file or folder are gone, "-2" a file there has its title, "exists" one has its name.
    std::string moveMedia(const std::string& site, const std::string& folderType, const std::string& path,
                          const std::string& folder, int advId = 0);
    /// "-1" gone.
    std::string deleteMedia(const std::string& site, const std::string& folderType, const std::string& path,
                            int advId = 0);

    // ---- Logins (desk/LoginList.cpp) ----

    /// All logins, by name: number, username, name, job, when each logged in last, whether it is online, its
    /// first and last day, whether it is a program's, whether its password is kept strongly, how many roles it
    /// has, and whether it has a second factor.
    Value getLogins();

    // ---- Second factors (desk/SecondFactors.cpp) ----

    /// Takes away the second factor of whoever has lost it. "" when it is gone, "-1" no such login, "-2" the
    /// administrator's, which is her own to reset, "-3" it has none.
    std::string resetSecondFactor(int loginId, int advId = 0);
    /// Whether logins with the role must have one. "0" when it is saved, "-1" gone, "-4" open elsewhere.
    std::string demandSecondFactor(int roleId, bool isDemanded, int advId = 0);

    /// Since when the account of a visitor has a second factor, and how many codes on paper are left.
    Value getUserFactor(double userId);
    /// Takes it away. "" when it is gone, "-1" no such user, "-3" there is none.
    std::string resetUserFactor(double userId, int advId = 0);

    // ---- Roles (desk/Roles.cpp, desk/RoleRights.cpp, desk/RightsImpact.cpp) ----
    // `rights` are five flags: onOff, move, publish, approve, edit. A `scope` is nodes divided by commas, "" for
    // the whole tree. An `entry` is one of the administration menu; an empty site or language means all of them.
    // Nobody gives what she hasn't got, and nobody but "sa" takes the last right to administer from all others.
    // A change is refused while another session has the record, and leaves its lock as it is.

    /// Number, name, description, how many logins have it, and whether it demands a second factor; by name.
    Value getRoles();
    /// All logins, by name: number, username, name, and 1 where the login has the role.
    Value getRoleLogins(int roleId);
    /// All that a role gives to pages: site, language, five flags, scope.
    Value getEditRights(int roleId);
    /// All that a role opens: entry, site, language, view, edit.
    Value getAdvancedRights(int roleId);

    /// The number of the role, a new one for 0, and lets it go. "-1" gone, "-2" another role has the name, "-3"
    /// no name, "-4" another session has it open.
    std::string saveRole(int roleId, const std::string& name, const std::string& description, int advId = 0);
    /// In place of what the role had in the site and language. "-1" gone, "-2" no such site or language, "-3"
    /// flags that are none, or a page of the scope that isn't there, "-4" open elsewhere, "-5" more than the
    /// caller has.
    std::string setEditRights(int roleId, const std::string& site, const std::string& lang,
                              const std::string& rights, const std::string& scope = "", int advId = 0);
    /// In place of what the role had of the entry there. "-1" gone, "-2" no such entry, "-3" nothing that the
    /// entry offers, or not for such a place, "-4" open elsewhere, "-5" more than the caller has, "-6" nobody
    /// would be left to administer.
    std::string setAdvancedRight(int roleId, int entry, const std::string& site, const std::string& lang,
                                 bool view, bool edit, int advId = 0);
    /// "-1" the login or the role is gone, "-4" the login is open elsewhere, "-5" the role gives more than the
    /// caller has, "-6" nobody would be left to administer.
    std::string setLoginRole(int loginId, int roleId, bool has, int advId = 0);

    /// Whom `setEditRights` would hit: login, name, task, how many pages she may do it to now, and afterwards; by
    /// name. Those for whom it comes to the same aren't listed.
    Value weighEditRights(int roleId, const std::string& site, const std::string& lang,
                          const std::string& rights, const std::string& scope = "");
    /// Whom `setAdvancedRight` would hit: login, name, "view" or "edit", whether she has it now, and afterwards.
    Value weighAdvancedRight(int roleId, int entry, const std::string& site, const std::string& lang,
                             bool view, bool edit);

    // ---- Forums (desk/Forums.cpp, desk/ForumPosts.cpp) ----
    // Definitions are those of the design; `Forum::publish` brings them to visitors. `references` are the places
    // of reactions, divided by commas; an empty text is the topic itself, as is the reaction 0.

    /// All that a forum's definition says; whether it is live, how many topics it has, and how many topics and
    /// reactions nobody sees. By name.
    Value getForums(const std::string& site, const std::string& lang);
    /// The number of the forum, a new one for 0. One that is `marked` goes with the next publishing, and all
    /// that was written in it. What a forum asks for is 0 not asked, 1 may be given, 2 must be given. "-1" gone,
    /// "-2" no such website, "-3" no name, "-4" no such choice, "-6" an address is none, or none is there to
    /// send from.
    std::string saveForum(int forumId, const std::string& site, const std::string& lang,
                          const std::string& name, const std::string& description, int hotPeriod,
                          bool reactionsOnline, int archiveAfter, bool archiveVisible, bool sendEmail,
                          const std::string& emailFrom, const std::string& emailTo,
                          const std::string& emailSubject, int pageSize, int askName, int askEmail,
                          const std::string& words, bool marked = false, int advId = 0);

    /// The topics of a forum, the liveliest first, 500 from the row `from` on: number, title, author, first and
    /// last day, whether it is shown, how many reactions it has, and how many of them nobody sees.
    Value getTopics(int forumId, double from = 0);
    /// A topic (as reaction 0) and its reactions, the newest first, 500 from the row `from` on: number, place,
    /// title, author, mail address, day, whether it is shown, text.
    Value getReactions(int forumId, int topicId, double from = 0);
    /// "-1" gone, "-3" no title.
    std::string saveReaction(int forumId, int topicId, int reactionId, const std::string& title,
                             const std::string& text, int advId = 0);
    /// Shows reactions with those that they answer, or hides them with what answers them. How many contributions
    /// are another way than before; "-1" one of them is gone.
    std::string setReactions(int forumId, int topicId, const std::string& references, bool on, int advId = 0);
    /// Removes them with all that answers them. How many are gone; "-1" one of them was before.
    std::string deleteReactions(int forumId, int topicId, const std::string& references, int advId = 0);

    // ---- Message board (desk/BoardCategories.cpp, desk/BoardItems.cpp) ----
    // Records are those of the design; `msgBoard::publish` brings them to visitors. A category's number is its
    // `msgB_Id`. What is switched on goes on for visitors with the next publishing, and off the same way.

    /// All that the categories say, by their paths; whether each is live, how many items it has, and of how
    /// many visitors see something else.
    Value getCategories(const std::string& site, const std::string& lang);
    /// The items of a category, the latest first, 500 from the row `from` on.
    Value getItems(const std::string& site, const std::string& lang, int category, double from = 0);
    /// The category's number; a new one for 0, below the path `parent` ("" the top). "-1" gone, "-2" no such
    /// website, or none to stand below, "-3" no title, "-4" no such order or alignment, "-9" no place is left.
    std::string saveCategory(int category, const std::string& site, const std::string& lang,
                             const std::string& parent, const std::string& title,
                             const std::string& description, int itemOrder, int archiveAfter,
                             bool archiveVisible, const std::string& linkText, int imageAlignment,
                             int imageWidth, int imageHeight, bool online, int pageSize, int advId = 0);
    /// The item's number, a new one for 0. Days are "yyyymmdd"; an empty one is today, that of the archive
    /// never. "-1" gone, "-2" no such category, "-3" no title, "-4" no such day.
    std::string saveItem(int itemId, const std::string& site, const std::string& lang, int category,
                         const std::string& title, const std::string& text, const std::string& link,
                         const std::string& linkText, const std::string& image, const std::string& date,
                         const std::string& onlineDate, const std::string& archiveDate, bool online,
                         bool newsflash, int advId = 0);
    /// Lets a "category" (with all below it) or an "item" go with the next publishing, or takes that back. "-1"
    /// gone.
    std::string markDeleted(const std::string& kind, int id, const std::string& site, const std::string& lang,
                            bool marked, int advId = 0);

    // ---- Newsflashes (desk/Newsflashes.cpp) ----
    // `newsflash::publish` brings the definitions to visitors; which categories feed them goes live with the
    // message board's publishing.

    /// All that the definitions say, by number; the template's name, and whether each is live.
    Value getNewsflashes(const std::string& site, const std::string& lang);
    /// Newsflash, category and its title; whether it feeds the newsflash in the design, and for visitors.
    Value getNewsflashCategories(const std::string& site, const std::string& lang);
    /// The key of the newsflash, a new one for 0. "-1" gone, "-2" no such website, "-3" no title, "-4" no such
    /// number, order, alignment or mode, "-5" no template for it, "-7" the number is another's, "-8" the title
    /// is.
    std::string saveNewsflash(int nfId, const std::string& site, const std::string& lang, int number,
                              const std::string& title, int itemOrder, int itemLength, int numberOfItems,
                              const std::string& mode, int templateId, int imageAlignment, int imageWidth,
                              int imageHeight, bool marked = false, int advId = 0);
    /// Lets a category feed a newsflash, with the category's next publishing. "-1" the newsflash is gone, "-2"
    /// the category.
    std::string addCategory(int nfId, const std::string& site, const std::string& lang, int category,
                            int advId = 0);
    /// The same, to feed it no longer.
    std::string removeCategory(int nfId, const std::string& site, const std::string& lang, int category,
                               int advId = 0);

    // ---- Dynamic menus (desk/Menus.cpp) ----

    /// The menus of a website by their pages' nodes: all that they say in the design, the template's name, and
    /// whether the page has a live one.
    Value getMenus(const std::string& site, const std::string& lang);
    /// Gives a page its menu, or changes it; a marked one goes with the next publishing. "-1" no such page,
    /// "-4" no such choice, "-5" no template for it.
    std::string saveMenu(double pageId, const std::string& site, const std::string& lang, int minLevels,
                         int maxLevels, int templateId, int display, int extranet, bool marked = false,
                         int advId = 0);

    // ---- Site search (desk/SearchSettings.cpp, Catalogue.cpp) ----

    /// What the search pages of a website decide, by their nodes.
    Value getSearches(const std::string& site, const std::string& lang);
    /// The 500 words that were searched most from a search page, with how often.
    Value getSearchWords(double pageId);
    /// Asks for the search catalogue of this server to be compared with all files ("compare") or made "anew", or for
    /// that work to "stop": what is left then is done by the next comparison. "0", "-1" where no server keeps it,
    /// "-2" for another task.
    std::string renewCatalogue(const std::string& task, int advId = 0);
    /// Makes a page a search page, or changes what it decides; at once. Arguments are as their columns. "-1" no
    /// such page, "-3" no catalogue, "-4" no such choice, "-6" server or share of a remote catalogue missing.
    std::string saveSearch(double pageId, const std::string& catalogName, int catalogLocation,
                           const std::string& serverName, const std::string& webshare, int includePages,
                           int includeDocuments, const std::string& pageScopes,
                           const std::string& documentScopes, int includeDocumentTypes,
                           const std::string& documentTypes, const std::string& properties, int sortOrder,
                           int maxResults, int resultsPerPage, int wordLength, int match, int derivation,
                           int security, int advId = 0);
    // ---- Running it (desk/Interfaces.cpp, Servers.cpp) ----

    /// A language of the interface, switched off and without words. "-1" no code of two characters, "-2" the code is
    /// taken, "-3" no name, "-4" the name is taken.
    std::string addInterface(const std::string& langId, const std::string& name, int advId = 0);
    /// Each label, its English word, and the one of the language, "" where it is missing; by label.
    Value getWords(const std::string& langId);
    /// Saves the words of a table, whose lines are a label and its word: how many have changed. All or none: "-1" no
    /// such language, "-2" no such table, "-3" a label that isn't there.
    std::string saveWords(const std::string& langId, const std::string& words, int advId = 0);

    /// The number of the server, a new one for 0, and lets it go. "-1" gone, "-2" another one has the name, "-3" no
    /// name that a folder can have, "-4" another session has it open.
    std::string saveServer(int serverId, const std::string& name, const std::string& description,
                           const std::string& address, int advId = 0);
    /// Somebody has brought the server up to date: what it had missed is forgotten. "-1" gone.
    std::string forgetMissed(int serverId, int advId = 0);

    // ---- Groups and users of the extranet (desk/Groups.cpp, Users.cpp, UserImport.cpp) ----

    /// Number, name, description, entry and exit page with their titles, how many users are in it and how many pages
    /// and folders it guards; by name. Those of the system aren't listed.
    Value getGroups();
    /// The number of the group, a new one for 0, and lets it go. A page is given by its number or node, "" is none.
    /// "-1" gone, "-2" another one has the name, "-3" no name, "-4" another session has it open, "-5" no such page.
    std::string saveGroup(int groupId, const std::string& name, const std::string& description,
                          const std::string& entryPage, const std::string& exitPage, int advId = 0);
    /// Number, username, first and last name, first and last day, and in how many groups: by username, 500 from the
    /// row `from` on. `words` stand in any of the names; `groupId` 0 is any.
    Value getUsers(const std::string& words = "", int groupId = 0, double from = 0);
    /// One of them.
    Value getUser(double userId);
    /// The number of the user, a new one for 0, and lets it go. An empty password stays. "-1" gone, "-2" another one
    /// has the username, "-3" no username, "-4" another session has it open, "-5" a new one without a password, "-6"
    /// no such day.
    std::string saveUser(double userId, const std::string& username, const std::string& password,
                         const std::string& firstname, const std::string& lastname,
                         const std::string& validFrom, const std::string& validTo, int advId = 0);
    /// "-1" the user or the group is gone, "-4" another session has the user open.
    std::string setUserGroup(double userId, int groupId, bool has, int advId = 0);
    /// Adds and changes accounts by a table (see accounts/UserFile.h), all of its lines or, if one of them is bad,
    /// none: line, username, "adds", "changes", "same" or "bad", and what it changes or why it is bad. A dry run
    /// only says so.
    Value importUsers(const std::string& table, bool dryRun, int advId = 0);

    // ---- Design (desk/DesignFiles.cpp, desk/DesignPages.cpp, desk/Applications.cpp, desk/FeedRecords.cpp) ----
    // Each save names the site and language of its record, gives its number, a new one for 0, and lets it go. "-1"
    // gone, or of another site or language, "-2" another has the name, "-3" no name, "-4" another session has it
    // open, "-7" no such site or language.

    /// With its file, which is written whole or not at all. "-5" another entry has the file, or one of this name
    /// lies there, "-6" no name for a file.
    std::string saveTemplate(int templateId, const std::string& site, const std::string& lang,
                             const std::string& name, const std::string& description, const std::string& file,
                             const std::string& source, bool system = false, int advId = 0);
    std::string saveBaseTemplate(int baseTemplateId, const std::string& site, const std::string& lang,
                                 const std::string& name, const std::string& description,
                                 const std::string& file, const std::string& source, int advId = 0);
    /// A new file's name ends in ".css".
    std::string saveStylesheet(int stylesheetId, const std::string& site, const std::string& lang,
                               const std::string& name, const std::string& description,
                               const std::string& file, const std::string& source, int advId = 0);
    /// For how many live pages a "template", "baseTemplate" or "stylesheet" is in force, named by them or by
    /// their nearest ancestor that names one.
    int countLivePages(const std::string& kind, int id);

    /// Of no site: "-7" isn't answered.
    std::string saveApplication(int appId, const std::string& name, const std::string& description,
                                const std::string& urlPublic, const std::string& urlAdmin,
                                const std::string& urlPublish, int advId = 0);

    /// All of a site and language, by name, or one: number, name, description, address, file, parameters.
    Value getHTMLfeeds(const std::string& site, const std::string& lang, int feedId = 0);
    /// Number, name, description, address and file of the document, of the stylesheet, parameters, and whether
    /// blanks are kept.
    Value getXMLfeeds(const std::string& site, const std::string& lang, int feedId = 0);
    /// "-5" neither an address nor a file, "-6" an address that isn't one of the web, or a file outside of the
    /// site's documents.
    std::string saveHTMLfeed(int feedId, const std::string& site, const std::string& lang,
                             const std::string& name, const std::string& description, const std::string& url,
                             const std::string& file, const std::string& parameters, int advId = 0);
    std::string saveXMLfeed(int feedId, const std::string& site, const std::string& lang,
                            const std::string& name, const std::string& description,
                            const std::string& urlXml, const std::string& fileXml, const std::string& urlXsl,
                            const std::string& fileXsl, const std::string& parameters,
                            bool preserveWhiteSpace = false, int advId = 0);

    // ---- Meta data (desk/MetaSheet.cpp) ----

    /// What 200 pages of the design from `from` on have for the meta tags, a row each: page, node, title, number
    /// of the tag (0 for a page that has nothing), value, and whether it is an ancestor's. By node; with a tag,
    /// pages without a value for it first.
    Value getMetaSheet(const std::string& site, const std::string& lang, int tag = 0, double from = 0);

    // ---- Any record (desk/OpenRecord.cpp) ----

    /// Takes a record's lock for this session where the login may change the record. One row: "held" now,
    /// "other" has it, "noRight" or "gone"; number and name of who has it. `item` and `id` are those of
    /// `lockItem`; for the settings ("config") the id doesn't count.
    Value open(const std::string& item, const std::string& id);

  private:
    db::Connection& connection() { return connection_.use(host_); }
    bool isLoggedIn() const;
    /// A line of the trail, when `advId` is above 0. That it can't be written is told to operators: the change
    /// is made.
    void recordChange(std::string_view operation, int advId, std::string_view action,
                      const std::string& description);

    /// The same for a module's record, which is new, saved, or marked for deletion; `what` names it.
    void recordModule(std::string_view operation, int advId, bool isNew, bool isMarked,
                      const std::string& what);

    std::string changeFeed(const std::string& operation, int nfId, const ModulePlace& place, int category,
                           bool feeds, int advId);

    HostContext& host_;
    db::ConnectionSource connection_;
};

}  // namespace torvex
