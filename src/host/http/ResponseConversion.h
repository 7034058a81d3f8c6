#pragma once

#include "host/http/Answer.h"
#include "platform/Response.h"

namespace torvex {

/// The answer that a page's response stands for: its text in its charset (UTF-8 unless it names one), its
/// header fields without those that are the server's own. Line breaks can't get into a field.
Answer toAnswer(Response response);

}  // namespace torvex
