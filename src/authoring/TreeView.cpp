// cManager: the trees from which links, images and documents are picked.

#include <algorithm>
#include <map>
#include <set>
#include <utility>
#include <vector>

#include "authoring/TreePage.h"
#include "authoring/cManager.h"
#include "platform/ApplicationValues.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Response.h"
#include "platform/Session.h"
#include "platform/files/FileSystem.h"
#include "platform/text/Text.h"
#include "records/Labels.h"
#include "records/PageIdentity.h"
#include "records/PageKind.h"
#include "templates/HTMLTemplate.h"
#include "templates/Markers.h"

namespace torvex {

namespace {

constexpr std::string_view newFolder = "New folder";

constexpr std::string_view selectWebsites =
    "select a.site, a.name as sitename, b.lang, b.name as language from TORVEX_SITES a, TORVEX_LANGUAGES b "
    "order by a.site, b.lang";
// Parents come before their children: their own parents are the shorter texts.
constexpr std::string_view selectPagesLive =
    "select a.site, a.lang, a.pageId, a.nodeId, a.parent, a.title, a.type, "
    "case when exists (select 1 from TORVEX_PAGES_LIVE b where b.parent = a.nodeId) then 1 else 0 end "
    "as hasChildren from TORVEX_PAGES_LIVE a order by a.parent, a.orderId, a.nodeId";
constexpr std::string_view selectPagesDesign =
    "select a.site, a.lang, a.pageId, a.nodeId, a.parent, a.title, a.type, "
    "case when exists (select 1 from TORVEX_PAGES_DESIGN b where b.parent = a.nodeId) then 1 else 0 end "
    "as hasChildren from TORVEX_PAGES_DESIGN a order by a.parent, a.orderId, a.nodeId";

constexpr std::string_view selectImageFolders =
    "select fld_id, fld_name, fld_parent from TORVEX_IMAGES_FOLDERS where fld_site = ? "
    "order by fld_level, fld_name, fld_id";
constexpr std::string_view selectDocumentFolders =
    "select fld_id, fld_name, fld_parent from TORVEX_DOCUMENTS_FOLDERS where fld_site = ? "
    "order by fld_level, fld_name, fld_id";
constexpr std::string_view selectImages =
    "select imgId as id, img_fldId as folder, img_title as title, img_filename as filename, img_size as "
    "size, "
    "img_width as width, img_height as height from TORVEX_IMAGES where img_site = ? "
    "order by img_title, imgId";
constexpr std::string_view selectDocuments =
    "select docId as id, doc_fldId as folder, doc_title as title, doc_filename as filename, doc_size as "
    "size, "
    "doc_type as type from TORVEX_DOCUMENTS where doc_site = ? order by doc_title, docId";

constexpr std::string_view root = "Froot";
constexpr std::string_view otherType = "other";

struct Tag {
    std::string_view name;
    std::string text;
};

/// A block as the texts between its tags, so that each of very many nodes is put together in one go. What
/// stands in for a tag is text for a script, and holds no tags itself.
class Pattern {
  public:
    explicit Pattern(std::string_view block) {
        using markers::closing, markers::opening;
        for (;;) {
            const std::size_t open = block.find(opening);
            const std::size_t close = open == std::string_view::npos ? open : block.find(closing, open);
            if (close == std::string_view::npos) break;
            const std::size_t name = open + opening.size();
            pieces_.push_back(
                {std::string(block.substr(0, open)), std::string(block.substr(name, close - name))});
            block.remove_prefix(close + closing.size());
        }
        rest_ = block;
    }

    void appendTo(std::string& text, const std::vector<Tag>& tags) const {
        for (const Piece& piece : pieces_) {
            text += piece.before;
            const auto tag =
                std::find_if(tags.begin(), tags.end(), [&](const Tag& one) { return one.name == piece.tag; });
            if (tag != tags.end()) text += tag->text;
        }
        text += rest_;
    }

  private:
    struct Piece {
        std::string before;
        std::string tag;
    };

