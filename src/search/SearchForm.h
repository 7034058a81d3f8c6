#pragma once

#include <string>
#include <string_view>

namespace torvex {

struct HostContext;

/// The fields of a search form.
namespace searchField {
inline constexpr std::string_view words = "search_string";
inline constexpr std::string_view maxResults = "search_maxResults";
inline constexpr std::string_view resultsPerPage = "search_resultsPerPage";
inline constexpr std::string_view security = "search_security";
inline constexpr std::string_view wordLength = "search_wordLength";
inline constexpr std::string_view match = "search_match";
inline constexpr std::string_view derivation = "search_derivation";
inline constexpr std::string_view sortOrder = "search_sortOrder";
inline constexpr std::string_view properties = "search_properties";
inline constexpr std::string_view pageScopes = "search_pageScopes";
inline constexpr std::string_view documentScopes = "search_documentScopes";
inline constexpr std::string_view documentTypes = "search_documentTypes";

/// Of a paging link; the others don't count then.
inline constexpr std::string_view pageTo = "search_pageTo";
}  // namespace searchField

/// What a visitor sent to a search: in this request, or in an earlier one that led here, which kept it in the
/// session.
class SearchForm {
  public:
    explicit SearchForm(const HostContext& host);

    /// The words as they came, a long text cut.
    std::string words() const;
    /// Any other field: in small letters and without blanks.
    std::string choice(std::string_view field) const;
    /// The same for a list, without signs that mean something to the catalogue.
    std::string list(std::string_view field) const;

  private:
    std::string valueOf(std::string_view field) const;

    const HostContext& host_;
    const bool isKept_;
};

/// Keeps the fields of this request for the one that it leads to, and lets them go.
void keepSearchForm(HostContext& host);
void forgetSearchForm(HostContext& host);

}  // namespace torvex
