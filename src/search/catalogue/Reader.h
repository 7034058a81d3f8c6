#pragma once

#include <functional>
#include <mutex>
#include <string>
#include <xapian.h>

#include "search/catalogue/Backend.h"
#include "search/catalogue/Translation.h"

namespace torvex::catalogue {

/// The catalogue of this installation, to be read: opened for each piece of work, so that nothing of it is
/// held. Readers are never in the way of who writes, in whichever process. What pages show around the words
/// found is read from their snapshots. Safe to share between threads.
class Reader final : public Backend {
  public:
    explicit Reader(std::string_view installPath);

    void check() const override;
    Found find(const Query& query, std::size_t most) const override;
    std::vector<Row> rows(const Query& query, const std::string& database,
                          const std::vector<Hit>& hits) const override;
    std::vector<std::string> paths(const Query& query, const std::string& database,
                                   const std::vector<Hit>& hits) const override;
    std::string corrected(std::string_view words, std::string_view language) const override;

    /// Runs on one state of the database; anew when it was changed too much meanwhile.
    void read(const std::function<void(const Xapian::Database&)>& work) const;

  private:
    /// What the rows of a query are to show. Its own words are kept from the finding: telling all forms of a
    /// word takes as long as finding it.
    FoundWords wordsOf(const Query& query, const Xapian::Database& database) const;
    void keepWords(const Query& query, const FoundWords& words) const;

    std::string installPath_;
    std::string folder_;  ///< of the database
    mutable std::mutex mutex_;
    mutable std::string keptText_;
    mutable std::string keptLanguage_;
    mutable std::optional<FoundWords> keptWords_;
};

}  // namespace torvex::catalogue
