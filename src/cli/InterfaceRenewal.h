#pragma once

#include <cstddef>

namespace torvex {
class Installation;
namespace db {
class Connection;
}
}  // namespace torvex

namespace torvex::cli {

/// Makes the templates of each language of the interface from the master templates.
void makeInterfaces(const Installation& installation, db::Connection& connection);

/// What an installation lacked of the program's.
struct Renewed {
    std::size_t words = 0;
    std::size_t files = 0;

    bool isNothing() const { return words + files == 0; }
};

/// Adds the words of the interface that are new, puts the program's own files in place of older ones, and
/// makes the languages' templates if either was needed. Words that the installation has stay as they are.
Renewed renewInterface(const Installation& installation, db::Connection& connection);

}  // namespace torvex::cli
