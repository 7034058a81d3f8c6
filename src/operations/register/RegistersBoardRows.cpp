#include "accounts/AdminEntries.h"
#include "operations/register/ModuleLabels.h"
#include "operations/register/RegistersRows.h"

namespace torvex::operations {

namespace {

StatusCode noSuchChoice(std::string_view meaning) {
    return refusal(-4, std::string(meaning), label::noSuchChoice);
}

std::vector<Row<registers>> boardLists() {
    const Right look = viewAccess(adminEntry::messageBoard, "site", "lang");
    return {
        reads("getCategories", &registers::getCategories, {argument("site"), argument("lang")},
              "The categories of a website's message board by their paths, with all that the design says of "
              "them.",
              look)
            .lists({{"msgB_Id", Number},
                    {"msgB_catId", Text},
                    {"msgB_parent", Text},
                    {"msgB_catTitle", Text},
                    {"msgB_catDesc", Text},
                    {"msgB_itemOrder", Number},
                    {"msgB_archiveAfter", Number},
                    {"msgB_archiveVisible", Number},
                    {"msgB_linkText", Text},
                    {"msgB_imageAlignment", Number},
                    {"msgB_imageWidth", Number},
                    {"msgB_imageHeight", Number},
                    {"msgB_online", Number},
                    {"msgB_pageSize", Number},
                    {"msgB_deleted", Number},
                    {"msgB_modified", Number},
                    {"isLive", Number},
                    {"items", Number},
                    {"waiting", Number}}),
        reads(
            "getItems", &registers::getItems,
            {argument("site"), argument("lang"), argument("category"), argument("from", 0.0)},
            "The items of a category, the latest first, 500 at once, with all that the design says of them.",
            look)
            .lists({{"msgB_itemId", Number},
                    {"msgB_itemTitle", Text},
                    {"msgB_itemDesc", Text},
                    {"msgB_itemLink", Text},
                    {"msgB_itemLinkText", Text},
                    {"msgB_itemImage", Text},
                    {"msgB_itemDate", Text},
                    {"msgB_onlineDate", Text},
                    {"msgB_archiveDate", Text},
                    {"msgB_itemOnline", Number},
                    {"msgB_itemNewsflash", Number},
                    {"msgB_deleted", Number},
                    {"msgB_modified", Number},
                    {"isLive", Number}}),
    };
}

std::vector<Row<registers>> boardChanges() {
    const Right change = editAccess(adminEntry::messageBoard, "site", "lang");
    return {
        writes("saveCategory", &registers::saveCategory,
               {argument("category"), argument("site"), argument("lang"), argument("parent"),
                argument("title"), argument("description"), argument("itemOrder"), argument("archiveAfter"),
                argument("archiveVisible"), argument("linkText"), argument("imageAlignment"),
                argument("imageWidth"), argument("imageHeight"), argument("online"), argument("pageSize"),
                argument("advId", 0)},
               "Saves a category of the message board in the design, or adds one for 0 below the path of "
               "another, and gives its number.",
               change)
            .codes({recordGone(),
                    refusal(-2, "There is no such website, or no category to stand below.",
                            label::noSuchCategory),
                    nameIsMissing(), noSuchChoice("There is no such order or alignment."),
                    refusal(-9, "No place is left there.", label::noCategoryPlace), notLoggedIn(), failed()}),
        writes("saveItem", &registers::saveItem,
               {argument("itemId"), argument("site"), argument("lang"), argument("category"),
                argument("title"), argument("text"), argument("link"), argument("linkText"),
                argument("image"), argument("date"), argument("onlineDate"), argument("archiveDate"),
                argument("online"), argument("newsflash"), argument("advId", 0)},
               "Saves an item of the message board in the design, or adds one for 0, and gives its number. "
               "Days are \"yyyymmdd\"; an empty one is today, that of the archive never.",
               change)
            .codes({recordGone(), refusal(-2, "There is no such category.", label::noSuchCategory),
                    nameIsMissing(), noSuchChoice("There is no such day."), notLoggedIn(), failed()}),
        writes(
            "markDeleted", &registers::markDeleted,
            {argument("kind"), argument("id"), argument("site"), argument("lang"), argument("marked"),
             argument("advId", 0)},
            "Lets a \"category\" with all below it, or an \"item\", go with the board's next publishing, or "
            "takes that back.",
            change)
            .codes({code(0, "It is done."), recordGone(), notLoggedIn(), failed()}),
    };
}

std::vector<Row<registers>> newsflashes() {
    const Right look = viewAccess(adminEntry::newsflash, "site", "lang");
    const Right change = editAccess(adminEntry::newsflash, "site", "lang");
    const auto noCategory = [] { return refusal(-2, "There is no such category.", label::noSuchCategory); };
    return {
        reads("getNewsflashes", &registers::getNewsflashes, {argument("site"), argument("lang")},
              "The newsflashes of a website by number, with all that the design says of them.", look)
            .lists({{"nf_Id", Number},
                    {"id", Number},
                    {"title", Text},
                    {"itemOrder", Number},
                    {"itemLength", Number},
                    {"numberOfItems", Number},
                    {"mode", Text},
                    {"templateId", Number},
                    {"tpl_name", Text},
                    {"imageAlignment", Number},
                    {"imageWidth", Number},
                    {"imageHeight", Number},
                    {"deleted", Number},
                    {"modified", Number},
                    {"isLive", Number}}),
        reads("getNewsflashCategories", &registers::getNewsflashCategories,
              {argument("site"), argument("lang")},
              "Which categories of the message board feed which newsflash, in the design and for visitors.",
              look)
            .lists({{"nf_Id", Number},
                    {"msgB_Id", Number},
                    {"msgB_catTitle", Text},
                    {"inDesign", Number},
                    {"isLive", Number}}),
        writes(
            "saveNewsflash", &registers::saveNewsflash,
            {argument("nfId"), argument("site"), argument("lang"), argument("number"), argument("title"),
             argument("itemOrder"), argument("itemLength"), argument("numberOfItems"), argument("mode"),
             argument("templateId"), argument("imageAlignment"), argument("imageWidth"),
             argument("imageHeight"), argument("marked", false), argument("advId", 0)},
            "Saves a newsflash in the design, or adds one for 0, and gives its key; one that is marked goes "
            "with the next publishing.",
            change)
            .codes({recordGone(), noWebsite(), nameIsMissing(),
                    noSuchChoice("There is no such number, order, alignment or mode."),
                    refusal(-5, "That is no template of the website for modules.", label::noSystemTemplate),
                    refusal(-7, "The number is another newsflash's.", label::numberTaken),
                    refusal(-8, "The title is another newsflash's.", label::titleTaken), notLoggedIn(),
                    failed()}),
        writes("addCategory", &registers::addCategory,
               {argument("nfId"), argument("site"), argument("lang"), argument("category"),
                argument("advId", 0)},
               "Lets a category of the message board feed a newsflash, for visitors from the category's next "
               "publishing on.",
               change)
            .codes({code(0, "It does."), recordGone(), noCategory(), notLoggedIn(), failed()}),
        writes("removeCategory", &registers::removeCategory,
               {argument("nfId"), argument("site"), argument("lang"), argument("category"),
                argument("advId", 0)},
               "Lets a category feed a newsflash no longer, for visitors from the category's next publishing "
               "on.",
               change)
            .codes({code(0, "It doesn't."), recordGone(), noCategory(), notLoggedIn(), failed()}),
    };
}

}  // namespace

std::vector<Row<registers>> registersBoardRows() {
    return joined({boardLists(), boardChanges(), newsflashes()});
}

}  // namespace torvex::operations
