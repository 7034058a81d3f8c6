#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "platform/db/Connection.h"
#include "platform/db/TableStates.h"

namespace torvex::db {

/// What was found in one state of the database and holds until anybody changes it: for what is made of many
/// rows and shown by many requests. Belongs to one connection. Its keys say all that an answer depends on
/// besides the database.
class LastingMemory {
  public:
    /// To be told before each use: the number of the state that is read. In another one nothing holds any
    /// more.
    void readsState(std::uint64_t number);

    struct Answer {
        std::string text;
        TableSet tables;  ///< that it was made of
    };

    /// Null when the answer isn't known. Valid until the next `keep`.
    const Answer* find(const std::string& key) const;
    void keep(const std::string& key, Answer answer);

  private:
    std::uint64_t state_ = 0;
    std::size_t bytes_ = 0;
    std::unordered_map<std::string, Answer> answers_;
};

/// What was found within one read scope and may be asked for again in it. All of the scope's queries see one
/// state, so what is kept is exact; it is gone when the scope ends. Holds a handful of texts, the latest
/// ones: those that a request asks for again are about the page it shows.
class ScopeMemory {
  public:
    /// Null when the answer isn't known. `question` is a constant, told from others by its address. The
    /// text is valid until the next `keep`.
    const std::string* find(std::string_view question, std::string_view about);
    /// `tables` are those that the answer was read from.
    void keep(std::string_view question, std::string_view about, std::string answer, const TableSet& tables);

    /// What holds beyond this scope; null where the engine doesn't tell whether its content has changed.
    LastingMemory* lasting() const { return lasting_; }
    void setLasting(LastingMemory* lasting) { lasting_ = lasting; }

    /// The tables that the scope has read until now, also by what was remembered.
    TableSet& tablesRead() { return tables_; }

  private:
    struct Entry {
        const char* question = nullptr;
        std::string about;
        std::string answer;
        TableSet tables{};
    };

    std::array<Entry, 8> entries_;
    std::size_t next_ = 0;  ///< the place of the next entry, which is that of the oldest one
    LastingMemory* lasting_ = nullptr;
    TableSet tables_;
};

/// Tells what is read within its life from what was read before; in the end the scope has read both.
class ReadsOf {
  public:
    explicit ReadsOf(ScopeMemory& memory)
        : all_(memory.tablesRead()), before_(std::exchange(all_, TableSet())) {}
    ReadsOf(const ReadsOf&) = delete;
    ReadsOf& operator=(const ReadsOf&) = delete;
    ~ReadsOf() { all_ |= before_; }

    const TableSet& tables() const { return all_; }

  private:
    TableSet& all_;
    const TableSet before_;
};

/// The answer that `find` gives, or that it has given before within the read scope that is open.
template <typename Find>
std::string remembered(Connection& connection, std::string_view question, std::string_view about, Find find) {
    ScopeMemory* const memory = connection.memory();
    if (memory == nullptr) return find();
    if (const std::string* known = memory->find(question, about)) return *known;
    const ReadsOf reads(*memory);
    std::string answer = find();
    memory->keep(question, about, answer, reads.tables());
    return answer;
}

/// The same over requests, as long as the database is as it was. `key` says everything else that the answer
/// depends on, and which question it is.
template <typename Find>
std::string rememberedWhileUnchanged(Connection& connection, const std::string& key, Find find) {
    ScopeMemory* const memory = connection.memory();
    if (memory == nullptr || memory->lasting() == nullptr) return find();
    if (const LastingMemory::Answer* known = memory->lasting()->find(key)) {
        memory->tablesRead() |= known->tables;
        return known->text;
    }
    const ReadsOf reads(*memory);
    std::string answer = find();
    LastingMemory* const lasting = connection.memory()->lasting();
    if (lasting != nullptr) lasting->keep(key, {answer, reads.tables()});
    return answer;
}

}  // namespace torvex::db
