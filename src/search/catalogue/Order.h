#pragma once

#include <optional>
#include <string>
#include <vector>
#include <xapian.h>

#include "search/catalogue/Backend.h"

namespace torvex::catalogue {

/// In which order results come: by what a query is to be sorted by, then by title, then by path.
class Order {
  public:
    /// `sortBy` as in "rank[d],doctitle,docauthor[a]"; a name without a sign in brackets is in rising order.
    /// Throws `QueryError` for another sign.
    explicit Order(std::string_view sortBy);

    /// Runs the query in an order of the database's own that is close to this one.
    Found run(const Xapian::Database& database, Xapian::Enquire& enquire, std::size_t most) const;

  private:
    struct Key {
        Xapian::valueno slot = 0;
        bool isFalling = false;
        bool isRank = false;
    };
    struct Item {
        Hit hit;
        Xapian::MSetIterator found;
        mutable std::vector<std::optional<std::string>> keys;  ///< those that were needed
    };

    class LeadingKeys;

    bool beginsWithRank() const { return !keys_.empty() && keys_.front().isRank; }
    /// So many keys the results of the database are sorted by.
    std::size_t sortedKeys() const { return beginsWithRank() ? 1 : leading_; }
    Order withoutRank() const;
    int compare(const Item& a, const Item& b, std::size_t keys) const;
    const std::string& key(const Item& item, std::size_t n) const;
    void sort(std::vector<Item>& items) const;
    void dropLastAlike(std::vector<Item>& items) const;

    std::vector<Key> keys_;
    std::size_t leading_ = 0;  ///< so many keys the database sorts by itself
};

}  // namespace torvex::catalogue
