#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// Finding the marked places of a template. Offsets are in bytes.
namespace torvex::markers {

inline constexpr std::string_view opening = "<!--!";
inline constexpr std::string_view closing = "!-->";

/// What a page may grow to by being filled. No site's page comes near it; templates and bodies that name each
/// other many times would otherwise grow without end.
inline constexpr std::size_t largestPage = 32u << 20;

/// Throws `Error` when a text of `size` bytes would be larger than that with `count` times `piece` bytes in
/// it.
void checkSize(std::size_t size, std::size_t piece, std::size_t count = 1);

/// <!--!name!-->, <!--!name_start!--> and <!--!name_end!-->.
std::string tag(std::string_view name);
std::string blockStart(std::string_view name);
std::string blockEnd(std::string_view name);

/// Where a marker next stands, at or behind `from`; `npos` when it stands nowhere. Ignores case.
std::size_t find(std::string_view text, std::string_view marker, std::size_t from = 0);

struct Block {
    std::size_t begin;       ///< of the start marker
    std::size_t innerBegin;  ///< behind the start marker
    std::size_t innerEnd;    ///< of the text between the markers
    std::size_t end;         ///< behind the end marker
};

/// The first block at or behind `from`; nothing without a start marker or without an end marker behind it.
std::optional<Block> findBlock(std::string_view text, std::string_view startMarker,
                               std::string_view endMarker, std::size_t from = 0);

/// Replaces every block of that name. `replacement` may be a part of the text.
void replaceBlocks(std::string& text, std::string_view name, std::string_view replacement);

/// Replaces the blocks `name` and then `name_1`, `name_2`, ..., up to the first number of which there is no
/// block. What an earlier number has replaced counts as gone for the later ones, and what was put in is
/// searched for none of them. One pass over the text, whatever the count of blocks.
void replaceNumberedBlocks(std::string& text, std::string_view name, std::string_view replacement);

/// The text without any marker; an opening without a closing stays, with all that follows it.
std::string withoutMarkers(std::string_view text);

}  // namespace torvex::markers
