#pragma once

#include <optional>
#include <string_view>

#include "platform/db/Connection.h"

namespace torvex {

/// A kind of administrative record, by the word that operations have for it, and where its rows are.
struct ItemKind {
    enum class Key { Number, Code };

    std::string_view word;
    std::string_view table;
    std::string_view keyColumn;
    Key key;
};

/// One record, by its row's key.
struct AdminItem {
    const ItemKind& kind;
    db::Parameter key;  ///< views the id that it was found by
};

/// Nothing for an unknown word, and for an id that no record can have. Whether there is a row isn't asked.
std::optional<AdminItem> findAdminItem(std::string_view word, std::string_view itemId);

}  // namespace torvex
