#include "search/designs/MovedFiles.h"

#include <set>
#include <string>
#include <vector>

#include "platform/db/Connection.h"
#include "records/TwinTables.h"
#include "search/designs/PageIndex.h"

namespace torvex {

namespace {

// "_TWIN" stands for the tables of either twin. A link without a site leads into that of its page.
constexpr std::string_view selectBodies =
    "select distinct b.pageId as pageId, b.bodyId as textId, b.bodyText as pageText, d.site as site "
    "from TORVEX_BODIES_TWIN b inner join TORVEX_PAGES_DESIGN d on d.pageId = b.pageId "
    "where b.pageId in (select pageId from TORVEX_LINKS where linkKind = ? and linkTarget = ? "
    "and linkSite in (?, ''))";
constexpr std::string_view selectMetaData =
    "select distinct m.metaData_pageId as pageId, m.metaData_id as textId, m.metaData_value as pageText, "
    "d.site as site from TORVEX_PAGES_METADATA_TWIN m "
    "inner join TORVEX_PAGES_DESIGN d on d.pageId = m.metaData_pageId "
    "where m.metaData_pageId in (select pageId from TORVEX_LINKS where linkKind = ? and linkTarget = ? "
    "and linkSite in (?, ''))";
constexpr std::string_view updateBody =
    "update TORVEX_BODIES_TWIN set bodyText = ? where pageId = ? and bodyId = ?";
constexpr std::string_view updateMetaData =
    "update TORVEX_PAGES_METADATA_TWIN set metaData_value = ? where metaData_pageId = ? and metaData_id = ?";
constexpr std::string_view updateLiveLinks =
    "update TORVEX_LINKS set linkTarget = ? where linkTwin = 'L' and linkKind = ? and linkTarget = ? "
    "and (linkSite = ? or (linkSite = '' and pageId in "
    "(select pageId from TORVEX_PAGES_DESIGN where site = ?)))";

/// A text that leads elsewhere now.
struct ChangedText {
    PageId pageId = 0;
    double textId = 0;
    std::string text;
};

class Follower {
  public:
    Follower(db::Connection& transaction, const FilePrefixes& prefixes, const MovedFile& file)
        : transaction_(transaction), prefixes_(prefixes), file_(file) {}

    void follow(std::string_view select, std::string_view update, Twin twin) {
        for (const auto& [pageId, textId, text] : changedTexts(onTwin(select, twin))) {
            transaction_.execute(onTwin(update, twin), {std::string_view(text), pageId, textId});
            pages_.insert(pageId);
        }
    }
    void renewLinks() {
        const std::string to = file_.toFolders + file_.name;
        transaction_.execute(updateLiveLinks, {to, wordOf(file_.kind), from_, file_.site, file_.site});
        const std::vector<PageId> pages(pages_.begin(), pages_.end());
        renewDesignIndex(transaction_, prefixes_, pages);
    }
    std::size_t pages() const { return pages_.size(); }

  private:
    std::vector<ChangedText> changedTexts(const std::string& select) {
        std::vector<ChangedText> texts;
        auto rows = transaction_.query(select, {wordOf(file_.kind), from_, file_.site});
        while (rows.next()) {
            const std::string before = rows.text("pageText");
            std::string after = withFileMoved(before, prefixes_, rows.text("site"), file_);
            if (after != before)
                texts.push_back({rows.number("pageId"), rows.number("textId"), std::move(after)});
        }
        return texts;
    }

    db::Connection& transaction_;
    const FilePrefixes& prefixes_;
    const MovedFile& file_;
    const std::string from_ = file_.fromFolders + file_.name;
    std::set<PageId> pages_;
};

}  // namespace

std::size_t followMovedFile(db::Connection& transaction, const FilePrefixes& prefixes,
                            const MovedFile& file) {
    Follower follower(transaction, prefixes, file);
    for (const Twin twin : {Twin::Design, Twin::Live}) {
        follower.follow(selectBodies, updateBody, twin);
        follower.follow(selectMetaData, updateMetaData, twin);
    }
    follower.renewLinks();
    return follower.pages();
}

}  // namespace torvex
