#include "modules/messageBoard/BoardPublishing.h"

#include <fmt/format.h>
#include <vector>

#include "modules/messageBoard/Board.h"
#include "platform/db/Connection.h"
#include "platform/text/Text.h"
#include "records/PageIdentity.h"

namespace torvex {

namespace {

constexpr std::string_view done;
constexpr std::string_view parentNotLive = "1";

/// A path of fewer characters has no category above it.
constexpr std::size_t shortestBelow = 3;

constexpr std::string_view selectLiveCategory =
    "select msgB_catId from TORVEX_MSGB_CATEGORIES_LIVE where msgB_site = ? and msgB_lang = ? and "
    "msgB_catId = ?";

/// What goes with a category, by its path: items before the categories that they belong to.
constexpr std::string_view tablesOfCategory[] = {"TORVEX_MSGB_ITEMS_LIVE", "TORVEX_MSGB_ITEMS_DESIGN",
                                                 "TORVEX_MSGB_CATEGORIES_LIVE",
                                                 "TORVEX_MSGB_CATEGORIES_DESIGN"};

/// Newsflashes lose the categories that are gone.
constexpr std::string_view cleanNewsflashes[] = {
    "delete from TORVEX_NEWSFLASH_CATEGORIES_LIVE where msgB_Id not in "
    "(select msgB_Id from TORVEX_MSGB_CATEGORIES_LIVE)",
    "delete from TORVEX_NEWSFLASH_CATEGORIES_DESIGN where msgB_Id not in "
    "(select msgB_Id from TORVEX_MSGB_CATEGORIES_DESIGN)",
};

constexpr std::string_view modifiedRows = "msgB_modified = 1";
constexpr std::string_view deletedRows = "msgB_deleted = 1";

/// Rows of either design table: those of a branch that are marked in some way.
struct Selection {
    std::string where;  ///< with places for `values`
    std::vector<db::Parameter> values;
};

class BoardPublishing {
  public:
    BoardPublishing(db::Connection& transaction, const BoardBranch& branch)
        : own_(transaction),
          branch_(branch),
          endOfPath_(branch.path.empty() ? "" : endOfPrefix(branch.path)) {}

    bool hasLiveParents() const {
        std::string path = branch_.path;
        while (text::length(path) >= shortestBelow) {
            path = categoryAbove(path);
            if (!own_.query(selectLiveCategory, {branch_.site, branch_.lang, path}).next()) return false;
        }
        return true;
    }

    void removeCategories() const {
        for (const std::string& path : deletedPaths()) removeBelow(path);
        for (const std::string_view statement : cleanNewsflashes) own_.execute(statement);
    }

    void removeItems() const {
        const Selection deleted = branchWhere(deletedRows);
        own_.execute(
            "delete from TORVEX_MSGB_ITEMS_LIVE where msgB_itemId in (select msgB_itemId from "
            "TORVEX_MSGB_ITEMS_DESIGN where " +
                deleted.where + ")",
            deleted.values);
        own_.execute("delete from TORVEX_MSGB_ITEMS_DESIGN where " + deleted.where, deleted.values);
    }

    void publishCategories() const {
        const Selection modified = branchWhere(modifiedRows);
        own_.execute("update TORVEX_MSGB_CATEGORIES_DESIGN set msgB_online = 1 where msgB_online = 2 and " +
                         modified.where,
                     modified.values);
        copyToLive("TORVEX_MSGB_CATEGORIES", "msgB_Id",
                   "msgB_Id, msgB_site, msgB_lang, msgB_catId, msgB_catTitle, msgB_catDesc, msgB_parent, "
                   "msgB_itemOrder, msgB_archiveAfter, msgB_archiveVisible, msgB_linkText, "
                   "msgB_imageAlignment, msgB_imageWidth, msgB_imageHeight, msgB_online, msgB_pageSize",
                   modified);
        renewNewsflashes(modified);
        markPublished("TORVEX_MSGB_CATEGORIES", modified);
    }

