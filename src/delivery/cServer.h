#pragma once

#include <string>
#include <string_view>

#include "delivery/PageRecord.h"
#include "platform/Value.h"
#include "platform/db/ConnectionSource.h"
#include "records/PageId.h"

namespace torvex {

class PageModules;
struct HostContext;

/// Serves pages to visitors. `getPage` comes first: it resolves what was asked for into the page record,
/// which the other operations read. Works on live data alone, but for the conversion of page names. An object
/// lives for one request and is used by one thread.
///
/// A refusal is a code in the record. Everything else that fails is `Error` with the operation's line in
/// front.
class cServer {
  public:
    /// `modules` may be missing; it must outlive the object.
    explicit cServer(HostContext& host, PageModules* modules = nullptr) : host_(host), modules_(modules) {}

    void connect(db::ConnectionSource connection) { connection_ = std::move(connection); }

    // Resolution
    /// Fills the page record; `pgAccess` is the verdict. A folder resolves to its first child. `pageIdent` is
    /// a pageId or a nodeId, as in all operations.
    void getPage(const std::string& pageIdent, const std::string& username = "",
                 const std::string& password = "");
    /// Whether the page shows today, whoever asks; folders are followed to their first child.
    bool isPage(const std::string& pageIdent);

    // The page record
    int pgAccess() const { return record_.access; }
    PageId pgPageId() const { return record_.pageId; }
    const std::string& pgNodeId() const { return record_.nodeId; }
    double pgOrderId() const { return record_.orderId; }
    const std::string& pgType() const { return record_.type; }
    const std::string& pgTitle() const { return record_.title; }
    const std::string& pgNavigation() const { return record_.navigation; }
    PageId pgPrevious() const { return record_.previous; }
    PageId pgNext() const { return record_.next; }
    PageId pgUp() const { return record_.up; }
    int pgOnline() const { return record_.online; }
    const std::string& pgOnlineFrom() const { return record_.onlineFrom; }
    const std::string& pgOnlineTo() const { return record_.onlineTo; }
    const std::string& pgTemplateFile() const { return record_.templateFile; }
    const std::string& pgStylesheetFile() const { return record_.stylesheetFile; }
    const std::string& pgBaseTemplateFile() const { return record_.baseTemplateFile; }
    const std::string& pgAppParamPublic() const { return record_.appParamPublic; }
    const std::string& pgAppURLpublic() const { return record_.appUrlPublic; }
    const std::string& pgAppURL() const { return record_.appUrl; }
    const std::string& pgBreadcrumb() const { return record_.breadcrumb; }
    const std::string& pgDynMenu() const { return record_.dynMenu; }

    // Access
    /// Turns the verdict on the page of the record into the address that the visitor has to be sent to; ""
    /// when the page may be served now. `applicationDir` is the folder of an application that serves the page
    /// itself.
    std::string securityCheck(const std::string& applicationDir = "");
    /// The verdict on any page and user, without the page's online dates. Without a name the session's user.
    bool hasAccess(const std::string& pageIdent, const std::string& username = "");
    /// Whether a real group guards the page.
    bool isSecuredPage(const std::string& pageIdent);
    /// 1 a user of the folder's group, 0 open, -1 no groups, -2 no valid login, -99 a bad path; 100 in place
    /// of a refusal of an image, which shows as a blank picture.
    int checkFolderAccess(const std::string& folder);

    // Users. Names and passwords that are left out are the session's.
    bool isUser(const std::string& username, const std::string& password);
    /// 0 when there is no such user.
    double getUserId(const std::string& username = "", const std::string& password = "");
    std::string getUserPassword(const std::string& username = "");
    /// The page that the user's lowest group with one enters or leaves by; -1 for none.
    PageId getEntryPage(const std::string& username = "", const std::string& password = "");
    PageId getExitPage(const std::string& username = "", const std::string& password = "");

    // Logging in and out
    /// The login page that guards a page; 0 with the extranet off.
    PageId getLoginPage(const std::string& pageIdent);
    /// Does what the posted login form asks for, and says where it leads. "" when there is nothing to do.
    std::string getLoginURL();
    /// Logs the visitor out, and says where that leads.
    std::string getLogoutURL();

    // Files
    /// Writes a file to the response. "0" sent, "-99" not found, "-10" a secure address is needed, or the
    /// negative code of `checkFolderAccess`, which is asked unless `securityCheck` is false.
    std::string sendBinaryFile(const std::string& fileSpec, bool securityCheck = true);

    // Names and titles
    /// -1 when there is no such page.
    PageId getPageId(const std::string& nodeId);
    /// "" when there is no such page.
    std::string getNodeId(PageId pageId);
    /// An untitled page gives a bracketed word in the page's language; "" for no page.
    std::string getPageTitle(const std::string& pageIdent);
    std::string getWebsiteTitle(const std::string& site, const std::string& lang);
    /// A label of the interface vocabulary in a language, given by code or by column number.
    std::string getVocab(const std::string& langId, double labelId);

    // Assembly
    /// The finished page of the record, but for its links; "" when the record holds no page; or an address
    /// behind "error:" when a template is missing. `applicationSubTitle` picks a sub-template of an
    /// application page.
    std::string torvex_preparePage(const std::string& applicationSubTitle = "");
    /// Whether the page that was prepared last has a form to log in with.
    bool hasLoginForm() const { return hasLoginForm_; }
    // The files in force for a page. Delivery never reads design data: `mode` is ignored.
    std::string getTemplateFile(const std::string& pageIdent, const std::string& mode = "L");
    std::string getStylesheetFile(const std::string& pageIdent, const std::string& mode = "L");
    std::string getBaseTemplateFile(const std::string& pageIdent, const std::string& mode = "L");

    // Bodies
    /// `html` with the bodies of the page in their places, which must be numbered without a gap.
    std::string fillBodies(const std::string& pageIdent, const std::string& html);
    /// One body; its kind and feed are looked up when `bodyType` is below 1.
    std::string getBody(const std::string& pageIdent, int bodyId, int bodyType = 0, int feedId = 0);

    // Links
    /// The page with its stored link notations turned into real links of the site's mode, and dead ones gone.
    /// `site` is the site of documents that name none; `lang` and `mode` have no effect.
    std::string buildLinks(const std::string& html, const std::string& site, const std::string& lang = "",
                           const std::string& mode = "");

    // Around a page
    /// Counts a view, unless the visitor's address is filtered out.
    void logPage(const std::string& pageIdent);
    std::string getBreadcrumb(const std::string& pageIdent);
    std::string getMetaDataHTML(const std::string& pageIdent);
    /// Number, name and description of a site's meta tags, by name.
    Value getMetaTags(const std::string& site);

    // Charsets
    /// Sets the visitor's code page from the language of the page in the request.
    void setCodePage();
    std::string getCharsetCodepage(const std::string& lang);
    std::string getCharsetLabel(const std::string& lang);
    std::string getCharsetName(const std::string& lang);

    // Query strings
    /// Encodes the values and leaves "=" and "&".
    std::string urlencode(const std::string& queryString);
    std::string getParameterValue(const std::string& parameter, const std::string& queryString);

  private:
    db::Connection& connection() { return connection_.use(host_); }
    std::string secureAddress() const;

    HostContext& host_;
    PageModules* modules_;
    db::ConnectionSource connection_;
    PageRecord record_;
    bool hasLoginForm_ = false;
};

}  // namespace torvex
