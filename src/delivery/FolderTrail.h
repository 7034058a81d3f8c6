#pragma once

#include <algorithm>
#include <string>
#include <vector>

namespace torvex {

/// The folders on the way to a first child. Inconsistent rows may lead in a circle; the way then ends.
class FolderTrail {
  public:
    /// Whether the way goes on through this folder: not when it was passed before.
    bool leadsOn(const std::string& nodeId) {
        if (std::find(seen_.begin(), seen_.end(), nodeId) != seen_.end()) return false;
        seen_.push_back(nodeId);
        return true;
    }

  private:
    std::vector<std::string> seen_;
};

}  // namespace torvex