    void publishItems() const {
        const Selection modified = branchWhere(modifiedRows);
        own_.execute(
            "update TORVEX_MSGB_ITEMS_DESIGN set "
            "msgB_itemOnline = case when msgB_itemOnline = 2 then 1 else msgB_itemOnline end, "
            "msgB_itemNewsflash = case when msgB_itemNewsflash = 2 then 0 else msgB_itemNewsflash end "
            "where (msgB_itemOnline = 2 or msgB_itemNewsflash = 2) and " +
                modified.where,
            modified.values);
        copyToLive("TORVEX_MSGB_ITEMS", "msgB_itemId",
                   "msgB_itemId, msgB_site, msgB_lang, msgB_catId, msgB_Id, msgB_itemTitle, msgB_itemDesc, "
                   "msgB_itemLink, msgB_itemLinkText, msgB_itemImage, msgB_itemDate, msgB_onlineDate, "
                   "msgB_archiveDate, msgB_itemOnline, msgB_itemNewsflash",
                   modified);
        markPublished("TORVEX_MSGB_ITEMS", modified);
    }

  private:
    Selection branchWhere(std::string_view mark) const {
        Selection selection{fmt::format("msgB_site = ? and msgB_lang = ? and {} and ", mark),
                            {branch_.site, branch_.lang}};
        if (!branch_.withBelow) {
            selection.where += "msgB_catId = ?";
            selection.values.emplace_back(branch_.path);
        } else if (branch_.path.empty()) {
            selection.where += "msgB_catId is not null";
        } else {
            selection.where += "msgB_catId >= ? and msgB_catId < ?";
            selection.values.insert(selection.values.end(), {branch_.path, endOfPath_});
        }
        return selection;
    }

    std::vector<std::string> deletedPaths() const {
        const Selection deleted = branchWhere(deletedRows);
        std::vector<std::string> paths;
        auto rows = own_.query("select msgB_catId from TORVEX_MSGB_CATEGORIES_DESIGN where " + deleted.where +
                                   " order by msgB_catId",
                               deleted.values);
        while (rows.next()) paths.push_back(rows.text("msgB_catId"));
        return paths;
    }

    /// Every path begins with an empty one, but a category without a path has nothing below it.
    void removeBelow(const std::string& path) const {
        const std::string end = path.empty() ? std::string() : endOfPrefix(path);
        for (const std::string_view table : tablesOfCategory) {
            const std::string statement =
                fmt::format("delete from {} where msgB_site = ? and msgB_lang = ? and ", table);
            if (path.empty()) {
                own_.execute(statement + "msgB_catId = ''", {branch_.site, branch_.lang});
            } else {
                own_.execute(statement + "msgB_catId >= ? and msgB_catId < ?",
                             {branch_.site, branch_.lang, path, end});
            }
        }
    }

    /// `key` is the first of `columns`.
    void copyToLive(std::string_view table, std::string_view key, std::string_view columns,
                    const Selection& selection) const {
        own_.execute(fmt::format("delete from {0}_LIVE where {1} in (select {1} from {0}_DESIGN where {2})",
                                 table, key, selection.where),
                     selection.values);
        own_.execute(fmt::format("insert into {0}_LIVE ({1}) select {1} from {0}_DESIGN where {2}", table,
                                 columns, selection.where),
                     selection.values);
    }

    /// What a category feeds goes live with the category.
    void renewNewsflashes(const Selection& modified) const {
        const std::string chosen =
            "msgB_Id in (select msgB_Id from TORVEX_MSGB_CATEGORIES_DESIGN where " + modified.where + ")";
        own_.execute("delete from TORVEX_NEWSFLASH_CATEGORIES_LIVE where " + chosen, modified.values);
        own_.execute(
            "insert into TORVEX_NEWSFLASH_CATEGORIES_LIVE (nf_Id, msgB_Id) select nf_Id, msgB_Id "
            "from TORVEX_NEWSFLASH_CATEGORIES_DESIGN where " +
                chosen,
            modified.values);
    }

    void markPublished(std::string_view table, const Selection& modified) const {
        own_.execute(fmt::format("update {}_DESIGN set msgB_modified = 0 where {}", table, modified.where),
                     modified.values);
    }

    db::Connection& own_;
    const BoardBranch& branch_;
    const std::string endOfPath_;
};

}  // namespace

db::Outcome<std::string> publishBoard(db::Connection& transaction, const BoardBranch& branch,
                                      bool withItems) {
    const BoardPublishing publishing(transaction, branch);
    if (!publishing.hasLiveParents()) return db::refuse(std::string(parentNotLive));
    publishing.removeCategories();
    if (withItems) publishing.removeItems();
    publishing.publishCategories();
    if (withItems) publishing.publishItems();
    return db::commit(std::string(done));
}

}  // namespace torvex
