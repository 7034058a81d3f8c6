#pragma once

#include <string>

#include "records/PageIdentity.h"

namespace torvex {

struct HostContext;

/// Whether what is found is tested against the visitor's rights.
struct SearchSecurity {
    bool forPages = false;
    bool forDocuments = false;

    bool isOn() const { return forPages || forDocuments; }
};

enum class SearchMatch { SomeWords, AllWords, Phrase };
enum class SearchDerivation { None, Prefix, Stemming };

/// Which pages or documents a search looks through: one of these, or a list.
namespace searchScope {
inline constexpr std::string_view none = "none";
inline constexpr std::string_view allSites = "allsites";
inline constexpr std::string_view currentSite = "currentsite";
}  // namespace searchScope

/// In place of a list of types of documents.
inline constexpr std::string_view allDocumentTypes = "alltypes";

/// The effective settings of one search: what its page prescribes, and for the rest what its form said.
struct SearchParameters {
    PageIdentity page;       ///< the search page
    bool isPreview = false;  ///< for authors, who see what is off line and have no rights tested
    std::string words;
    std::string catalog;   ///< a name, or "query://server/name"
    std::string rootPath;  ///< of the catalogue's files, with backslashes, the last one included
    bool isRemote = false;
    int maxResults = 0;
    int resultsPerPage = 0;
    bool wantsSecurity = true;  ///< though there may be no groups that restrict anything
    SearchSecurity security;
    std::string wordLength;
    SearchMatch match = SearchMatch::SomeWords;
    SearchDerivation derivation = SearchDerivation::None;
    std::string sortOrder;
    std::string properties;
    std::string pageScopes;
    std::string documentScopes;
    std::string documentTypes;
};

/// Whether the request begins a search, instead of asking for another page of the last one's results: those
/// links count on the search page alone.
bool isNewSearch(const HostContext& host);

/// The words of a new search as they are shown again.
std::string askedWords(const HostContext& host);

/// For a new search. What the form left in the session is used up. Throws `SearchError`.
SearchParameters searchParameters(HostContext& host, db::Connection& connection, const PageIdentity& page,
                                  bool isPreview);

/// What has to be tested now, if anything: a test that could refuse nobody is left out.
SearchSecurity securityNow(const HostContext& host, db::Connection& connection);

}  // namespace torvex
