#include "platform/Session.h"

#include <algorithm>

#include "platform/text/Text.h"

namespace torvex {

namespace {

template <typename Values>
auto findKey(Values& values, std::string_view key) {
    return std::find_if(values.begin(), values.end(),
                        [key](const auto& entry) { return text::equals(entry.first, key); });
}

bool isBlank(const Value& value) {
    return value.isEmpty() || (value.isText() && value.text().empty());
}

/// What was never set reads as an empty text does.
bool readsAs(const Value& value, const Value& other) {
    return value == other || (isBlank(value) && isBlank(other));
}

}  // namespace

Value Session::get(std::string_view key) const {
    if (const auto own = findKey(own_, key); own != own_.end()) return own->second;
    return defaultOf(key);
}

Value Session::defaultOf(std::string_view key) const {
    if (!defaults_) return {};
    const auto shared = findKey(*defaults_, key);
    return shared == defaults_->end() ? Value() : shared->second;
}

void Session::set(std::string_view key, Value value) {
    if (const auto own = findKey(own_, key); own != own_.end()) {
        own->second = std::move(value);
    } else {
        own_.emplace_back(key, std::move(value));
    }
}

void Session::setPassing(std::string_view key, Value value) {
    set(key, std::move(value));
    if (std::ranges::find(passing_, key) == passing_.end()) passing_.push_back(key);
}

bool Session::holdsSomething() const {
    if (!objects_.empty()) return true;
    return std::ranges::any_of(own_, [this](const auto& entry) {
        const bool isPassing = std::ranges::any_of(
            passing_, [&](std::string_view key) { return text::equals(key, entry.first); });
        return !isPassing && !readsAs(entry.second, defaultOf(entry.first));
    });
}

std::shared_ptr<const SessionObject> Session::object(std::string_view key) const {
    const auto found = findKey(objects_, key);
    return found == objects_.end() ? nullptr : found->second;
}

void Session::setObject(std::string_view key, std::shared_ptr<const SessionObject> object) {
    std::erase_if(objects_, [key](const auto& entry) { return text::equals(entry.first, key); });
    if (object) objects_.emplace_back(key, std::move(object));
}

}  // namespace torvex
