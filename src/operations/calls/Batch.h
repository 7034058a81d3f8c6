#pragma once

#include <iosfwd>
#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "operations/calls/BatchAnswer.h"
#include "operations/calls/BatchRequest.h"
#include "operations/register/Register.h"
#include "platform/Services.h"

namespace torvex::operations {

/// Runs the owner's requests without a browser, each given as a line of JSON, on the public classes: for
/// scripts, and for tests that drive the whole system. Visitors' sessions last as long as the engine.
///
/// Safe to use from several threads: the requests of one visitor run one at a time, those of different
/// visitors in parallel.
class BatchEngine {
  public:
    BatchEngine(const Register& classes, const Services& services);
    ~BatchEngine();

    /// The answer to one line, without a line break. Never throws for what a line asks or a step does: that
    /// is part of the answer.
    std::string run(const std::string& line);
    BatchAnswer run(const BatchRequest& request);

  private:
    struct Visitor;

    Visitor& visitorNamed(const std::string& name);
    void runFor(Visitor& visitor, const BatchRequest& request, BatchAnswer& answer);

    const Register& classes_;
    const Services services_;
    std::mutex mutex_;  ///< guards the map, not what it points to
    std::map<std::string, std::unique_ptr<Visitor>> visitors_;
};

/// Answers every line of `in` with a line on `out`, in order, each written out at once.
void runBatch(BatchEngine& engine, std::istream& in, std::ostream& out);

}  // namespace torvex::operations
