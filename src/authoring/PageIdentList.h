#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace torvex {

/// Pages as callers list them, "12-13,14" or "aa.en.01,aa.en.02", and which of them are still to be done.
/// Entries are lower-cased; blanks and empty entries don't count.
class PageIdentList {
  public:
    explicit PageIdentList(std::string_view pageList);

    /// What `step` is done with leaves the list. Whether it was done with any.
    bool pass(const std::function<bool(const std::string&)>& step);
    /// Passes for as long as one of them gets something done: a page may have to wait for one behind it.
    void passes(const std::function<bool(const std::string&)>& step);

    const std::vector<std::string>& entries() const { return entries_; }
    /// The entries that are left, in their order, divided by commas.
    std::string text() const;

  private:
    std::vector<std::string> entries_;
};

}  // namespace torvex
