#pragma once

#include <string>
#include <vector>

#include "search/SearchParameters.h"
#include "search/catalogue/Catalogue.h"

namespace torvex {

struct HostContext;

/// Where the snapshots of pages lie in the catalogue's world, and the documents: with backslashes, the last
/// one included.
std::string snapshotsPath(std::string_view rootPath);
std::string documentsPath(const HostContext& host, std::string_view rootPath);

/// The folders that a search looks through. Listed folders of documents that aren't there are left out; those
/// of another server are that one's to know. Throws `SearchError`.
std::vector<catalogue::Scope> searchScopes(HostContext& host, const SearchParameters& search);

}  // namespace torvex
