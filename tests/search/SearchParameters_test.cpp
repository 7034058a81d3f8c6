#include "search/SearchParameters.h"

#include <gtest/gtest.h>

#include "search/SearchError.h"
#include "search/SearchForm.h"
#include "support/SearchPageTest.h"

namespace torvex::test {
namespace {

class SearchParametersTest : public SearchPageTest {
  protected:
    SearchParameters resolve(NamedValues form = {{"search_string", "tax"}}, bool isPreview = false) {
        ask("", std::move(form));
        return searchParameters(host.context(), connection(), {20, "aa.bb.09"}, isPreview);
    }
    SearchParameters resolveField(const std::string& field, const std::string& value) {
        return resolve({{"search_string", "tax"}, {field, value}});
    }
    std::string refusal(NamedValues form = {{"search_string", "tax"}}) {
        try {
            resolve(std::move(form));
            return "";
        } catch (const SearchError& thrown) {
            return thrown.what();
        }
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, SearchParametersTest, bothEngines(), engineName);

// ---- A new search or a further page ----

TEST_P(SearchParametersTest, AFurtherPageIsAskedForByTheSearchPageAlone) {
    struct Case {
        const char* query;
        NamedValues form;
        const char* referer;
        bool isNew;
    };
    for (const auto& [query, form, referer, isNew] :
         {Case{"", {{"search_pageTo", "2"}}, fromResults, false},
          Case{"search_pageTo=2", {}, "http://www.site.test/Torvex_Search/SEARCH.asp", false},
          Case{"", {{"search_pageTo", "  "}}, fromResults, true}, Case{"", {}, fromResults, true},
          Case{"", {{"search_pageTo", "2"}}, "http://www.site.test/tvx.asp?pageId=20", true},
          Case{"", {{"search_pageTo", "2"}}, "", true}}) {
        ask(query, form, {{"http_referer", referer}});
        EXPECT_EQ(isNewSearch(host.context()), isNew) << query << " from " << referer;
    }
}

// ---- What must be there ----

TEST_P(SearchParametersTest, APageWithoutSettingsHasNoParameters) {
    connection().execute("delete from TORVEX_SEARCH");
    EXPECT_EQ(refusal(), "Search parameters not found !");
}

TEST_P(SearchParametersTest, TheCatalogueMustBeNamed) {
    for (const auto* name : {"", "  "}) {
        prescribe("search_catalogName", name);
        EXPECT_EQ(refusal({}), "Missing catalog name !");
    }
    connection().execute("update TORVEX_SEARCH set search_catalogName = null");
    EXPECT_EQ(refusal({}), "Missing catalog name !");
}

TEST_P(SearchParametersTest, TheFirstThingMissingIsTold) {
    prescribe("search_catalogLocation", 1);
    EXPECT_EQ(refusal({}), "Missing servername and/or webshare !");
    prescribe("search_catalogLocation", 0);
    EXPECT_EQ(refusal({}), "Search string is empty !");
    EXPECT_EQ(refusal({{"search_pageScopes", "none"}, {"search_documentScopes", "none"}}),
              "Search string is empty !");
    EXPECT_EQ(
        refusal({{"search_string", "tax"}, {"search_pageScopes", "none"}, {"search_documentScopes", "none"}}),
        "Missing search scopes !");
}

// ---- Where the catalogue is ----

TEST_P(SearchParametersTest, ALocalCatalogueHasTheInstallation) {
    prescribe("search_catalogName", " Site ");
    const SearchParameters search = resolve();
    EXPECT_EQ(search.catalog, "site");
    EXPECT_EQ(search.rootPath, "\\install\\");
    EXPECT_FALSE(search.isRemote);
}

TEST_P(SearchParametersTest, ARemoteOneHasTheShareOfItsServer) {
    prescribe("search_catalogLocation", 1);
    prescribe("search_serverName", " Box:4711 ");
    for (const auto* share : {"Web/Site", " \\\\web\\site ", "//web/site/", "web\\site\\"}) {
        prescribe("search_webshare", share);
        const SearchParameters search = resolve();
        EXPECT_EQ(search.catalog, "query://box:4711/site");
        EXPECT_EQ(search.rootPath, "\\\\web\\site\\");
        EXPECT_TRUE(search.isRemote);
    }
}

TEST_P(SearchParametersTest, ARemoteCatalogueNeedsServerAndShare) {
    prescribe("search_catalogLocation", 1);
    prescribe("search_serverName", "box");
    EXPECT_EQ(refusal(), "Missing servername and/or webshare !");
    prescribe("search_webshare", "share");
    prescribe("search_serverName", " ");
    EXPECT_EQ(refusal(), "Missing servername and/or webshare !");
}

// ---- Words ----

TEST_P(SearchParametersTest, WordsAreTidied) {
    EXPECT_EQ(resolve({{"search_string", "  Tax,rates,,  of   \"2026\" "}}).words, "Tax rates of \"2026\"");
    for (const auto* empty : {"", "  ", ",", ", ,,"})
        EXPECT_EQ(refusal({{"search_string", empty}}), "Search string is empty !");
}

TEST_P(SearchParametersTest, LongWordsOfAFormAreCutByCharacters) {
    const std::string letter = "é";
    std::string words;
    for (int i = 0; i < 300; ++i) words += letter;
    EXPECT_EQ(text::length(resolve({{"search_string", words}}).words), 250U);
    host.session.set("X_torvex_search_string", words);
    EXPECT_EQ(text::length(resolve().words), 300U);
}

TEST_P(SearchParametersTest, NulAndBrokenTextAreNoWords) {
    EXPECT_EQ(resolve({{"search_string", std::string("a\0b", 3)}}).words, "a b");
    EXPECT_EQ(refusal({{"search_string", "\xFF\xFE"}}), "Search string is empty !");
}

// ---- Limits ----

TEST_P(SearchParametersTest, LimitsThatArePrescribedHold) {
    prescribe("search_maxResults", 7);
    prescribe("search_resultsPerPage", 3);
    const SearchParameters search =
        resolve({{"search_string", "tax"}, {"search_maxResults", "50"}, {"search_resultsPerPage", "40"}});
    EXPECT_EQ(search.maxResults, 7);
    EXPECT_EQ(search.resultsPerPage, 3);
}

TEST_P(SearchParametersTest, LimitsOfTheFormOtherwise) {
    for (const int stored : {0, -5}) {
        prescribe("search_maxResults", stored);
        EXPECT_EQ(resolveField("search_maxResults", " 5 0 ").maxResults, 50);
        for (const auto* bad : {"", "0", "-3", "many", "99999", "1e3", "0.4"})
            EXPECT_EQ(resolveField("search_maxResults", bad).maxResults, 100) << bad;
    }
    for (const int stored : {0, -2}) {
        prescribe("search_resultsPerPage", stored);
        EXPECT_EQ(resolveField("search_resultsPerPage", "5").resultsPerPage, 5);
        EXPECT_EQ(resolveField("search_resultsPerPage", "All").resultsPerPage, 100);
        for (const auto* bad : {"", "0", "-1", "few", "40000"})
            EXPECT_EQ(resolveField("search_resultsPerPage", bad).resultsPerPage, 20) << bad;
    }
}

TEST_P(SearchParametersTest, AllResultsMayStandOnOnePage) {
    prescribe("search_resultsPerPage", -1);
    prescribe("search_maxResults", 42);
    EXPECT_EQ(resolveField("search_resultsPerPage", "5").resultsPerPage, 42);
}

TEST_P(SearchParametersTest, TheShortestWordIsANumberOfAtLeastOne) {
    prescribe("search_wordLength", 3);
    EXPECT_EQ(resolveField("search_wordLength", "5").wordLength, "3");
    prescribe("search_wordLength", 0);
    EXPECT_EQ(resolveField("search_wordLength", "5").wordLength, "5");
    for (const auto* bad : {"", "0", "-1", "long"})
        EXPECT_EQ(resolveField("search_wordLength", bad).wordLength, "1") << bad;
}

// ---- How words match ----

TEST_P(SearchParametersTest, TheMatchIsPrescribedOrToldByTheForm) {
    using M = SearchMatch;
    for (const auto& [stored, match] : {std::pair{1, M::SomeWords}, {2, M::AllWords}, {3, M::Phrase}}) {
        prescribe("search_match", stored);
        EXPECT_EQ(resolveField("search_match", "phrase words").match, match);
    }
    for (const int stored : {0, 9}) {
        prescribe("search_match", stored);
        for (const auto& [given, match] : {std::pair{"", M::SomeWords},
                                           {"Some Words", M::SomeWords},
                                           {"ALL", M::AllWords},
                                           {"exact phrase", M::Phrase},
                                           {"nonsense", M::SomeWords},
                                           {"some of all", M::SomeWords}})
            EXPECT_EQ(resolveField("search_match", given).match, match) << given;
    }
}

TEST_P(SearchParametersTest, SoIsTheDerivation) {
    using D = SearchDerivation;
    for (const auto& [stored, derivation] : {std::pair{1, D::None}, {2, D::Prefix}, {3, D::Stemming}}) {
        prescribe("search_derivation", stored);
        EXPECT_EQ(resolveField("search_derivation", "prefix").derivation, derivation);
    }
    prescribe("search_derivation", 0);
    for (const auto& [given, derivation] : {std::pair{"", D::None},
                                            {"none", D::None},
                                            {"Prefixes", D::Prefix},
                                            {"stem", D::None},
                                            {"by stemming", D::Stemming},
                                            {"x", D::None}})
        EXPECT_EQ(resolveField("search_derivation", given).derivation, derivation) << given;
}

TEST_P(SearchParametersTest, TheOrderIsACommaList) {
    prescribe("search_sortOrder", 1);
    EXPECT_EQ(resolveField("search_sortOrder", "title").sortOrder, "rank,title");
    prescribe("search_sortOrder", 2);
    EXPECT_EQ(resolve().sortOrder, "title");
    prescribe("search_sortOrder", 0);
    EXPECT_EQ(resolve().sortOrder, "rank,title");
    EXPECT_EQ(resolveField("search_sortOrder", "Title; Rank ,author").sortOrder, "title,rank,author");
}

// ---- Properties ----

TEST_P(SearchParametersTest, PropertiesGetTheNamesOfTheCatalogue) {
    for (const auto& [stored, properties] : std::vector<std::pair<std::string, std::string>>{
             {"", "all,filename"},
             {" , ", "all,filename"},
             {"ALL", "ALL,filename"},
             {"filename,all", "filename,all"},
             {"contents", "contents"},
             {"Title,keywords, AUTHOR ,subject", "doctitle,dockeywords,docauthor,docsubject"},
             {"title,title", "doctitle,doctitle"},
             {"comments,company", "comments,doccomments,company,doccompany"}}) {
        prescribe("search_properties", stored);
        EXPECT_EQ(resolveField("search_properties", "contents").properties, properties) << stored;
    }
}

TEST_P(SearchParametersTest, PropertiesMayBeLeftToTheForm) {
    prescribe("search_properties", " - Template Defined - ");
    EXPECT_EQ(resolveField("search_properties", "Title, colour of petals").properties,
              "doctitle,colourofpetals");
    EXPECT_EQ(resolve().properties, "all,filename");
}

TEST_P(SearchParametersTest, ListsOfAFormHoldNoSigns) {
    EXPECT_EQ(resolveField("search_properties", "all x) OR (@contents").properties, "allxorcontents");
    EXPECT_EQ(resolveField("search_documentTypes", "pdf OR #filename=*").documentTypes, "pdforfilename=");
    EXPECT_EQ(resolveField("search_pageScopes", "aa.*) or (\"x").pageScopes, "aa.orx");
}

// ---- Scopes and types ----

TEST_P(SearchParametersTest, ScopesArePrescribedByTheirCodes) {
    prescribe("search_pageScopes", " aa.bb.01++ ,, aa.bb.02");
    prescribe("search_documentScopes", "aa/001+,aa");
    for (const auto& [stored, scopes] : std::vector<std::pair<int, std::string>>{
             {2, "allsites"}, {3, "currentsite"}, {4, "aa.bb.01++,aa.bb.02"}}) {
        prescribe("search_includePages", stored);
        EXPECT_EQ(resolveField("search_pageScopes", "none").pageScopes, scopes);
    }
    prescribe("search_includePages", 1);
    prescribe("search_includeDocuments", 4);
    const SearchParameters search = resolve();
    EXPECT_EQ(search.pageScopes, "none");
    EXPECT_EQ(search.documentScopes, "aa\\001+,aa");
}

TEST_P(SearchParametersTest, OrToldByTheForm) {
    for (const auto& [given, scopes] :
         std::vector<std::pair<std::string, std::string>>{{"", "allsites"},
                                                          {" , ", "allsites"},
                                                          {"None", "none"},
                                                          {"all sites", "allsites"},
                                                          {"the CURRENT one", "currentsite"},
                                                          {"aa/001+,aa/002", "aa\\001+,aa\\002"}}) {
        EXPECT_EQ(resolveField("search_documentScopes", given).documentScopes, scopes) << given;
        EXPECT_EQ(resolveField("search_pageScopes", given).pageScopes, scopes) << given;
    }
}

TEST_P(SearchParametersTest, TypesOfDocumentsAreAList) {
    prescribe("search_includeDocumentTypes", 1);
    EXPECT_EQ(resolveField("search_documentTypes", "pdf").documentTypes, "alltypes");
    prescribe("search_includeDocumentTypes", 2);
    for (const auto& [stored, types] : std::vector<std::pair<std::string, std::string>>{
             {"PDF, .doc", "PDF,doc"}, {"", "alltypes"}, {"All. Types", "alltypes"}, {",", "alltypes"}}) {
        prescribe("search_documentTypes", stored);
        EXPECT_EQ(resolve().documentTypes, types) << stored;
    }
    prescribe("search_includeDocumentTypes", 0);
    EXPECT_EQ(resolveField("search_documentTypes", ".pdf, .txt").documentTypes, "pdf,txt");
    EXPECT_EQ(resolveField("search_documentTypes", "- all types -").documentTypes, "alltypes");
}

TEST_P(SearchParametersTest, TypesCountOnlyWhenDocumentsAreSearched) {
    prescribe("search_includeDocuments", 1);
    prescribe("search_includeDocumentTypes", 2);
    prescribe("search_documentTypes", "pdf");
    EXPECT_EQ(resolve().documentTypes, "");
}

TEST_P(SearchParametersTest, CodesThatNoFormHasLeaveTheChoiceToIt) {
    for (const auto* column : {"search_catalogLocation", "search_includePages", "search_includeDocuments",
                               "search_includeDocumentTypes", "search_sortOrder", "search_match",
                               "search_derivation", "search_security"})
        prescribe(column, 4711);
    for (const auto* column : {"search_maxResults", "search_resultsPerPage", "search_wordLength"})
        prescribe(column, 99999999);
    const SearchParameters search = resolveField("search_match", "all");
    EXPECT_EQ(search.match, SearchMatch::AllWords);
    EXPECT_EQ(search.pageScopes, "allsites");
    EXPECT_EQ(search.maxResults, 100);
    EXPECT_EQ(search.resultsPerPage, 20);
    EXPECT_TRUE(search.security.forPages);
}

// ---- Security ----

TEST_P(SearchParametersTest, RightsAreTestedWhereGroupsGuardPages) {
    EXPECT_TRUE(resolve().security.forPages);
    EXPECT_FALSE(resolve().security.forDocuments);
    connection().execute("update TORVEX_PAGES_GROUPS_LIVE set groupId = 1");
    EXPECT_FALSE(resolve().security.isOn());
}

TEST_P(SearchParametersTest, AndWhereTheyGuardFoldersOfDocuments) {
    row("TORVEX_FOLDERS_GROUPS",
        {{"fld_type", "img"}, {"fld_site", "aa"}, {"fld_id", "001"}, {"groupId", 2}});
    host.application.set("torvex_doc_security", true);
    EXPECT_FALSE(resolve().security.forDocuments);
    row("TORVEX_FOLDERS_GROUPS",
        {{"fld_type", "doc"}, {"fld_site", "aa"}, {"fld_id", "001"}, {"groupId", 1}});
    EXPECT_FALSE(resolve().security.forDocuments);
    row("TORVEX_FOLDERS_GROUPS",
        {{"fld_type", "doc"}, {"fld_site", "aa"}, {"fld_id", "001"}, {"groupId", 2}});
    EXPECT_TRUE(resolve().security.forDocuments);
    host.application.set("torvex_doc_security", false);
    EXPECT_FALSE(resolve().security.forDocuments);
}

TEST_P(SearchParametersTest, RightsArePrescribedOrLeftToTheForm) {
    prescribe("search_security", 2);
    EXPECT_FALSE(resolveField("search_security", "true").security.isOn());
    prescribe("search_security", 1);
    EXPECT_TRUE(resolveField("search_security", "false").security.isOn());
    prescribe("search_security", 0);
    EXPECT_FALSE(resolveField("search_security", " FALSE ").security.isOn());
    EXPECT_TRUE(resolveField("search_security", "no").security.isOn());
    EXPECT_TRUE(resolve().security.isOn());
}

TEST_P(SearchParametersTest, APreviewAndASiteWithoutGroupsTestNone) {
    prescribe("search_security", 1);
    EXPECT_FALSE(resolve({{"search_string", "tax"}}, true).security.isOn());
    host.application.set("torvex_extranet", false);
    EXPECT_FALSE(resolve().security.isOn());
    host.application.set("torvex_extranet", true);
    connection().execute("delete from TORVEX_USERGROUPS");
    EXPECT_FALSE(resolve().security.isOn());
}

// ---- A form from an earlier request ----

TEST_P(SearchParametersTest, AFormThatWasKeptCountsInPlaceOfThePresentOne) {
    ask("", {{"search_string", "kept words"},
             {"search_match", "all"},
             {"search_maxResults", "11"},
             {"search_pageScopes", "current"}});
    keepSearchForm(host.context());
    EXPECT_EQ(host.session.text("X_torvex_search_string"), "kept words");
    EXPECT_EQ(host.session.text("X_torvex_search_maxResults"), "11");
    const SearchParameters search = resolve({{"search_string", "other"}, {"search_match", "phrase"}});
    EXPECT_EQ(search.words, "kept words");
    EXPECT_EQ(search.match, SearchMatch::AllWords);
    EXPECT_EQ(search.maxResults, 11);
    EXPECT_EQ(search.pageScopes, "currentsite");
}

TEST_P(SearchParametersTest, ItIsUsedUpByOneSearch) {
    ask("", {{"search_string", "kept"}});
    keepSearchForm(host.context());
    resolve();
    EXPECT_EQ(host.session.text("X_torvex_search_string"), "");
    EXPECT_EQ(resolve({{"search_string", "other"}}).words, "other");
    keepSearchForm(host.context());
    connection().execute("delete from TORVEX_SEARCH");
    EXPECT_NE(refusal(), "");
    EXPECT_EQ(host.session.text("X_torvex_search_string"), "");
}

TEST_P(SearchParametersTest, AllTwelveFieldsAreKept) {
    const std::vector<std::string> fields = {"string",     "maxResults", "resultsPerPage", "security",
                                             "wordLength", "match",      "derivation",     "sortOrder",
                                             "properties", "pageScopes", "documentScopes", "documentTypes"};
    NamedValues form;
    for (const auto& field : fields) form.emplace_back("search_" + field, "of " + field);
    ask("", form);
    Search(host.context(), fake.opener()).saveSearchFormParameters();
    for (const auto& field : fields) EXPECT_EQ(host.session.text("X_torvex_search_" + field), "of " + field);
}

}  // namespace
}  // namespace torvex::test