    std::vector<Piece> pieces_;
    std::string rest_;
};

/// The calls that make the nodes, in the making. A node whose parent isn't there is left out: a variable that
/// is missing would end the script.
class Calls {
  public:
    explicit Calls(const HTMLTemplate& page)
        : folder_(page.extractBlock("folder")), item_(page.extractBlock("item")) {
        known_.emplace(root);
    }

    void addFolder(const std::string& node, const std::string& parent, std::vector<Tag> tags) {
        if (add(folder_, node, parent, std::move(tags))) known_.insert(node);
    }
    void addItem(const std::string& node, const std::string& parent, std::vector<Tag> tags) {
        add(item_, node, parent, std::move(tags));
    }
    const std::string& text() const { return text_; }

  private:
    bool add(const Pattern& block, const std::string& node, const std::string& parent,
             std::vector<Tag> tags) {
        if (!known_.contains(parent)) return false;
        tags.push_back({"node", node});
        tags.push_back({"parent", parent});
        block.appendTo(text_, tags);
        return true;
    }

    Pattern folder_;
    Pattern item_;
    std::set<std::string> known_;
    std::string text_;
};

/// The words that stand in for titles.
struct Words {
    std::string newFolder;
    std::string untitled;
};

std::string encoded(std::string_view title) {
    return inTreeScript(text::htmlEncode(text::trim(title)));
}

std::string encodedWide(std::string_view title) {
    return inTreeScript(text::replaceAll(text::htmlEncode(text::trim(title)), " ", "&nbsp;"));
}

// ---- Pages ----

std::string websiteNode(std::string_view site) {
    return "S" + treeVariable(text::lower(site));
}
std::string websiteNode(std::string_view site, std::string_view lang) {
    return websiteNode(site) + "L" + treeVariable(text::lower(lang));
}
std::string pageNode(std::string_view nodeId) {
    return "I" + treeVariable(text::replaceAll(text::lower(nodeId), ".", ""));
}

/// A title opens the node.
void addWebsite(Calls& calls, const std::string& node, const std::string& parent, std::string_view title) {
    calls.addFolder(node, parent,
                    {{"isWebsite", "true"},
                     {"pageId", "function () { clickOnNode(" + node + ".id); }"},
                     {"nodeId", ""},
                     {"title", encodedWide(title)},
                     {"iconOpen", "siteOpen"},
                     {"iconClsd", "siteClsd"},
                     {"type", ""}});
}

void addWebsites(Calls& calls, db::Rows rows) {
    std::string last;
    while (rows.next()) {
        const std::string site = rows.text("site");
        if (site != last) addWebsite(calls, websiteNode(site), std::string(root), rows.view("sitename"));
        last = site;
        addWebsite(calls, websiteNode(site, rows.view("lang")), websiteNode(site), rows.view("language"));
    }
}

struct Icons {
    std::string_view open;
    std::string_view closed;
};

Icons iconsOf(PageKind kind) {
    if (kind == PageKind::Application) return {"appl", "appl"};
    if (kind == PageKind::Folder) return {"ofld", "cfld"};
    return {"page", "page"};
}

std::string pageTitle(std::string_view title, std::string_view type, const Words& words) {
    if (title.empty()) return words.untitled;
    return isFolder(type) && text::equals(title, newFolder) ? words.newFolder : std::string(title);
}

void addPage(Calls& calls, const db::Rows& rows, const Words& words) {
    const std::string nodeId = rows.text("nodeId");
    const std::string_view parent = rows.view("parent");
    const std::string type(text::upper(text::trim(rows.view("type"))));
    const std::string above =
        parent.empty() ? websiteNode(rows.view("site"), rows.view("lang")) : pageNode(parent);
    const std::string title = encodedWide(pageTitle(text::trim(rows.view("title")), type, words));
    const std::string pageId = text::fromNumber(rows.number("pageId"));
    const Icons icons = iconsOf(kindOf(type));
    if (rows.number("hasChildren") == 1) {
        calls.addFolder(pageNode(nodeId), above,
                        {{"isWebsite", "false"},
                         {"pageId", pageId},
                         {"nodeId", inTreeScript(nodeId)},
                         {"title", title},
                         {"iconOpen", std::string(icons.open)},
                         {"iconClsd", std::string(icons.closed)},
                         {"type", inTreeScript(type)}});
    } else {
        calls.addItem(pageNode(nodeId), above,
                      {{"pageId", pageId},
                       {"nodeId", inTreeScript(nodeId)},
                       {"title", title},
                       {"icon", std::string(icons.closed)},
                       {"type", inTreeScript(type)}});
    }
}

// ---- Media ----

std::string folderNode(std::string_view folder) {
    return folder.empty() ? std::string(root) : "F" + treeVariable(folder);
}

struct MediaFile {
    double id = 0;
    std::string folder;
    std::string title;
    std::string filename;
    double size = 0;
    double width = 0;   ///< of an image
    double height = 0;  ///< of an image
    std::string type;   ///< of a document
};

std::vector<MediaFile> imagesOf(db::Rows rows) {
    std::vector<MediaFile> files;
    while (rows.next()) {
        files.push_back({rows.number("id"),
                         rows.text("folder"),
                         rows.text("title"),
                         rows.text("filename"),
                         rows.number("size"),
                         rows.number("width"),
                         rows.number("height"),
                         {}});
    }
    return files;
}

std::vector<MediaFile> documentsOf(db::Rows rows) {
    std::vector<MediaFile> files;
    while (rows.next()) {
        files.push_back({rows.number("id"), rows.text("folder"), rows.text("title"), rows.text("filename"),
                         rows.number("size"), 0, 0, rows.text("type")});
    }
    return files;
}

/// How many files each folder holds with all below it, by its id.
std::map<std::string, int> totalsOf(const std::vector<MediaFile>& files) {
    constexpr std::size_t level = 3;
    std::map<std::string, int> totals;
    for (const MediaFile& file : files) {
        for (std::size_t length = level; length <= file.folder.size(); length += level) {
            ++totals[file.folder.substr(0, length)];
        }
    }
    return totals;
}

void addFolders(Calls& calls, db::Rows rows, const std::map<std::string, int>& totals, const Words& words) {
    while (rows.next()) {
        const std::string id = rows.text("fld_id");
        const auto total = totals.find(id);
        const std::string_view name = text::trim(rows.view("fld_name"));
        calls.addFolder(folderNode(id), folderNode(rows.view("fld_parent")),
                        {{"title", encoded(text::equals(name, newFolder) ? words.newFolder : name)},
                         {"total", std::to_string(total == totals.end() ? 0 : total->second)}});
    }
}

/// Behind its last point; "" without one.
std::string extensionOf(std::string_view filename) {
    const std::size_t point = filename.rfind('.');
    return point == std::string_view::npos ? std::string() : text::lower(filename.substr(point + 1));
}

/// Addresses are those of the site's folder, as names of files hold the path below it.
void addFile(Calls& calls, const MediaFile& file, const std::string& siteFolder, const std::string& type) {
    calls.addItem("I" + text::fromNumber(file.id), folderNode(file.folder),
                  {{"reference", text::fromNumber(file.id)},
                   {"title", encoded(file.title)},
                   {"fldId", siteFolder},
                   {"filename", inTreeScript(file.filename)},
                   {"width", text::fromNumber(file.width)},
                   {"height", text::fromNumber(file.height)},
                   {"size", text::fromNumber(file.size)},
                   {"ext", inTreeScript(type)}});
}

/// Which types of documents have an icon.
class TypeIcons {
  public:
    explicit TypeIcons(const HostContext& host) : host_(host) {}

