#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "platform/Deadline.h"
#include "platform/files/Descriptor.h"

struct addrinfo;

/// Messages over TCP, each in time or not at all. Failures throw `UnavailableError`.
namespace torvex::catalogue {

struct FreeAddresses {
    void operator()(::addrinfo* addresses) const;
};
using Addresses = std::unique_ptr<::addrinfo, FreeAddresses>;

/// Connected to the first address of the name that answers.
Descriptor connectTo(const std::string& host, const std::string& port, Deadline until);

void sendMessage(const Descriptor& socket, std::string_view message, Deadline until);
std::string receiveMessage(const Descriptor& socket, std::size_t longest, Deadline until);

}  // namespace torvex::catalogue
