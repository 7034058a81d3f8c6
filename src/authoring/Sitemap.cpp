// cManager: the page tree as one text, from which the browser draws it. Each page is a record of fields that
// "#" divides and "###" ends, each followed by those of its children.

#include <algorithm>
#include <fmt/format.h>
#include <iterator>
#include <tuple>
#include <vector>

#include "accounts/Website.h"
#include "authoring/cManager.h"
#include "platform/ApplicationValues.h"
#include "platform/DateTime.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Session.h"
#include "platform/text/Text.h"
#include "records/DateWindow.h"
#include "records/Labels.h"
#include "records/PageIdentity.h"
#include "records/PageKind.h"
#include "records/SystemBranch.h"

namespace torvex {

namespace {

constexpr std::string_view locked = "-1";

constexpr std::string_view recordEnd = "###";
constexpr std::string_view notLive = "[*null*]# ";
constexpr std::string_view sameTitle = "[*idem*]";

constexpr std::string_view outsideItsDates = "2";
constexpr std::string_view neverOnline = "3";

// Which pages: a root and all below it whose parent is no longer than so many characters, in one statement
// that reads no more than these; or the children of a page.
constexpr std::string_view pickTree =
    "with recursive picked (pageId, nodeId) as ("
    "select pageId, nodeId from TORVEX_PAGES_DESIGN where parent = '' and site = ? and lang = ? "
    "union all select c.pageId, c.nodeId from picked p "
    "inner join TORVEX_PAGES_DESIGN c on c.parent = p.nodeId where length(p.nodeId) < ?) ";
constexpr std::string_view pickChildren =
    "with picked as (select pageId, nodeId from TORVEX_PAGES_DESIGN where parent = ?) ";

constexpr std::string_view selectPicked =
    "select a.pageId, a.nodeId, a.orderId, a.title, a.type, a.editStatus, a.lockStatus, a.deleteStatus, "
    "a.approveStatus, a.lockedBy, b.pageId as livePageId, b.title as liveTitle, b.type as liveType, "
    "b.online, b.onlineFrom, b.onlineTo, "
    "case when exists (select 1 from TORVEX_PAGES_DESIGN c where c.parent = a.nodeId) then 1 else 0 end "
    "as hasChildren, "
    "case when exists (select 1 from TORVEX_PAGES_LIVE d where d.parent = b.nodeId) then 1 else 0 end "
    "as hasLiveChildren "
    "from picked p inner join TORVEX_PAGES_DESIGN a on a.pageId = p.pageId "
    "left outer join TORVEX_PAGES_LIVE b on b.pageId = a.pageId";

/// For whom and when the records are written.
struct Reader {
    int loginId = 0;
    std::string today;
    std::string untitled;  ///< stands in for a title, encoded
};

std::string shownTitle(std::string_view title, const Reader& reader) {
    return title.empty() ? reader.untitled : text::replaceAll(text::htmlEncode(title), "#", "-@-");
}

std::string liveState(const db::Rows& rows, std::string_view today) {
    if (isFolder(rows.view("liveType")) || systemBranch::hasDigits(rows.view("nodeId")))
        return std::string(neverOnline);
    if (!isWithin(today, rows.view("onlineFrom"), rows.view("onlineTo"))) return std::string(outsideItsDates);
    return text::fromNumber(rows.number("online"));
}

void appendDesign(std::string& record, const db::Rows& rows, const Reader& reader) {
    const auto node = rows.view("nodeId");
    const auto depth = (static_cast<int>(text::length(node)) - static_cast<int>(PageIdentity::rootLength)) /
                       static_cast<int>(PageIdentity::levelLength);
    const bool held = rows.number("lockStatus") == 1 && rows.number("lockedBy") != reader.loginId;
    fmt::format_to(std::back_inserter(record), "{}#{}#{}#{}#{}{}{}{}{}{}#{}#", rows.number("pageId"), node,
                   depth, shownTitle(rows.view("title"), reader), rows.number("hasChildren"),
                   rows.view("type"), rows.view("editStatus"), rows.number("lockStatus"),
                   rows.number("deleteStatus"), rows.number("approveStatus"), held ? 1 : 0);
}

void appendLive(std::string& record, const db::Rows& rows, const Reader& reader) {
    if (rows.isNull("livePageId")) {
        record.append(notLive);
        return;
    }
    const bool same = text::equals(rows.view("title"), rows.view("liveTitle"));
    fmt::format_to(std::back_inserter(record), "{}#{}{}{}{}{}",
                   same ? std::string(sameTitle) : shownTitle(rows.view("liveTitle"), reader),
                   rows.number("hasLiveChildren"), rows.view("liveType"), rows.number("deleteStatus"),
                   rows.number("approveStatus"), liveState(rows, reader.today));
}

/// Records as they are read, and then in the order of the tree. All of them lie in one text, as there may be
/// very many.
class Records {
  public:
    Records(db::Rows rows, const Reader& reader) {
        while (rows.next()) add(rows, reader);
        std::sort(entries_.begin(), entries_.end(), [](const Entry& a, const Entry& b) {
            return std::tie(a.parent, a.orderId, a.nodeId) < std::tie(b.parent, b.orderId, b.nodeId);
        });
    }

