#pragma once

#include <cstdint>
#include <string_view>

#include "delivery/SearchStore.h"
#include "platform/HitCounter.h"
#include "platform/db/Database.h"

namespace torvex {

class ApplicationValues;

/// Whether a node has been viewed on a day (yyyymmdd) before.
bool hasHits(db::Connection& connection, std::string_view nodeId, std::string_view day);

/// Adds to the counts of a node and day; the row is made when it isn't there. Safe beside other writers.
void addHits(db::Connection& connection, std::string_view nodeId, std::string_view day, std::int64_t hits,
             std::int64_t uniqueHits);

/// Counts every view and every search in the database at once: for programs that end soon.
class DirectHits final : public HitCounter {
  public:
    /// Both must outlive the object; the values name the database at each count.
    DirectHits(db::Database& database, const ApplicationValues& application)
        : database_(database), application_(application) {}

    bool count(std::string_view nodeId, std::string_view day, bool unique) override;
    void countSearch(const SearchedWords& searched) override;
    void countNothingFound(const SearchedWords& searched) override;
    bool flush() override { return true; }

  private:
    db::Lease open();
    void store(const SearchBatch& batch);

    db::Database& database_;
    const ApplicationValues& application_;
};

}  // namespace torvex
