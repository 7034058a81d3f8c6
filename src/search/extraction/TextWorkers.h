#pragma once

#include <chrono>
#include <memory>
#include <mutex>
#include <string>

#include "platform/workers/WorkerProcess.h"
#include "search/extraction/TextExtractor.h"

namespace torvex::catalogue {

/// The argument by which the program becomes a helper that reads documents. For the program itself alone.
inline constexpr const char* textWorkerArgument = "--text-worker";

/// The life of such a helper. The exit code of the process.
int runTextWorker();

/// Has files read by a process of its own, confined as WorkerLimits.h says: a document made with skill, or one
/// that its reader has a fault with, costs its own text and nothing else. One file is read at a time. Safe to
/// share between threads.
class TextWorkers final : public TextExtractor {
  public:
    /// `program` is started with `textWorkerArgument` when there is something to read.
    explicit TextWorkers(std::string program,
                         std::chrono::milliseconds patience = std::chrono::milliseconds(60'000))
        : program_(std::move(program)), patience_(patience) {}

    Reading read(const std::string& fileName, std::string_view bytes) override;

    /// Ends what is at work; every further reading fails.
    void cancel();

  private:
    std::string ask(const std::string& head, std::string_view bytes);
    std::shared_ptr<WorkerProcess> worker();
    bool isEnding();
    void drop();

    const std::string program_;
    const std::chrono::milliseconds patience_;
    std::mutex reading_;  ///< one at a time; taken before `mutex_`
    std::mutex mutex_;
    std::shared_ptr<WorkerProcess> worker_;
    bool isCancelled_ = false;
};

}  // namespace torvex::catalogue
