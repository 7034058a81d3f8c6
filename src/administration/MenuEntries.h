#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace torvex {
namespace db {
class Connection;
}

/// An entry of the administration menu.
struct MenuEntry {
    int advId = 0;
    int level = 0;          ///< 0 for the installation, 1 for a site, 2 for a site and language
    std::string reference;  ///< its place in the tree of its level
    std::string title;      ///< in the interface language, or in English; may be empty
    std::string icon;
    std::string program;  ///< the address that it opens
    bool offersView = false;
    bool offersEdit = false;
    bool hasChildren = false;
};

enum class MenuOrder { LevelsUp, LevelsDown };

/// 1 is downwards, everything else upwards.
MenuOrder menuOrder(int order);

/// All entries, in the order of their references within each level.
std::vector<MenuEntry> menuEntries(db::Connection& connection, std::string_view language, MenuOrder order);

/// The number of the label that an entry's title names.
double titleLabel(std::string_view advTitle);
/// The text of each of these labels, as `getVocab` gives it.
std::map<double, std::string> titlesOf(db::Connection& connection, std::string_view language,
                                       const std::vector<double>& labels);

}  // namespace torvex
