#pragma once

#include <cstdint>
#include <optional>

#include "host/http/Answer.h"

namespace torvex {

class EventLoop;
class Exchange;
class RequestAccount;
struct Source;

/// What is said to a request of which the header is there.
struct Admission {
    std::optional<Answer> refusal;  ///< the body needn't be read then
    std::uint64_t bodyLimit = 0;    ///< bytes
};

/// Finds out for whom a request counts, has it examined, and says where its body goes. The same for every
/// protocol.
Admission admit(EventLoop& loop, const Source& source, Exchange& exchange, RequestAccount& account);

}  // namespace torvex
