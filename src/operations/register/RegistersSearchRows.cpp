#include "accounts/AdminEntries.h"
#include "operations/register/ModuleLabels.h"
#include "operations/register/RegistersRows.h"

namespace torvex::operations {

namespace {

Right accessAtSearchPage(std::string access) {
    return {Right::Kind::AdvancedRight, std::move(access), adminEntry::search, "pageId"};
}

}  // namespace

std::vector<Row<registers>> registersSearchRows() {
    return {
        reads("getSearches", &registers::getSearches, {argument("site"), argument("lang")},
              "What the search pages of a website decide, by their nodes; the codes are those of "
              "TORVEX_SEARCH.",
              viewAccess(adminEntry::search, "site", "lang"))
            .lists({{"search_pageId", Number},
                    {"nodeId", Text},
                    {"title", Text},
                    {"search_catalogName", Text},
                    {"search_catalogLocation", Number},
                    {"search_serverName", Text},
                    {"search_webshare", Text},
                    {"search_includePages", Number},
                    {"search_includeDocuments", Number},
                    {"search_pageScopes", Text},
                    {"search_documentScopes", Text},
                    {"search_includeDocumentTypes", Number},
                    {"search_documentTypes", Text},
                    {"search_properties", Text},
                    {"search_sortOrder", Number},
                    {"search_maxResults", Number},
                    {"search_resultsPerPage", Number},
                    {"search_wordLength", Number},
                    {"search_match", Number},
                    {"search_derivation", Number},
                    {"search_security", Number}}),
        reads("getSearchWords", &registers::getSearchWords, {argument("pageId")},
              "The 500 words that were searched most from a search page, with how often.",
              accessAtSearchPage("view"))
            .lists({{"search_word", Text}, {"search_count", Number}}),
        writes(
            "renewCatalogue", &registers::renewCatalogue, {argument("task"), argument("advId", 0)},
            "Asks for the search catalogue of this server to be compared with all files (\"compare\") or "
            "made "
            "\"anew\", or for that work to \"stop\". Nobody waits for it: getCatalogue tells how far it is.",
            editAccess(adminEntry::catalogue))
            .codes({code(0, "It is asked for."),
                    refusal(-1, "No running server keeps the catalogue.", label::catalogueNotKept),
                    refusal(-2, "There is no such task.", label::noSuchChoice), notLoggedIn()}),
        writes("saveSearch", &registers::saveSearch,
               {argument("pageId"),
                argument("catalogName"),
                argument("catalogLocation"),
                argument("serverName"),
                argument("webshare"),
                argument("includePages"),
                argument("includeDocuments"),
                argument("pageScopes"),
                argument("documentScopes"),
                argument("includeDocumentTypes"),
                argument("documentTypes"),
                argument("properties"),
                argument("sortOrder"),
                argument("maxResults"),
                argument("resultsPerPage"),
                argument("wordLength"),
                argument("match"),
                argument("derivation"),
                argument("security"),
                argument("advId", 0)},
               "Makes a page a search page, or changes what it decides, at once. The codes are those of "
               "TORVEX_SEARCH; 0 leaves a choice to the form.",
               accessAtSearchPage("edit"))
            .codes({code(0, "It is saved."), recordGone(),
                    refusal(-3, "A catalogue is missing.", label::titleMissing),
                    refusal(-4, "A setting is none of its choices.", label::noSuchChoice),
                    refusal(-6, "Server or share of the remote catalogue are missing.", label::noServer),
                    notLoggedIn(), failed()}),
    };
}

}  // namespace torvex::operations
