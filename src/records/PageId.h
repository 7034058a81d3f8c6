#pragma once

namespace torvex {

/// The permanent number of a page; above 0 for a real page. It holds whole numbers, but whatever a visitor
/// sends as a number becomes one, so that a fractional or huge one simply finds nothing.
using PageId = double;

}  // namespace torvex
