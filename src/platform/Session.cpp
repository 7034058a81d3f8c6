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

}  // namespace

Value Session::get(std::string_view key) const {
    if (const auto own = findKey(own_, key); own != own_.end()) return own->second;
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

std::shared_ptr<const SessionObject> Session::object(std::string_view key) const {
    const auto found = findKey(objects_, key);
    return found == objects_.end() ? nullptr : found->second;
}

void Session::setObject(std::string_view key, std::shared_ptr<const SessionObject> object) {
    std::erase_if(objects_, [key](const auto& entry) { return text::equals(entry.first, key); });
    if (object) objects_.emplace_back(key, std::move(object));
}

}  // namespace torvex
