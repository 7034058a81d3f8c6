#include "search/SearchSession.h"

#include <algorithm>
#include <array>

#include "platform/ShortInteger.h"

namespace torvex {

namespace {

namespace key {
constexpr std::string_view words = "torvex_search_string";
constexpr std::string_view maxResults = "torvex_search_maxResults";
constexpr std::string_view resultsPerPage = "torvex_search_resultsPerPage";
constexpr std::string_view security = "torvex_search_security";
constexpr std::string_view pageSecurity = "torvex_search_pageSecurity";
constexpr std::string_view documentSecurity = "torvex_search_docSecurity";
constexpr std::string_view query = "torvex_search_query";
constexpr std::string_view recordset = "torvex_search_recordset";
constexpr std::string_view bookmark = "torvex_search_bookmark";
constexpr std::string_view rankBase = "torvex_search_rankBase";
}  // namespace key

constexpr std::array valueKeys = {key::words,    key::maxResults,   key::resultsPerPage,
                                  key::security, key::pageSecurity, key::documentSecurity};

std::string bookmarkKey(const std::string& page) {
    return std::string(key::bookmark) + page;
}

}  // namespace

void SearchSession::begin(const SearchParameters& search) {
    clear();
    session_.set(key::words, search.words);
    session_.set(key::maxResults, search.maxResults);
    session_.set(key::resultsPerPage, search.resultsPerPage);
    session_.set(key::security, search.security.isOn());
    session_.set(key::pageSecurity, search.security.forPages);
    session_.set(key::documentSecurity, search.security.forDocuments);
}

std::optional<RunningSearch> SearchSession::resume(const std::string& pageTo) const {
    const bool hasValues = std::none_of(valueKeys.begin(), valueKeys.end(),
                                        [this](auto key) { return session_.get(key).isEmpty(); });
    if (!hasValues || session_.text(key::words).empty() || pageTo.empty()) return std::nullopt;
    if (!bookmark("1") || !bookmark(pageTo)) return std::nullopt;
    RunningSearch running{std::dynamic_pointer_cast<const KeptQuery>(session_.object(key::query)),
                          std::dynamic_pointer_cast<const KeptResults>(session_.object(key::recordset))};
    if (!running.query || !running.results) return std::nullopt;
    return running;
}

void SearchSession::keep(const RunningSearch& running) {
    session_.setObject(key::query, running.query);
    session_.setObject(key::recordset, running.results);
}

std::string SearchSession::words() const {
    return session_.text(key::words);
}

SearchParameters SearchSession::values(const SearchParameters& kept) const {
    SearchParameters search = kept;
    search.words = words();
    search.maxResults = shortInteger(session_.number(key::maxResults)).value_or(0);
    search.resultsPerPage = shortInteger(session_.number(key::resultsPerPage)).value_or(0);
    search.security = {.forPages = session_.isTrue(key::pageSecurity),
                       .forDocuments = session_.isTrue(key::documentSecurity)};
    return search;
}

void SearchSession::clear() {
    for (const auto key : valueKeys) {
        if (!session_.get(key).isEmpty()) session_.set(key, Value());
    }
    session_.setObject(key::query, nullptr);
    session_.setObject(key::recordset, nullptr);
    for (int page = 1; bookmark(std::to_string(page)); ++page)
        session_.set(bookmarkKey(std::to_string(page)), Value());
}

std::optional<std::size_t> SearchSession::bookmark(const std::string& page) const {
    const Value held = session_.get(bookmarkKey(page));
    if (!held.isNumber() || held.number() < 0) return std::nullopt;
    return static_cast<std::size_t>(held.number());
}

void SearchSession::setBookmark(int page, std::size_t row) {
    session_.set(bookmarkKey(std::to_string(page)), static_cast<double>(row));
}

int SearchSession::rankBase() const {
    return std::max(1, shortInteger(session_.number(key::rankBase)).value_or(1));
}

void SearchSession::setRankBase(int rank) {
    session_.set(key::rankBase, rank);
}

}  // namespace torvex
