#pragma once

namespace torvex {

/// Stands for the list of the parent.
inline constexpr int inheritedGroup = 0;
/// The groups above this one are real and need a login; it is "everybody".
inline constexpr int everybodyGroup = 1;

}  // namespace torvex
