#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <variant>

#include "platform/files/Descriptor.h"

namespace torvex {

/// A part of an open file, sent from there without being read into memory.
struct FileAnswer {
    std::shared_ptr<const Descriptor> file;
    std::uint64_t offset = 0;
    std::uint64_t length = 0;
};

/// What is sent back. The connection adds what concerns itself: Date, Connection, Content-Length, and the
/// header fields that every answer carries. Plain data; may be made on any thread.
struct Answer {
    using Body = std::variant<std::string, std::shared_ptr<const std::string>, FileAnswer>;

    int status = 200;
    std::string fields;  ///< "Name: value\r\n" for each
    Body body;
    bool hasLength = true;  ///< false for 304, which has no body at all
    bool closes = false;    ///< the connection ends with this answer
    /// Some of `fields` may be of those that every answer carries, and stand in their place.
    bool replacesFields = false;

    void addField(std::string_view name, std::string_view value) {
        fields.append(name).append(": ").append(value).append("\r\n");
    }
};

/// "Not Found" for 404; "" for a status that has no name here.
std::string_view statusName(int status);

}  // namespace torvex
