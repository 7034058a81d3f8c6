#pragma once

#include <string>

#include "platform/db/ConnectionSource.h"
#include "search/SearchRun.h"

namespace torvex {

struct HostContext;

/// The search of a site. The full text catalogue reads files, so that every published page has a copy for it:
/// its snapshot. An object lives for one request and is used by one thread.
///
/// Nothing is raised, but for the end of the request: what goes wrong stands in `search_error`.
class Search {
  public:
    explicit Search(HostContext& host, OpenCatalogue open = catalogue::open)
        : host_(host), open_(std::move(open)) {}

    void connect(db::ConnectionSource connection) { connection_ = std::move(connection); }

    // Searching
    /// `html`, a results template, filled with what the request asks for on the search page `pageIdent`: a new
    /// search, or a further page of the last one. `mode` is "" for visitors; any other is an author's preview.
    std::string loadResults(const std::string& pageIdent, const std::string& mode, const std::string& html);
    /// Keeps the fields of the search form for the request that this one leads to.
    void saveSearchFormParameters();
    /// Why there are no results; "" when there was nothing wrong.
    const std::string& search_error() const { return error_; }

    // Settings
    /// What can be searched for in a site, divided by commas.
    std::string getAllProperties(const std::string& site);
    /// Removes the settings and the logged words of pages that aren't live, and scopes that are gone.
    void CleanUpDB();

    // Snapshots
    /// Renews the snapshots of all pages, or of one: "0", or "-99" when one of them can't be written (the log
    /// says why) and for a `pageIdent` that is no page's. Doing all of them first removes the folders of the
    /// languages.
    std::string initializePages(const std::string& pageIdent = "");

  private:
    void removeLanguageFolders(db::Connection& connection);
    /// `suggestion` gets other words, where the template shows some.
    std::string fillTemplate(const PageIdentity& page, const std::string& mode, std::string html,
                             std::string& suggestion);
    SearchRun run(const PageIdentity& page, bool isPreview);
    /// Runs an operation that reports what goes wrong; `line` stands for what breaks.
    template <typename Work>
    void report(std::string_view line, Work&& work);

    HostContext& host_;
    OpenCatalogue open_;
    db::ConnectionSource connection_;
    std::string error_;
};

}  // namespace torvex
