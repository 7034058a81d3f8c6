#pragma once

#include <string>
#include <string_view>

#include "platform/Deadline.h"
#include "platform/files/Descriptor.h"

/// Messages over TCP, each in time or not at all. Failures throw `UnavailableError`.
namespace torvex::catalogue {

/// Connected to the first address of the name that answers.
Descriptor connectTo(const std::string& host, const std::string& port, Deadline until);

void sendMessage(const Descriptor& socket, std::string_view message, Deadline until);
std::string receiveMessage(const Descriptor& socket, std::size_t longest, Deadline until);

}  // namespace torvex::catalogue
