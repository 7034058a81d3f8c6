#pragma once

#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "platform/Admission.h"
#include "platform/SlowFailures.h"
#include "platform/workers/WorkerProcess.h"
#include "platform/xml/XmlTransformer.h"

namespace torvex {

struct XmlWorkersLimits {
    unsigned workers = 2;                       ///< at a time; further callers wait for one
    unsigned requests = 1000;                   ///< of one worker's life
    std::chrono::milliseconds patience{5'000};  ///< for a worker, and then for its answer
};

/// Has the work on XML done by processes of its own, confined as WorkerLimits.h says, so that a document made
/// with skill takes neither this process's memory nor its time. Processes are started when they are needed
/// and used again; one that doesn't answer in time, or goes on too long, is killed. Two documents that took
/// long to fail are refused for a while (see `SlowFailures`). Safe to share between threads.
class XmlWorkers final : public XmlTransformer {
  public:
    /// `program` is started with `xmlWorkerArgument`. `admission` must outlive this.
    XmlWorkers(std::string program, Admission& admission, XmlWorkersLimits limits = {});
    XmlWorkers(const XmlWorkers&) = delete;
    XmlWorkers& operator=(const XmlWorkers&) = delete;
    ~XmlWorkers() override;

    void check(const XmlText& document, Deadline deadline) override;
    std::string transform(const XmlText& stylesheet, const XmlText& data, const NamedValues& parameters,
                          Deadline deadline) override;

    /// Ends what is at work; every further request fails.
    void cancel();

  private:
    class Turn;

    std::string ask(const XmlText& stylesheet, const XmlText* data, const NamedValues& parameters,
                    Deadline deadline);
    void remember(const std::string& key, Deadline::Clock::time_point begin, const char* failure);
    std::shared_ptr<WorkerProcess> begin(Deadline until);
    void end(const std::shared_ptr<WorkerProcess>& worker, bool mayGoOn);

    const std::string program_;
    Admission& admission_;
    const XmlWorkersLimits limits_;
    std::mutex mutex_;
    std::condition_variable changed_;
    bool isCancelled_ = false;
    std::vector<std::shared_ptr<WorkerProcess>> idle_;
    std::vector<std::shared_ptr<WorkerProcess>> busy_;
    unsigned count_ = 0;  ///< idle, busy, and about to be
    SlowFailures<std::string> failures_;
};

}  // namespace torvex
