#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "search/SearchParameters.h"
#include "search/SearchSession.h"
#include "search/catalogue/Catalogue.h"

namespace torvex {

struct HostContext;

/// The way to a catalogue: what `catalogue::open` does.
using OpenCatalogue =
    std::function<std::unique_ptr<catalogue::Catalogue>(HostContext&, std::string_view, std::string_view)>;

/// A search whose results stand, at one page of them.
struct SearchRun {
    SearchParameters search;
    RunningSearch running;
    int page = 1;
    std::size_t firstRow = 0;  ///< where the page begins to look
    /// With which it was begun; null when it goes on.
    std::unique_ptr<catalogue::Catalogue> catalogue;

    const catalogue::Results& results() const { return *running.results->results; }
};

/// Puts a new question to the catalogue. Throws `SearchError`.
SearchRun beginSearch(HostContext& host, db::Connection& connection, const OpenCatalogue& open,
                      SearchParameters search);

/// Goes on with the search of the session at the page that the request asks for. Throws `SearchError`.
SearchRun resumeSearch(HostContext& host, db::Connection& connection);

/// What a query finds. Throws `SearchError`.
std::shared_ptr<const catalogue::Results> resultsOf(HostContext& host, catalogue::Catalogue& catalogue,
                                                    const catalogue::Query& query);

}  // namespace torvex
