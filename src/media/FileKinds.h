#pragma once

#include <cstddef>
#include <string_view>

namespace torvex {

/// So many bytes of a file's beginning are enough to tell what it is.
inline constexpr std::size_t tellingBytes = 4096;

/// Whether a file that begins so can be what its name's suffix says ("jpg", in small letters). A picture must
/// begin as one of its format; what is told by no sign of its own, as text is, must begin as nothing else. Of
/// a suffix that isn't known, only programs are refused. `start` may be all of a short file, but no less than
/// `tellingBytes` of a long one. Pure.
bool beginsAs(std::string_view suffix, std::string_view start);

}  // namespace torvex
