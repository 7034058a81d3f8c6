#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <sys/types.h>

#include "platform/Deadline.h"
#include "platform/Errors.h"
#include "platform/files/Descriptor.h"

namespace torvex {

/// The helper has ended before it answered.
struct WorkerGone {};
/// It doesn't answer in time.
struct WorkerLate {};
/// It can't be started, or answers with too much.
class WorkerError : public Error {
  public:
    using Error::Error;
};

/// This program once more, as a helper that is confined (see WorkerLimits.h) and answers requests: what comes
/// from outside is taken apart there. It finds a socket as its standard input and nothing else of this
/// process. A message is a length of four bytes and as many bytes; both sides are of one machine and one
/// build. One thread talks to it at a time; any may kill it.
class WorkerProcess {
  public:
    /// `argument` is by what the program knows what to be.
    WorkerProcess(const std::string& program, const char* argument);
    WorkerProcess(const WorkerProcess&) = delete;
    WorkerProcess& operator=(const WorkerProcess&) = delete;
    ~WorkerProcess();

    /// How many requests it has answered.
    unsigned served() const { return served_; }
    void kill();

    /// The request is both texts, one behind the other. Throws `WorkerGone`, `WorkerLate` and `WorkerError`;
    /// then it is good for nothing any more.
    std::string ask(std::string_view head, std::string_view body, std::size_t longestAnswer, Deadline until);

  private:
    void wait(short event, Deadline until) const;
    void write(std::string_view bytes, Deadline until) const;
    std::string read(std::size_t size, Deadline until) const;

    Descriptor socket_;
    pid_t process_ = -1;
    unsigned served_ = 0;
};

}  // namespace torvex
