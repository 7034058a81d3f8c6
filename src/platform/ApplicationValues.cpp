#include "platform/ApplicationValues.h"

#include <utility>

#include "platform/text/Text.h"

namespace torvex {

std::size_t ApplicationValues::KeyHash::operator()(std::string_view key) const {
    std::size_t hash = 14695981039346656037U;  // FNV-1a over the lower-cased bytes; keys are ASCII
    for (const char c : key) {
        const auto byte = static_cast<unsigned char>(c >= 'A' && c <= 'Z' ? c + 32 : c);
        hash = (hash ^ byte) * 1099511628211U;
    }
    return hash;
}

bool ApplicationValues::KeyEqual::operator()(std::string_view a, std::string_view b) const {
    return text::equals(a, b);
}

ApplicationValues::ApplicationValues() : map_(std::make_shared<const Map>()) {}

Value ApplicationValues::get(std::string_view key) const {
    const auto map = map_.load();
    const auto found = map->find(key);
    return found == map->end() ? Value() : found->second;
}

void ApplicationValues::set(std::string_view key, Value value) {
    const std::scoped_lock guard(writing_);
    const bool bracketed = pending_ != nullptr;
    if (!bracketed) pending_ = std::make_shared<Map>(*map_.load());
    (*pending_)[std::string(key)] = std::move(value);
    if (!bracketed) publish();
}

void ApplicationValues::lock() {
    writing_.lock();
    pending_ = std::make_shared<Map>(*map_.load());
}

void ApplicationValues::unlock() {
    publish();
    writing_.unlock();
}

/// Counted behind the values: whoever knows of the change finds it.
void ApplicationValues::publish() {
    map_.store(std::exchange(pending_, nullptr));
    changes_.fetch_add(1, std::memory_order_release);
}

}  // namespace torvex
