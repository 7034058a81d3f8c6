#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "host/http/Answer.h"
#include "host/http/RequestHead.h"
#include "host/http/RequestTarget.h"

namespace torvex {

struct PageRoute;
struct FileGuard;
class BodySink;

/// One request on its way through the pipeline. Read by the thread that has it at the moment: the loop, then
/// a worker, then the loop again.
class Exchange {
  public:
    virtual ~Exchange() = default;

    /// Sends the answer; once for each request, from any thread. `self` is this, handed on so that its last
    /// owner is the loop.
    virtual void finish(std::shared_ptr<Exchange> self, Answer answer) = 0;

    virtual const RequestHead& head() const = 0;
    virtual const std::string& body() const = 0;

    RequestTarget target;
    std::string_view host;            ///< as the request names it; "" for old clients that name none
    const PageRoute* page = nullptr;  ///< what answers: a page, a guarded file, or else a public file
    const FileGuard* guard = nullptr;
    std::shared_ptr<BodySink> sink{};  ///< where the body goes instead of into memory
    std::string remoteAddress;         ///< the visitor's, also behind a trusted proxy
    std::uint64_t origin = 0;          ///< the same for all requests of one address
    std::uint16_t localPort = 0;
    bool isTls = false;  ///< whether the visitor speaks https, to this server or to a trusted proxy
};

}  // namespace torvex
