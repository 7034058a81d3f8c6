#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "platform/db/Connection.h"

namespace torvex::db {

/// What was found within one read scope and may be asked for again in it. All of the scope's queries see one
/// state, so what is kept is exact; it is gone when the scope ends. Holds a handful of texts, the latest
/// ones: those that a request asks for again are about the page it shows.
class ScopeMemory {
  public:
    /// Null when the answer isn't known. `question` is a constant, told from others by its address. The
    /// text is valid until the next `keep`.
    const std::string* find(std::string_view question, std::string_view about) const;
    void keep(std::string_view question, std::string_view about, std::string answer);

  private:
    struct Entry {
        const char* question = nullptr;
        std::string about;
        std::string answer;
    };

    std::array<Entry, 8> entries_;
    std::size_t next_ = 0;  ///< the place of the next entry, which is that of the oldest one
};

/// The answer that `find` gives, or that it has given before within the read scope that is open.
template <typename Find>
std::string remembered(Connection& connection, std::string_view question, std::string_view about, Find find) {
    ScopeMemory* const memory = connection.memory();
    if (memory == nullptr) return find();
    if (const std::string* known = memory->find(question, about)) return *known;
    std::string answer = find();
    memory->keep(question, about, answer);
    return answer;
}

}  // namespace torvex::db
