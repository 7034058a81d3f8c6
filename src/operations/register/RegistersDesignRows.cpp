#include "accounts/AdminEntries.h"
#include "operations/register/RegistersRows.h"

namespace torvex::operations {

namespace {

/// What refusals say to people: see install/rows/08_words_design.sql.
namespace label {
using namespace torvex::operations::label;
inline constexpr CodeLabel designNameTaken{6360, "name-taken"};
inline constexpr CodeLabel designNameMissing{6361, "name-missing"};
inline constexpr CodeLabel designFileTaken{6362, "file-taken"};
inline constexpr CodeLabel noFileName{6363, "no-file-name"};
inline constexpr CodeLabel sourceMissing{6364, "source-missing"};
inline constexpr CodeLabel noSource{6365, "no-source"};
}  // namespace label

std::vector<StatusCode> with(std::vector<StatusCode> own) {
    std::vector<StatusCode> all{refusal(-1, "It is gone, or of another site or language.", label::gone),
                                refusal(-2, "Another one has this name.", label::designNameTaken),
                                refusal(-3, "A name is missing.", label::designNameMissing),
                                refusal(-4, "Another login has it open.", label::openElsewhere)};
    all.insert(all.end(), own.begin(), own.end());
    all.insert(all.end(), {notLoggedIn(), failed()});
    return all;
}

StatusCode noWebsite() {
    return refusal(-7, "There is no such site or language.", label::websiteGone);
}

std::vector<StatusCode> fileCodes() {
    return with({refusal(-5, "Another entry has this file, or a file of this name lies there.",
                         label::designFileTaken),
                 refusal(-6, "No file can have this name.", label::noFileName), noWebsite()});
}

std::vector<StatusCode> feedCodes() {
    return with({refusal(-5, "There is neither an address nor a file.", label::sourceMissing),
                 refusal(-6, "The address isn't one of the web, or the file isn't among the documents.",
                         label::noSource),
                 noWebsite()});
}

std::vector<Row<registers>> files() {
    return {
        writes("saveTemplate", &registers::saveTemplate,
               {argument("templateId"), argument("site"), argument("lang"), argument("name"),
                argument("description"), argument("file"), argument("source"), argument("system", false),
                argument("advId", 0)},
               "Saves a content template with its file, or adds one for 0, gives its number and lets it go.",
               editAccess(adminEntry::templates, "site", "lang"))
            .codes(fileCodes()),
        writes("saveBaseTemplate", &registers::saveBaseTemplate,
               {argument("baseTemplateId"), argument("site"), argument("lang"), argument("name"),
                argument("description"), argument("file"), argument("source"), argument("advId", 0)},
               "Saves a base template with its file, or adds one for 0, gives its number and lets it go.",
               editAccess(adminEntry::baseTemplates, "site", "lang"))
            .codes(fileCodes()),
        writes("saveStylesheet", &registers::saveStylesheet,
               {argument("stylesheetId"), argument("site"), argument("lang"), argument("name"),
                argument("description"), argument("file"), argument("source"), argument("advId", 0)},
               "Saves a stylesheet with its file, or adds one for 0, gives its number and lets it go.",
               editAccess(adminEntry::stylesheets, "site", "lang"))
            .codes(fileCodes()),
        reads("countLivePages", &registers::countLivePages, {argument("kind"), argument("id")},
              "For how many live pages a \"template\", \"baseTemplate\" or \"stylesheet\" is in force, their "
              "own or an ancestor's.",
              anyLogin()),
    };
}

std::vector<Row<registers>> applications() {
    return {
        writes("saveApplication", &registers::saveApplication,
               {argument("appId"), argument("name"), argument("description"), argument("urlPublic"),
                argument("urlAdmin"), argument("urlPublish"), argument("advId", 0)},
               "Saves an application, or adds one for 0, gives its number and lets it go.",
               editAccess(adminEntry::applications))
            .codes(with({})),
    };
}

std::vector<Row<registers>> feeds() {
    return {
        reads("getHTMLfeeds", &registers::getHTMLfeeds,
              {argument("site"), argument("lang"), argument("feedId", 0)},
              "The HTML feeds of a site and language with all that they are, by name, or one of them.",
              viewAccess(adminEntry::htmlFeeds, "site", "lang"))
            .lists({{"feedId", Number},
                    {"feedName", Text},
                    {"feedDescription", Text},
                    {"feedURL", Text},
                    {"feedFile", Text},
                    {"feedParameters", Text}}),
        reads("getXMLfeeds", &registers::getXMLfeeds,
              {argument("site"), argument("lang"), argument("feedId", 0)},
              "The XML feeds of a site and language with all that they are, by name, or one of them.",
              viewAccess(adminEntry::xmlFeeds, "site", "lang"))
            .lists({{"feedId", Number},
                    {"feedName", Text},
                    {"feedDescription", Text},
                    {"feedURL_XML", Text},
                    {"feedFile_XML", Text},
                    {"feedURL_XSL", Text},
                    {"feedFile_XSL", Text},
                    {"feedParameters", Text},
                    {"feedPreserveWhiteSpace", Number}}),
        writes("saveHTMLfeed", &registers::saveHTMLfeed,
               {argument("feedId"), argument("site"), argument("lang"), argument("name"),
                argument("description"), argument("url"), argument("file"), argument("parameters"),
                argument("advId", 0)},
               "Saves an HTML feed, or adds one for 0, gives its number and lets it go.",
               editAccess(adminEntry::htmlFeeds, "site", "lang"))
            .codes(feedCodes()),
        writes("saveXMLfeed", &registers::saveXMLfeed,
               {argument("feedId"), argument("site"), argument("lang"), argument("name"),
                argument("description"), argument("urlXml"), argument("fileXml"), argument("urlXsl"),
                argument("fileXsl"), argument("parameters"), argument("preserveWhiteSpace", false),
                argument("advId", 0)},
               "Saves an XML feed, or adds one for 0, gives its number and lets it go.",
               editAccess(adminEntry::xmlFeeds, "site", "lang"))
            .codes(feedCodes()),
    };
}

std::vector<Row<registers>> metaData() {
    return {
        reads("getMetaSheet", &registers::getMetaSheet,
              {argument("site"), argument("lang"), argument("tag", 0), argument("from", 0.0)},
              "What 200 pages of a design have for the meta tags of their site, inherited values included; "
              "with "
              "a tag, pages without a value for it come first.",
              designIn("site", "lang"))
            .lists({{"pageId", Number},
                    {"nodeId", Text},
                    {"title", Text},
                    {"tag", Number},
                    {"value", Text},
                    {"inherited", Number}}),
    };
}

}  // namespace

std::vector<Row<registers>> registersDesignRows() {
    return joined({files(), applications(), feeds(), metaData()});
}

}  // namespace torvex::operations
