#pragma once

#include "platform/HostContext.h"
#include "platform/Request.h"
#include "platform/text/Text.h"

namespace torvex {

/// Whether the request brings a form, and doesn't just ask for the page.
inline bool isPosted(const HostContext& host) {
    return text::equals(host.request.serverVariable("request_method"), "POST");
}

}  // namespace torvex
