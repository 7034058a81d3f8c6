#include "platform/db/ScopeMemory.h"

#include <utility>

namespace torvex::db {

const std::string* ScopeMemory::find(std::string_view question, std::string_view about) const {
    for (const Entry& entry : entries_) {
        if (entry.question == question.data() && entry.about == about) return &entry.answer;
    }
    return nullptr;
}

void ScopeMemory::keep(std::string_view question, std::string_view about, std::string answer) {
    entries_[next_] = {question.data(), std::string(about), std::move(answer)};
    next_ = (next_ + 1) % entries_.size();
}

}  // namespace torvex::db
