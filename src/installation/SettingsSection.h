#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <toml++/toml.h>
#include <vector>

namespace torvex {

/// One section of the settings file while it is read. Remembers which keys were asked for, so that the rest
/// can be refused. Readers leave the target alone when the key isn't there and throw `Error` for a wrong
/// value.
class SettingsSection {
  public:
    SettingsSection(const toml::table& file, std::string fileName, std::string name);

    void read(std::string_view key, std::string& target);
    void read(std::string_view key, bool& target);
    /// Texts, as ["a", "b"].
    void read(std::string_view key, std::vector<std::string>& target);
    /// Names and texts, as { name = "text" }.
    void read(std::string_view key, std::map<std::string, std::string, std::less<>>& target);
    void readSeconds(std::string_view key, std::chrono::milliseconds& target);
    /// Whole seconds; 0 is none.
    void readSeconds(std::string_view key, std::chrono::seconds& target);
    /// Whether the key is there; for a default that other settings give.
    bool has(std::string_view key) const { return table_ != nullptr && table_->get(key) != nullptr; }
    template <typename Number>
    void readNumber(std::string_view key, Number& target, std::int64_t least, std::int64_t most) {
        target = static_cast<Number>(number(key, static_cast<std::int64_t>(target), least, most));
    }

    /// Throws for a key that no reader asked for.
    void refuseOthers() const;

    [[noreturn]] void refuse(std::string_view key, const std::string& expected) const;

  private:
    const toml::node* find(std::string_view key);
    std::int64_t number(std::string_view key, std::int64_t present, std::int64_t least, std::int64_t most);
    std::string known() const;

    const toml::table* table_ = nullptr;
    std::string fileName_;
    std::string name_;
    std::vector<std::string> keys_;
};

}  // namespace torvex
