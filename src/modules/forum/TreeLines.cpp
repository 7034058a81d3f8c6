#include "modules/forum/TreeLines.h"

#include <algorithm>

namespace torvex {

std::size_t levelOf(std::string_view reference) {
    return (reference.size() + 1) / 3;  // the nearest whole number to a third
}

std::vector<TreeLine> TreeLines::before(std::string_view reference) {
    const std::size_t level = levelOf(reference);
    if (level >= levels_.size()) levels_.resize(level + 1);
    std::vector<TreeLine> lines;
    lines.reserve(level + 1);
    for (std::size_t i = 1; i < level; ++i)
        lines.push_back(levels_[i] ? TreeLine::Vertical : TreeLine::Blank);
    lines.push_back(levels_[level] ? TreeLine::Node : TreeLine::LastNode);
    std::fill(levels_.begin() + static_cast<std::ptrdiff_t>(level) + 1, levels_.end(), false);
    levels_[level] = true;
    return lines;
}

}  // namespace torvex
