#pragma once

#include <functional>
#include <string>
#include <xapian.h>

#include "search/catalogue/Backend.h"

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
    std::string installPath_;
    std::string folder_;  ///< of the database
};

}  // namespace torvex::catalogue