    /// Those below a node, "" for the roots.
    std::string below(const std::string& node) const {
        std::string text;
        text.reserve(text_.size());
        append(text, text::lower(node));
        return text;
    }

  private:
    struct Entry {
        std::string nodeId;
        std::string parent;
        double orderId;
        std::size_t begin;
        std::size_t size;
    };

    void add(const db::Rows& rows, const Reader& reader) {
        const std::size_t begin = text_.size();
        appendDesign(text_, rows, reader);
        appendLive(text_, rows, reader);
        text_.append(recordEnd);
        std::string node = text::lower(rows.view("nodeId"));
        std::string parent(node.size() > PageIdentity::rootLength ? parentOf(node) : std::string_view());
        entries_.push_back(
            {std::move(node), std::move(parent), rows.number("orderId"), begin, text_.size() - begin});
    }

    void append(std::string& text, const std::string& parent) const {
        auto entry =
            std::lower_bound(entries_.begin(), entries_.end(), parent,
                             [](const Entry& one, const std::string& wanted) { return one.parent < wanted; });
        for (; entry != entries_.end() && entry->parent == parent; ++entry) {
            text.append(text_, entry->begin, entry->size);
            append(text, entry->nodeId);
        }
    }

    std::string text_;
    std::vector<Entry> entries_;
};

std::string statementFor(std::string_view pick) {
    return std::string(pick).append(selectPicked);
}

/// The root and what lies so many levels below it.
std::string treeText(db::Connection& connection, const std::string& site, const std::string& lang,
                     double levels, const Reader& reader) try {
    const double longestParent = static_cast<double>(PageIdentity::rootLength) +
                                 levels * static_cast<double>(PageIdentity::levelLength);
    return Records(connection.query(statementFor(pickTree), {site, lang, longestParent}), reader).below("");
} catch (...) {
    raiseFrom("getSitemap1  !");
}

std::string levelText(db::Connection& connection, const std::string& node, const Reader& reader) try {
    return Records(connection.query(statementFor(pickChildren), {node}), reader).below(node);
} catch (...) {
    raiseFrom("getSitemap1  !");
}

/// A login's own setting may stand in its session.
double loadLevel(const HostContext& host) {
    const Value own = host.session.get(sessionKey::sitemapLevels);
    return own.isEmpty() ? host.application.get(applicationKey::sitemapLevels).toNumber() : own.toNumber();
}

}  // namespace

std::string cManager::getSitemap(const std::string& site, const std::string& lang,
                                 const std::string& startNode, int flag) try {
    const std::string wantedSite = text::lowerTrim(site);
    const std::string wantedLang = text::lowerTrim(lang);
    if (!enterWebsite(connection(), author_.loginId, wantedSite + "." + wantedLang))
        return std::string(locked);
    const std::string untitled =
        text::replaceAll(text::htmlEncode(bracketedWord(label::untitled)), "#", "-@-");
    const Reader reader{author_.loginId, host_.clock.today(), untitled};
    if (flag == 0) return treeText(connection(), wantedSite, wantedLang, loadLevel(host_), reader);
    const std::string node = text::lowerTrim(startNode);
    if (node.empty()) return treeText(connection(), wantedSite, wantedLang, 0, reader);
    return levelText(connection(), node, reader);
} catch (...) {
    raiseFrom("getSitemap !");
}

}  // namespace torvex
