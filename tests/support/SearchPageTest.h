#pragma once

#include <string>

#include "delivery/HitStore.h"
#include "search/Search.h"
#include "support/ExtranetTest.h"
#include "support/FakeCatalogue.h"
#include "support/InterruptedConnection.h"
#include "templates/Markers.h"

namespace torvex::test {

/// The base of tests of searching: besides the pages of an extranet there is 20, aa.bb.09, a search page that
/// leaves every choice to the form, and a catalogue that finds what the test says.
class SearchPageTest : public ExtranetTest {
  protected:
    static constexpr const char* searchPage = "20";
    static constexpr const char* fromResults = "http://www.site.test/torvex_search/search.asp?pageId=20";

    void SetUp() override {
        ExtranetTest::SetUp();
        if (HasFatalFailure()) return;
        page("aa.bb.09").id(20).insert();
        pageGroup(20, 1);
        row("TORVEX_SEARCH",
            {{"search_pageId", 20}, {"search_catalogName", "site"}, {"search_properties", leftToForm}});
        counted_ = std::make_unique<InterruptedConnection>(connection());
    }
    void TearDown() override {
        counted_.reset();
        ExtranetTest::TearDown();
    }

    static constexpr const char* leftToForm = "- template defined -";

    /// What the search page says, in place of its form.
    void prescribe(const std::string& column, const Value& value) {
        const std::string text = value.isNumber() ? std::string() : value.toText();
        const auto bound = value.isNumber() ? db::Parameter(value.number()) : db::Parameter(text);
        connection().execute("update TORVEX_SEARCH set " + column + " = ?", {bound});
    }

    /// A row of the catalogue that stands for a page, or for a document below the folder of documents.
    catalogue::Row pageRow(const std::string& node, const std::string& title = "", int rank = 500) {
        catalogue::Row found;
        found.path = "\\install\\search\\html\\" + node.substr(3, 2) + "\\" + node.substr(0, 2) + "\\" +
                     node + ".html";
        found.filename = node + ".html";
        found.rank = rank;
        found.size = 100;
        if (!title.empty()) found.columns["doctitle"] = title;
        return found;
    }
    catalogue::Row documentRow(const std::string& path, const std::string& title = "", int rank = 500) {
        catalogue::Row found;
        found.path = "\\install\\wwwroot\\documents\\" + text::replaceAll(path, "/", "\\");
        found.filename = path.substr(path.rfind('/') + 1);
        found.rank = rank;
        found.size = 1536;
        if (!title.empty()) found.columns["doctitle"] = title;
        return found;
    }

    /// Finds as many documents, named by their number from 1.
    void documents(int count) {
        for (int i = 1; i <= count; ++i) fake.rows.push_back(documentRow("aa/" + std::to_string(i) + ".pdf"));
    }

    /// Asks with a form; `mode` isn't empty for an author's preview.
    std::string search(NamedValues form, const std::string& html = resultsTemplate,
                       const std::string& mode = "") {
        ask("", std::move(form));
        return load(html, mode);
    }
    std::string searchFor(const std::string& words, const std::string& html = resultsTemplate) {
        return search({{"search_string", words}}, html);
    }
    /// Follows a link of the search page to another page of the results.
    std::string turnTo(const std::string& page, const std::string& html = resultsTemplate) {
        ask("", {{"search_pageTo", page}}, {{"http_referer", fromResults}});
        return load(html);
    }
    std::string load(const std::string& html, const std::string& mode = "",
                     const std::string& pageIdent = searchPage) {
        DirectHits words(host.database, host.application);
        host.hits.words = &words;
        Search search(host.context(), fake.opener());
        search.connect(*counted_);
        std::string filled = search.loadResults(pageIdent, mode, html);
        error = search.search_error();
        host.hits.words = nullptr;
        return filled;
    }
    const catalogue::Query& asked() const { return fake.queries.back(); }
    /// The results of one row in this layout.
    std::string shownAs(const std::string& result, catalogue::Row row) {
        fake.rows = {std::move(row)};
        return searchFor("tax", resultsOnly(result));
    }
    /// A template with one result block and nothing around it.
    static std::string resultsOnly(const std::string& result) {
        return "<!--!torvex_application_start!--><!--!search_result_start!-->" + result +
               "<!--!search_result_end!--><!--!torvex_application_end!-->";
    }
    /// What the session keeps of the search under this key.
    std::string keptValue(const std::string& key) { return host.session.text("torvex_search_" + key); }

    /// Statements that were sent over the connection that the search was given.
    InterruptedConnection& counted() { return *counted_; }

    FakeCatalogue fake;
    std::string error;

    /// Shows a result as [link|title], and a page of them in one line.
    static constexpr const char* resultsTemplate =
        "<!--!torvex_application_start!-->"
        "<!--!search_resultRange_start!--><!--!search_resultFrom!-->-<!--!search_resultTo!-->: "
        "<!--!search_resultRange_end!-->"
        "<!--!search_result_start!-->[<!--!search_link!-->|<!--!search_title!-->]"
        "<!--!search_spacer_start!--> <!--!search_spacer_end!--><!--!search_result_end!-->"
        "<!--!search_empty_start!-->nothing<!--!search_empty_end!-->"
        "<!--!search_paging_start!--> {<!--!search_pPrevious_start!-->&lt;<!--!search_previousPage!-->"
        "<!--!search_pPrevious_end!--><!--!search_pSpacer_start!-->,<!--!search_pSpacer_end!-->"
        "<!--!search_pNext_start!--><!--!search_nextPage!-->&gt;<!--!search_pNext_end!-->}"
        "<!--!search_paging_end!-->"
        "<!--!torvex_application_end!-->";

  private:
    std::unique_ptr<InterruptedConnection> counted_;
};

/// A text without its markers.
inline std::string withoutMarkers(const std::string& html) {
    return markers::withoutMarkers(html);
}

}  // namespace torvex::test
