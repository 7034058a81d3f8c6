#include "accounts/AdminEntries.h"
#include "authoring/cManager.h"
#include "operations/register/Binding.h"
#include "operations/register/ManagerRows.h"

namespace torvex::operations {

namespace {

constexpr auto isHeld = "Another login has it open.";

std::array<NamedArgument, 4> nameOfFeed() {
    return {argument("site"), argument("lang"), argument("name"), argument("feedId", 0)};
}

std::vector<Column> feedColumns() {
    return {{"feedId", Number}, {"feedName", Text}, {"feedDescription", Text}};
}

std::vector<StatusCode> codesOfNames() {
    return {code(1, "The name is taken."), code(0, "It is free.")};
}

std::vector<StatusCode> codesOfFeeds() {
    return {code("", "It is removed."), refusal(-1, "There is no such feed.", label::gone),
            refusal(-2, "A body of a page shows it.", label::usedByPages),
            refusal(-3, isHeld, label::openElsewhere), failed()};
}

std::vector<Row<cManager>> feedRows() {
    return {
        reads("checkHTMLfeed", &cManager::checkHTMLfeed, nameOfFeed(),
              "Whether another HTML feed of the site and language has a name.",
              editAccess(adminEntry::htmlFeeds, "site", "lang"))
            .codes(codesOfNames()),
        reads("checkXMLfeed", &cManager::checkXMLfeed, nameOfFeed(),
              "Whether another XML feed of the site and language has a name.",
              editAccess(adminEntry::xmlFeeds, "site", "lang"))
            .codes(codesOfNames()),
        reads("getHTMLfeedList", &cManager::getHTMLfeedList, {argument("site"), argument("lang")},
              "The HTML feeds of a site and language, by name.", anyLogin())
            .lists(feedColumns()),
        reads("getXMLfeedList", &cManager::getXMLfeedList, {argument("site"), argument("lang")},
              "The XML feeds of a site and language, by name.", anyLogin())
            .lists(feedColumns()),
        writes("deleteHTMLfeed", &cManager::deleteHTMLfeed, {argument("feedId"), argument("advId", 0)},
               "Removes an HTML feed that no body shows.", editAccess(adminEntry::htmlFeeds))
            .codes(codesOfFeeds()),
        writes("deleteXMLfeed", &cManager::deleteXMLfeed, {argument("feedId"), argument("advId", 0)},
               "Removes an XML feed that no body shows.", editAccess(adminEntry::xmlFeeds))
            .codes(codesOfFeeds()),
    };
}

std::vector<Row<cManager>> metaTagRows() {
    return {
        reads("checkMetadata", &cManager::checkMetadata,
              {argument("site"), argument("metaDataId"), argument("name")},
              "Whether another meta tag of the site has a name.", editAccess(adminEntry::metadata, "site"))
            .codes(codesOfNames()),
        reads("getMetaTags", &cManager::getMetaTags, {argument("site")}, "The meta tags of a site, by name.",
              anyLogin())
            .lists({{"metaData_id", Number}, {"metaData_name", Text}, {"metaData_description", Text}}),
        reads("getMetaTagId", &cManager::getMetaTagId, {argument("site"), argument("metaTagName")},
              "The number of a site's meta tag.", anyLogin())
            .codes({code(0, "There is no such tag.")}),
        reads("getMetaTagName", &cManager::getMetaTagName, {argument("metaTagId")}, "The name of a meta tag.",
              anyLogin()),
        writes("saveMetaTag", &cManager::saveMetaTag,
               {argument("site"), argument("metaTagName"), argument("metaTagDescription")},
               "Describes a meta tag of a site, and makes it if it isn't there.",
               editAccess(adminEntry::metadata, "site")),
        writes("deleteMetaTag", &cManager::deleteMetaTag,
               {argument("site"), argument("metaTagIdent"), argument("advId", 0)},
               "Removes a meta tag of a site, by its number or name, with what pages have for it.",
               editAccess(adminEntry::metadata, "site"))
            .codes({code("", "It is removed."), refusal(-1, "The site has no such tag.", label::gone),
                    refusal(-3, isHeld, label::openElsewhere), failed()}),
    };
}

std::vector<Row<cManager>> metaDataRows() {
    return {
        writes("saveMetaData", &cManager::saveMetaData,
               {argument("pageIdent"), argument("metaIdent"), argument("metaDataValue"),
                argument("inherited", false)},
               "Sets what a page of the design has for a meta tag, given by number or name; an empty value "
               "that isn't inherited takes it away.",
               editRight("edit", "pageIdent")),
        reads("getMetaData", &cManager::getMetaData, {argument("pageIdent"), argument("mode", "L")},
              "The meta tags of a page's site with the values of the page.", designOf("pageIdent", "mode"))
            .lists({{"metaData_id", Number},
                    {"metaData_name", Text},
                    {"metaData_value", Text},
                    {"metaData_inherited", Number}}),
        reads("getMetaDataHTML", &cManager::getMetaDataHTML, {argument("pageIdent")},
              "The meta data of a live page as lines for its head.", anyLogin()),
    };
}

std::vector<Row<cManager>> groupRows() {
    return {
        reads("getGroupName", &cManager::getGroupName, {argument("groupId")}, "The name of a group.",
              anyLogin()),
        reads("getGroupDescription", &cManager::getGroupDescription, {argument("groupId")},
              "The description of a group.", anyLogin()),
        reads("getGroupId", &cManager::getGroupId, {argument("groupName")}, "The number of a group.",
              anyLogin())
            .codes({code(0, "There is no group of that name, or it is the one that inherits.")}),
        reads("getGroupEntryPage", &cManager::getGroupEntryPage, {argument("groupId")},
              "The page that members of a group come to when they log in.", viewAccess(adminEntry::groups))
            .codes({code(-1, "It has none."), code(0, "There is no such group.")}),
        reads("getGroupExitPage", &cManager::getGroupExitPage, {argument("groupId")},
              "The page that members of a group come to when they log out.", viewAccess(adminEntry::groups))
            .codes({code(-1, "It has none."), code(0, "There is no such group.")}),
        writes("deleteGroup", &cManager::deleteGroup, {argument("groupId"), argument("advId", 0)},
               "Removes a group from all that it guards, with its memberships.",
               editAccess(adminEntry::groups))
            .codes({code(0, "It is removed."), refusal(1, "Nobody is logged in.", label::loginLost),
                    refusal(2, "There is no such group, or another login has it open.", label::goneOrOpen),
                    refusal(99, "It failed; nothing was changed.", label::failed)}),
    };
}

std::vector<Row<cManager>> userRows() {
    return {
        reads("getUserFullname", &cManager::getUserFullname, {argument("userId")},
              "The last and first name of a user, or a word in brackets for one who is gone.",
              viewAccess(adminEntry::users)),
        reads("getUserGroups", &cManager::getUserGroups, {argument("userId")},
              "The groups, with 1 where the user is a member.", viewAccess(adminEntry::users))
            .lists({{"groupId", Number}, {"name", Text}, {"member", Number}}),
        writes("deleteUser", &cManager::deleteUser, {argument("userId"), argument("advId", 0)},
               "Removes a user with the memberships.", editAccess(adminEntry::users))
            .codes({code("", "It is removed."), notLoggedIn(),
                    refusal(-1, "The user has no name.", label::gone),
                    refusal(-3, "There is no such user, or another login has it open.", label::goneOrOpen),
                    failed()}),
    };
}

}  // namespace

std::vector<Row<cManager>> managerRecordRows() {
    return joined({feedRows(), metaTagRows(), metaDataRows(), groupRows(), userRows()});
}

}  // namespace torvex::operations
