#pragma once

#include <string>

namespace torvex {

struct HostContext;

/// The classes write addresses of this site as a scheme and the host that was asked. Where http and https
/// listen on ports of their own (`torvex_port_http` and `torvex_port_https`, set by the server), the port
/// that was asked belongs to one scheme only: this gives every such address in `text` the port of its scheme.
std::string withPublicPorts(const HostContext& host, std::string text);

}  // namespace torvex
