#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace torvex::cli {

/// The names of columns as the schema spells them. A database server may hand them out in small letters; with
/// these, a result shows the same names whatever the engine.
class ColumnNames {
  public:
    /// Takes the names from the "create table" statements of the program's schema.
    ColumnNames();

    /// The spelling of a result's column: that of the statement's own "as" name, else of the tables that it
    /// names, else of any table; a name that is nowhere stays as it is.
    std::string spelled(std::string_view column, std::string_view statement) const;

  private:
    using Columns = std::unordered_map<std::string, std::string>;  ///< by the name in small letters

    void readTable(std::string_view definition);
    void readAddedColumns(std::string_view text);

    std::vector<std::pair<std::string, Columns>> tables_;  ///< by their names in small letters
};

}  // namespace torvex::cli
