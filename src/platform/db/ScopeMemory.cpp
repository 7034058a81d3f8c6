#include "platform/db/ScopeMemory.h"

#include <utility>

namespace torvex::db {

namespace {

/// Of each connection. A page's menu and boxes take some ten kilobytes.
constexpr std::size_t mostBytes = 512 * 1024;

}  // namespace

void LastingMemory::readsState(std::uint64_t number) {
    if (number == state_) return;
    state_ = number;
    bytes_ = 0;
    answers_.clear();
}

const LastingMemory::Answer* LastingMemory::find(const std::string& key) const {
    const auto found = answers_.find(key);
    return found == answers_.end() ? nullptr : &found->second;
}

/// When it is full all goes, and what is asked for comes back: there is no order to be kept at each use.
void LastingMemory::keep(const std::string& key, Answer answer) {
    const std::size_t takes = key.size() + answer.text.size() + sizeof answer.tables;
    if (takes > mostBytes) return;
    if (bytes_ + takes > mostBytes) {
        bytes_ = 0;
        answers_.clear();
    }
    if (answers_.emplace(key, std::move(answer)).second) bytes_ += takes;
}

const std::string* ScopeMemory::find(std::string_view question, std::string_view about) {
    for (const Entry& entry : entries_) {
        if (entry.question != question.data() || entry.about != about) continue;
        tables_ |= entry.tables;
        return &entry.answer;
    }
    return nullptr;
}

void ScopeMemory::keep(std::string_view question, std::string_view about, std::string answer,
                       const TableSet& tables) {
    entries_[next_] = {question.data(), std::string(about), std::move(answer), tables};
    next_ = (next_ + 1) % entries_.size();
}

}  // namespace torvex::db