    std::string of(const std::string& type) {
        const auto [known, isNew] = known_.try_emplace(type, false);
        if (isNew) known->second = !type.empty() && host_.files.fileExists(pathOf(type));
        return known->second ? type : std::string(otherType);
    }

  private:
    std::string pathOf(const std::string& type) const {
        return host_.application.text(applicationKey::installPath) + "wwwroot/torvex/images/tv_icon_" + type +
               ".gif";
    }

    const HostContext& host_;
    std::map<std::string, bool> known_;
};

// ---- The three kinds ----

void fillBlocks(HTMLTemplate& page, const Calls& calls) {
    // All in the place of the one, so that a page and a folder of pages stay in their order.
    page.replaceBlock("folder", calls.text());
    page.replaceBlock("item", "");
}

void fillPages(HostContext& host, db::Connection& connection, HTMLTemplate& page, Twin twin,
               const Words& words) {
    page.replaceTag("torvex_url", inTreeScript(host.session.text(sessionKey::url)));
    Calls calls(page);
    addWebsites(calls, connection.query(selectWebsites));
    auto rows = connection.query(twin == Twin::Live ? selectPagesLive : selectPagesDesign);
    while (rows.next()) addPage(calls, rows, words);
    fillBlocks(page, calls);
}

void fillImages(HostContext& host, db::Connection& connection, HTMLTemplate& page, const std::string& site,
                const Words& words) {
    page.replaceTag("torvex_url", inTreeScript(host.application.text(applicationKey::imagesUrl)));
    const auto files = imagesOf(connection.query(selectImages, {site}));
    page.replaceTag("bigTotal", std::to_string(files.size()));
    Calls calls(page);
    addFolders(calls, connection.query(selectImageFolders, {site}), totalsOf(files), words);
    for (const MediaFile& file : files) {
        addFile(calls, file, inTreeScript(site + "/"), extensionOf(file.filename));
    }
    fillBlocks(page, calls);
}

void fillDocuments(HostContext& host, db::Connection& connection, HTMLTemplate& page, const std::string& site,
                   const Words& words) {
    page.replaceTag("torvex_url", inTreeScript(host.application.text(applicationKey::documentsUrl)));
    const auto files = documentsOf(connection.query(selectDocuments, {site}));
    page.replaceTag("bigTotal", std::to_string(files.size()));
    Calls calls(page);
    addFolders(calls, connection.query(selectDocumentFolders, {site}), totalsOf(files), words);
    TypeIcons icons(host);
    for (const MediaFile& file : files) {
        addFile(calls, file, inTreeScript(site + "/"), icons.of(file.type));
    }
    fillBlocks(page, calls);
}

void answer(HostContext& host, HTMLTemplate& page, const std::string& charset) {
    host.response.expires = 0;
    host.response.cacheControl = "no-cache";
    host.response.addHeader("Pragma", "no-cache");
    host.response.contentType = "text/html";
    host.response.charset = charset;
    host.response.write(page.takeStrVal());
}

}  // namespace

void cManager::treeView(const std::string& site, const std::string& lang, const std::string& mode,
                        const std::string& tvMode) try {
    // The trees of pages show all websites, those of media all languages.
    (void)lang;
    if (host_.session.text(sessionKey::authorName).empty()) {
        host_.response.write(" ");
        return;
    }
    const std::string word = getVocab(host_.session.text(sessionKey::interfaceLanguage), label::newFolder);
    const Words words{word.empty() ? std::string(newFolder) : word, bracketedWord(label::untitled)};
    const std::string wantedSite = text::lowerTrim(site);
    const auto kind = treeKindOf(text::trim(tvMode));
    HTMLTemplate page(host_);
    page.setStrVal(treePage(kind));
    const Twin twin = text::equals(text::trim(mode), "L") ? Twin::Live : Twin::Design;
    if (kind == TreeKind::Pages) fillPages(host_, connection(), page, twin, words);
    if (kind == TreeKind::Images) fillImages(host_, connection(), page, wantedSite, words);
    if (kind == TreeKind::Documents) fillDocuments(host_, connection(), page, wantedSite, words);
    const std::string charset = host_.application.text(applicationKey::interfaceCharset);
    page.replaceTag("charset", text::htmlEncode(charset));
    page.replaceTag("torvex_mode", inTreeScript(twin == Twin::Live ? "L" : "D"));
    page.replaceTag("siteName", encoded(getSiteName(wantedSite)));
    page.removeTags();
    answer(host_, page, charset);
} catch (...) {
    raiseFrom("treeView !");
}

}  // namespace torvex
