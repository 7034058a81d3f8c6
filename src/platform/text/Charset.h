#pragma once

#include <string>
#include <string_view>

/// Other encodings than UTF-8, at the edges of the system. Built on ICU; safe from any thread.
namespace torvex::charset {

/// Whether `label` ("iso-8859-1", "shift_jis", ...) names an encoding that can be written.
bool isKnown(std::string_view label);

/// UTF-8 text in the encoding `label`. Characters that it doesn't have become decimal character references
/// ("&#8364;"), which HTML shows as the character. An unknown label gives the text unchanged.
std::string encodeForHtml(std::string_view utf8, std::string_view label);

/// Bytes in the encoding `label` as UTF-8; what can't be decoded becomes U+FFFD. An unknown label is read as
/// UTF-8.
std::string decode(std::string_view bytes, std::string_view label);

/// UTF-16, little endian, with its mark in front.
std::string toUtf16File(std::string_view utf8);

/// The text of a file's bytes: UTF-16 in either order and UTF-8 are known by their mark, which is dropped.
/// Without a mark the bytes must be UTF-8; otherwise throws `Error` that names the offset of the first bad
/// byte. With `assumeUtf16` bytes without a mark are read as UTF-16, little endian.
std::string decodeFile(std::string_view bytes, bool assumeUtf16 = false);

}  // namespace torvex::charset
