#pragma once

#include <string>

namespace torvex {
class FileSystem;

/// One file put in the place of another, until it is known whether the change stays: unless `keep` is called,
/// both go back to where they were. At no moment is the place empty while the change is made.
class FileSwap {
  public:
    /// Nothing has changed when it throws.
    FileSwap(FileSystem& files, std::string by, std::string place);
    FileSwap(const FileSwap&) = delete;
    FileSwap& operator=(const FileSwap&) = delete;
    ~FileSwap();

    void keep();

  private:
    FileSystem& files_;
    const std::string by_;
    const std::string place_;
    std::string aside_;  ///< where the former content is; "" when there was none
    bool isKept_ = false;
};

}  // namespace torvex
