#pragma once

#include <functional>
#include <string>
#include <xapian.h>

#include "search/catalogue/Backend.h"

namespace torvex::catalogue {

/// The catalogue of this installation, to be read: opened for each piece of work, so that nothing of it is
/// held. Readers are never in the way of who writes, in whichever process. Safe to share between threads.
class Reader final : public Backend {
  public:
    /// `folder` holds the database.
    explicit Reader(std::string folder) : folder_(std::move(folder)) {}

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
    std::string folder_;
};

}  // namespace torvex::catalogue
