#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/xml/XmlTransformer.h"

/// What a program and its helper for XML say to each other: see `WorkerProcess`.
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

}  // namespace torvex::workerMessages
