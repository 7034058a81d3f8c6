#include "search/SearchQuery.h"

#include <array>

#include "platform/text/Text.h"
#include "search/SearchTexts.h"
#include "search/catalogue/Words.h"

namespace torvex {

namespace {

constexpr std::array<std::string_view, 4> operators = {"and", "or", "not", "near"};
constexpr std::string_view anySnapshot = "#filename=*.html";
constexpr std::string_view orBetween = " OR ";

/// Each part had an " OR " put in front.
std::string inParentheses(const std::string& parts) {
    return parts.empty() ? std::string() : "(" + parts.substr(orBetween.size()) + ")";
}

std::string orFile(std::string_view pattern) {
    return std::string(orBetween).append("#filename=").append(pattern);
}

/// The files of a node, of its children as well ("+"), or of all below it ("++").
std::string filesOfScope(std::string_view scope) {
    const auto nodeBefore = [scope](std::size_t signs) {
        return std::string(text::trim(scope.substr(0, scope.size() - signs)));
    };
    if (scope.ends_with("++")) return orFile(nodeBefore(2) + "*.html");
    if (scope.ends_with("+")) {
        const std::string node = nodeBefore(1);
        return orFile(node + ".html") + orFile(node + ".??.html");
    }
    return orFile(std::string(scope) + ".html");
}

std::string pageFilter(const SearchParameters& search) {
    std::string files;
    for (const std::string& scope : listItems(text::lower(search.pageScopes))) files += filesOfScope(scope);
    return inParentheses(files);
}

std::string typeFilter(const SearchParameters& search) {
    if (search.documentTypes == allDocumentTypes) return {};
    std::string files;
    for (const std::string& type : listItems(text::lower(search.documentTypes))) files += orFile("*." + type);
    return inParentheses(files);
}

bool isListOfPages(const SearchParameters& search) {
    return search.pageScopes != searchScope::none && search.pageScopes != searchScope::allSites &&
           search.pageScopes != searchScope::currentSite && !listItems(search.pageScopes).empty();
}

std::string queryFilter(const SearchParameters& search) {
    const std::string types = typeFilter(search);
    const std::string snapshots(anySnapshot);
    if (search.pageScopes == searchScope::none) return types;
    if (!isListOfPages(search)) return types.empty() ? std::string() : "(" + types + " OR " + snapshots + ")";
    const std::string pages = pageFilter(search);
    if (types.empty()) return "(" + pages + " OR NOT " + snapshots + ")";
    return "(" + pages + " OR (" + types + " AND NOT " + snapshots + "))";
}

/// What a property is asked for, behind the sign that says how.
struct Expression {
    std::string_view sign;
    std::string words;
};

Expression expressionOf(const SearchParameters& search, const std::string& words) {
    if (search.match == SearchMatch::Phrase) return {"@", "\"" + words + "\""};
    const bool all = search.match == SearchMatch::AllWords;
    switch (search.derivation) {
        case SearchDerivation::Prefix:
            return {"@", text::replaceAll(words, " ", all ? "* AND " : "* OR ") + "*"};
        case SearchDerivation::Stemming:
            return {"$", all ? text::replaceAll(words, " ", " AND ") : words};
        default:
            return {"@", text::replaceAll(words, " ", all ? " AND " : " OR ")};
    }
}

}  // namespace

std::string soughtWords(const SearchParameters& search) {
    const std::string words = text::lower(neutralWords(search.words));
    if (search.match == SearchMatch::Phrase) return words;
    const double shortest = text::isNumeric(search.wordLength) ? text::toNumber(search.wordLength) : 0;
    std::string sought;
    for (const std::string& word : splitWords(words)) {
        const bool isWord = catalogue::WordReader(word).next();
        if (!isWord || isAmong(operators, word) || static_cast<double>(text::length(word)) < shortest)
            continue;
        sought.append(sought.empty() ? "" : " ").append(word);
    }
    return sought;
}

std::string searchQuery(const SearchParameters& search, const std::string& words) {
    const auto [sign, expression] = expressionOf(search, words);
    std::string asked;
    for (const std::string& property : listItems(text::lower(search.properties))) {
        asked.append(" OR (").append(sign).append(property).append(" ").append(expression).append(")");
    }
    const std::string query = inParentheses(asked);
    const std::string filter = queryFilter(search);
    if (filter.empty()) return query;
    return query.empty() ? filter : query + " AND " + filter;
}

}  // namespace torvex
