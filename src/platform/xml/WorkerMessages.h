#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/xml/XmlTransformer.h"

/// What a program and its helper for XML say to each other: each message is a length of four bytes and as
/// many bytes. Both are of one machine and one build.
namespace torvex::workerMessages {

inline constexpr std::size_t longest = 64u << 20;

struct Request {
    XmlText stylesheet;
    std::optional<XmlText> data;  ///< none: only a look at whether the other is a document
    NamedValues parameters;
};
struct Reply {
    std::string output;
    int faultCode = 0;  ///< 0: none; then `output` is why
};

std::string write(const XmlText& stylesheet, const XmlText* data, const NamedValues& parameters);
std::string write(const Reply& reply);
/// Throw `Error` for what isn't one.
Request readRequest(std::string_view message);
Reply readReply(std::string_view message);

/// The length in front of a message, in as many bytes as `lengthSize`.
inline constexpr std::size_t lengthSize = 4;
std::string withLength(std::string_view message);
std::size_t readLength(std::string_view bytes);

}  // namespace torvex::workerMessages
