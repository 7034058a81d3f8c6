#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "search/SearchRun.h"
#include "search/catalogue/Catalogue.h"

namespace torvex::test {

/// What stands behind every catalogue that is opened: rows that are found whatever is asked for, and what was
/// asked. Everything is public, to be filled and looked at; it must outlive what it opens.
struct FakeCatalogue {
    std::vector<catalogue::Row> rows;
    /// Answers a query in place of `rows`, where it is set; may throw.
    std::function<std::vector<catalogue::Row>(const catalogue::Query&)> answer;
    bool isGone = false;         ///< it can't be opened
    bool givesNothing = false;   ///< no results come back, not even none
    bool rowsAreBroken = false;  ///< its rows can't be read any more
    std::string openedName;
    std::string openedRoot;
    std::vector<catalogue::Query> queries;
    int rowsRead = 0;  ///< with all that is shown of them

    OpenCatalogue opener() {
        return [this](HostContext&, std::string_view name, std::string_view root) {
            openedName = name;
            openedRoot = root;
            if (isGone) throw catalogue::UnavailableError("the catalogue is gone");
            return std::make_unique<Opened>(*this);
        };
    }

  private:
    class FoundRows final : public catalogue::Results {
      public:
        FoundRows(FakeCatalogue& fake, std::vector<catalogue::Row> rows)
            : fake_(fake), rows_(std::move(rows)) {}

        std::size_t size() const override { return rows_.size(); }
        catalogue::Row row(std::size_t index) const override {
            if (fake_.rowsAreBroken) throw catalogue::UnavailableError("the rows are gone");
            ++fake_.rowsRead;
            return rows_.at(index);
        }
        std::string path(std::size_t index) const override { return rows_.at(index).path; }

      private:
        FakeCatalogue& fake_;
        std::vector<catalogue::Row> rows_;
    };

    class Opened final : public catalogue::Catalogue {
      public:
        explicit Opened(FakeCatalogue& fake) : fake_(fake) {}

        std::shared_ptr<const catalogue::Results> find(const catalogue::Query& query) override {
            fake_.queries.push_back(query);
            if (fake_.givesNothing) return nullptr;
            return std::make_shared<FoundRows>(fake_, fake_.answer ? fake_.answer(query) : fake_.rows);
        }
        std::string corrected(std::string_view, std::string_view) override { return {}; }

      private:
        FakeCatalogue& fake_;
    };
};

}  // namespace torvex::test
