#include "search/SearchForm.h"

#include <array>

#include "platform/HostContext.h"
#include "platform/Request.h"
#include "platform/Session.h"
#include "platform/text/Text.h"
#include "search/SearchTexts.h"

namespace torvex {

namespace {

constexpr std::array keptFields = {
    searchField::words,      searchField::maxResults, searchField::resultsPerPage, searchField::security,
    searchField::wordLength, searchField::match,      searchField::derivation,     searchField::sortOrder,
    searchField::properties, searchField::pageScopes, searchField::documentScopes, searchField::documentTypes,
};
constexpr std::size_t longestWords = 250;

std::string keyOf(std::string_view field) {
    return "X_torvex_" + std::string(field);
}

}  // namespace

SearchForm::SearchForm(const HostContext& host)
    : host_(host), isKept_(!text::trim(host.session.text(keyOf(searchField::words))).empty()) {}

std::string SearchForm::valueOf(std::string_view field) const {
    return isKept_ ? host_.session.text(keyOf(field)) : host_.request.item(field);
}

std::string SearchForm::words() const {
    const std::string all = valueOf(searchField::words);
    const std::string_view words = text::trim(all);
    return std::string(isKept_ ? words : text::first(words, longestWords));
}

std::string SearchForm::choice(std::string_view field) const {
    std::string value = text::lower(valueOf(field));
    std::erase(value, ' ');
    return value;
}

std::string SearchForm::list(std::string_view field) const {
    return neutralList(valueOf(field));
}

void keepSearchForm(HostContext& host) {
    for (const auto field : keptFields) host.session.set(keyOf(field), host.request.item(field));
}

void forgetSearchForm(HostContext& host) {
    for (const auto field : keptFields) {
        if (!host.session.get(keyOf(field)).isEmpty()) host.session.set(keyOf(field), Value());
    }
}

}  // namespace torvex
