#include "search/catalogue/Order.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>

#include "platform/text/LogText.h"
#include "platform/text/Text.h"
#include "search/catalogue/Terms.h"

namespace torvex::catalogue {

namespace {

constexpr int highestRank = 1000;
/// So many times more are looked at when what was asked for is all alike.
constexpr std::size_t growth = 8;

/// Sorted by bytes: a text comes before what it begins, and a falling one behind it.
void appendKey(std::string& keys, std::string_view text, bool isFalling) {
    const std::size_t begin = keys.size();
    for (const char c : text) {
        keys += c;
        if (c == '\0') keys += '\xff';
    }
    keys.append(2, '\0');
    if (!isFalling) return;
    for (std::size_t at = begin; at < keys.size(); ++at) keys[at] = static_cast<char>(~keys[at]);
}

/// A query without words has no weights: all that it finds is all that it asks for.
int rankOf(double weight, double best) {
    if (best <= 0) return highestRank;
    return std::clamp(static_cast<int>(std::lround(weight / best * highestRank)), 1, highestRank);
}

}  // namespace

Order::Order(std::string_view sortBy) {
    while (!sortBy.empty()) {
        const std::size_t comma = std::min(sortBy.find(','), sortBy.size());
        std::string name = text::lowerTrim(sortBy.substr(0, comma));
        sortBy.remove_prefix(std::min(comma + 1, sortBy.size()));
        if (name.empty()) continue;
        Key key;
        key.isFalling = name.ends_with("[d]");
        if (key.isFalling || name.ends_with("[a]")) name.resize(name.size() - 3);
        if (name.find_first_of("[]") != std::string::npos) {
            throw QueryError(fmt::format("\"{}\" is nothing to sort by", forLog(name, 30)));
        }
        key.isRank = name == "rank";
        key.slot = sortSlot(name);
        keys_.push_back(key);
    }
    keys_.push_back({sortSlot(column::title), false, false});
    keys_.push_back({slot::path, false, false});
    const auto rank = std::find_if(keys_.begin(), keys_.end(), [](const Key& key) { return key.isRank; });
    leading_ = static_cast<std::size_t>(rank - keys_.begin());
}

class Order::LeadingKeys : public Xapian::KeyMaker {
  public:
    explicit LeadingKeys(const Order& order) : order_(order) {}

    std::string operator()(const Xapian::Document& document) const override {
        std::string keys;
        for (std::size_t n = 0; n < order_.leading_; ++n)
            appendKey(keys, sortKey(document, order_.keys_[n].slot), order_.keys_[n].isFalling);
        return keys;
    }

  private:
    const Order& order_;
};

int Order::compare(const Item& a, const Item& b, std::size_t keys) const {
    for (std::size_t n = 0; n < keys; ++n) {
        const int difference = keys_[n].isRank ? a.hit.rank - b.hit.rank : key(a, n).compare(key(b, n));
        if (difference != 0) return keys_[n].isFalling ? -difference : difference;
    }
    return 0;
}

/// Most differ in the first one: the others are read where they are asked for.
const std::string& Order::key(const Item& item, std::size_t n) const {
    if (item.keys.empty()) item.keys.resize(keys_.size());
    std::optional<std::string>& value = item.keys[n];
    if (!value) value = sortKey(item.found.get_document(), keys_[n].slot);
    return *value;
}

Order Order::withoutRank() const {
    Order others = *this;
    std::erase_if(others.keys_, [](const Key& key) { return key.isRank; });
    others.leading_ = others.keys_.size();
    return others;
}

/// Those alike in what the database has sorted by come together already.
void Order::sort(std::vector<Item>& items) const {
    const std::size_t sorted = sortedKeys();
    if (sorted == keys_.size()) return;
    for (auto begin = items.begin(); begin != items.end();) {
        const auto end = std::find_if(begin, items.end(), [&, &first = *begin](const Item& item) {
            return compare(first, item, sorted) != 0;
        });
        if (end - begin > 1) {
            std::sort(begin, end,
                      [this](const Item& a, const Item& b) { return compare(a, b, keys_.size()) < 0; });
        }
        begin = end;
    }
}

/// Some that are alike with the last ones may be missing.
void Order::dropLastAlike(std::vector<Item>& items) const {
    const Item last = items.back();
    while (!items.empty() && compare(items.back(), last, sortedKeys()) == 0) items.pop_back();
}

Found Order::run(const Xapian::Database& database, Xapian::Enquire& enquire, std::size_t most) const {
    const Xapian::doccount all = database.get_doccount();
    const Xapian::doccount wanted =
        most == 0 ? all : static_cast<Xapian::doccount>(std::min<std::size_t>(most, all));
    LeadingKeys keys(*this);
    if (beginsWithRank()) {
        enquire.set_sort_by_relevance();
    } else {
        enquire.set_sort_by_key_then_relevance(&keys, false);
    }
    // One more tells whether these are all.
    const Xapian::MSet set = enquire.get_mset(0, wanted, wanted + 1);
    const double best = set.get_max_possible();
    Found found;
    found.isAll = set.get_matches_lower_bound() <= set.size();
    if (beginsWithRank() && best <= 0 && !found.isAll) return withoutRank().run(database, enquire, most);
    std::vector<Item> items;
    items.reserve(set.size());
    for (auto at = set.begin(); at != set.end(); ++at)
        items.push_back({{*at, rankOf(at.get_weight(), best)}, at, {}});
    sort(items);
    if (!found.isAll && leading_ < keys_.size()) {
        dropLastAlike(items);
        if (items.empty()) return run(database, enquire, growth * wanted);
    }
    found.hits.reserve(items.size());
    for (const Item& item : items) found.hits.push_back(item.hit);
    return found;
}

}  // namespace torvex::catalogue
