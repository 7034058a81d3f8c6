#include "installation/SettingsSection.h"

#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <fmt/ranges.h>

#include "platform/Errors.h"

namespace torvex {

namespace {

std::string place(const std::string& fileName, const toml::node& node) {
    return fmt::format("{}:{}", fileName, node.source().begin.line);
}

}  // namespace

SettingsSection::SettingsSection(const toml::table& file, std::string fileName, std::string name)
    : fileName_(std::move(fileName)), name_(std::move(name)) {
    const toml::node* node = file.get(name_);
    if (node == nullptr) return;
    table_ = node->as_table();
    if (table_ == nullptr) {
        throw Error(fmt::format("{}: {} must be a section: a line [{}] with its settings below",
                                place(fileName_, *node), name_, name_));
    }
}

const toml::node* SettingsSection::find(std::string_view key) {
    keys_.emplace_back(key);
    return table_ == nullptr ? nullptr : table_->get(key);
}

void SettingsSection::refuse(std::string_view key, const std::string& expected) const {
    const toml::node* node = table_ == nullptr ? nullptr : table_->get(key);
    const std::string where = node == nullptr ? fileName_ : place(fileName_, *node);
    throw Error(fmt::format("{}: {} in [{}] must be {}", where, key, name_, expected));
}

void SettingsSection::read(std::string_view key, std::string& target) {
    const toml::node* node = find(key);
    if (node == nullptr) return;
    if (!node->is_string()) refuse(key, "a text in quotes");
    target = node->as_string()->get();
}

void SettingsSection::read(std::string_view key, bool& target) {
    const toml::node* node = find(key);
    if (node == nullptr) return;
    if (!node->is_boolean()) refuse(key, "true or false");
    target = node->as_boolean()->get();
}

void SettingsSection::read(std::string_view key, std::vector<std::string>& target) {
    const toml::node* node = find(key);
    if (node == nullptr) return;
    const auto* array = node->as_array();
    constexpr auto* expected = "texts in brackets, [\"...\", \"...\"]";
    if (array == nullptr) refuse(key, expected);
    target.clear();
    for (const toml::node& text : *array) {
        if (!text.is_string()) refuse(key, expected);
        target.push_back(text.as_string()->get());
    }
}

void SettingsSection::read(std::string_view key, std::map<std::string, std::string, std::less<>>& target) {
    const toml::node* node = find(key);
    if (node == nullptr) return;
    const auto* table = node->as_table();
    constexpr auto* expected = "names and texts in braces, { name = \"text\" }";
    if (table == nullptr) refuse(key, expected);
    for (const auto& [name, text] : *table) {
        if (!text.is_string()) refuse(key, expected);
        target[std::string(name.str())] = text.as_string()->get();
    }
}

void SettingsSection::readSeconds(std::string_view key, std::chrono::milliseconds& target) {
    constexpr double most = 86'400;
    const toml::node* node = find(key);
    if (node == nullptr) return;
    const double seconds = node->value<double>().value_or(std::nan(""));
    if (!node->is_number() || !(seconds > 0 && seconds <= most)) {
        refuse(key, "a number of seconds above 0 and up to 86400");
    }
    target = std::chrono::milliseconds(std::llround(seconds * 1000));
}

void SettingsSection::readSeconds(std::string_view key, std::chrono::seconds& target) {
    constexpr std::int64_t tenYears = 315'360'000;
    target = std::chrono::seconds(number(key, target.count(), 0, tenYears));
}

std::int64_t SettingsSection::number(std::string_view key, std::int64_t present, std::int64_t least,
                                     std::int64_t most) {
    const toml::node* node = find(key);
    if (node == nullptr) return present;
    const auto* value = node->as_integer();
    if (value == nullptr || value->get() < least || value->get() > most) {
        refuse(key, fmt::format("a whole number from {} to {}", least, most));
    }
    return value->get();
}

std::string SettingsSection::known() const {
    return fmt::format("{}", fmt::join(keys_, ", "));
}

void SettingsSection::refuseOthers() const {
    if (table_ == nullptr) return;
    for (const auto& [key, node] : *table_) {
        if (std::find(keys_.begin(), keys_.end(), key.str()) != keys_.end()) continue;
        throw Error(fmt::format("{}: there is no setting {} in [{}]; the settings there are: {}",
                                place(fileName_, node), key.str(), name_, known()));
    }
}

}  // namespace torvex
