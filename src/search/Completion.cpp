#include "search/Completion.h"

#include <algorithm>

#include "delivery/Access.h"
#include "delivery/AccessOfMany.h"
#include "platform/DateTime.h"
#include "platform/HostContext.h"
#include "platform/db/Connection.h"
#include "platform/text/Text.h"
#include "records/DateWindow.h"
#include "records/PageKind.h"
#include "records/SystemBranch.h"
#include "search/SearchTexts.h"

namespace torvex {

namespace {

constexpr std::string_view selectTitles =
    "select pageId, nodeId, type, title, online, onlineFrom, onlineTo from TORVEX_PAGES_LIVE "
    "where lang = ? and site = ? and title >= ? and title < ? order by title, nodeId limit 200";

/// Follows every character that a title can go on with.
constexpr std::string_view behindAll = "\U0010FFFF";

constexpr std::size_t fewestCharacters = 2;
constexpr std::size_t mostCharacters = 100;
constexpr std::size_t mostCompletions = 10;

struct Titled {
    PageIdentity page;
    std::string title;
};

/// Those that show today to whoever may enter them.
std::vector<Titled> titlesFrom(HostContext& host, db::Connection& connection, std::string_view site,
                               std::string_view lang, const std::string& typed) {
    const std::string today = host.clock.today();
    const std::string end = typed + std::string(behindAll);
    std::vector<Titled> titles;
    auto rows = connection.query(selectTitles, {lang, site, typed, end});
    while (rows.next()) {
        const std::string node = rows.text("nodeId");
        if (systemBranch::hasNumber(node) || isFolder(rows.view("type"))) continue;
        if (!isOnlineOn(today, rows.number("online"), rows.view("onlineFrom"), rows.view("onlineTo")))
            continue;
        titles.push_back({{rows.number("pageId"), node}, std::string(text::trim(rows.text("title")))});
    }
    return titles;
}

}  // namespace

std::vector<Completion> completions(HostContext& host, db::Connection& connection, std::string_view site,
                                    std::string_view lang, std::string_view typed) {
    const std::string beginning = plainWords(typed);
    const std::size_t length = text::length(beginning);
    if (length < fewestCharacters || length > mostCharacters) return {};
    const auto titles = titlesFrom(host, connection, site, lang, beginning);
    std::vector<PageIdentity> pages;
    for (const Titled& titled : titles) pages.push_back(titled.page);
    AccessOfMany access(host, connection);
    access.learnPages(pages);
    std::vector<Completion> completions;
    for (const Titled& titled : titles) {
        if (completions.size() == mostCompletions) break;
        const bool isNew = completions.empty() || !text::equals(completions.back().title, titled.title);
        if (isNew && access.mayEnter(titled.page)) completions.push_back({titled.page.pageId, titled.title});
    }
    return completions;
}

}  // namespace torvex
