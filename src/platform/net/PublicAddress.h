#pragma once

struct sockaddr;

namespace torvex {

/// Whether an address is one of the open Internet: not of this machine, its networks, its link or a group,
/// nor kept for anything special. Addresses of version 6 that carry one of version 4 are judged by that.
/// Anything but an Internet address isn't.
bool isPublicAddress(const sockaddr& address);

}  // namespace torvex
