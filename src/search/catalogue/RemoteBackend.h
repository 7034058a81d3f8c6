#pragma once

#include <chrono>
#include <cstdint>
#include <string>

#include "search/catalogue/Backend.h"

namespace torvex::catalogue {

/// The catalogue that another server offers (see `CatalogueServer`). Each piece of work has a connection of
/// its own, and has to be done in time. Safe to share between threads.
class RemoteBackend final : public Backend {
  public:
    /// `address` as it stands behind "query://": "server/name" or "server:port/name", an IPv6 address in
    /// brackets. A server has one catalogue, whatever its name here. Throws `UnavailableError` for another
    /// text.
    explicit RemoteBackend(std::string_view address,
                           std::chrono::milliseconds patience = std::chrono::milliseconds(2'500));

    void check() const override;
    Found find(const Query& query, std::size_t most) const override;
    std::vector<Row> rows(const Query& query, const std::string& database,
                          const std::vector<Hit>& hits) const override;
    std::string corrected(std::string_view words, std::string_view language) const override;

  private:
    std::string ask(const std::string& request) const;

    std::string host_;
    std::string port_;
    std::chrono::milliseconds patience_;
};

}  // namespace torvex::catalogue
