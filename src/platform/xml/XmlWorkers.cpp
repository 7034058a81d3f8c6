#include "platform/xml/XmlWorkers.h"

#include <algorithm>
#include <functional>

#include "platform/xml/WorkerMessages.h"
#include "platform/xml/XmlWorker.h"

namespace torvex {

namespace {

constexpr const char* tookTooLong = "the document took too long to process";
/// A helper that ends sooner has come to its own end; later, to the end of its time.
constexpr std::chrono::milliseconds ownEnd{500};

std::string outputOf(std::string_view answer) {
    workerMessages::Reply reply = workerMessages::readReply(answer);
    if (reply.faultCode != 0) throw XmlError(reply.output, reply.faultCode);
    return std::move(reply.output);
}

}  // namespace

/// A worker for one request.
class XmlWorkers::Turn {
  public:
    Turn(XmlWorkers& workers, Deadline until) : workers_(workers), worker_(workers.begin(until)) {}
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;
    ~Turn() { workers_.end(worker_, isDone_); }

    bool isFirst() const { return worker_->served() == 0; }
    std::string ask(const std::string& message, Deadline until) try {
        std::string answer = worker_->ask(message, {}, workerMessages::longest, until);
        isDone_ = true;
        return answer;
    } catch (const WorkerLate&) {
        throw XmlError(tookTooLong, -1);
    } catch (const WorkerError& error) {
        throw XmlError(error.what(), -1);
    }

  private:
    XmlWorkers& workers_;
    std::shared_ptr<WorkerProcess> worker_;
    bool isDone_ = false;
};

XmlWorkers::XmlWorkers(std::string program, Admission& admission, XmlWorkersLimits limits)
    : program_(std::move(program)), admission_(admission), limits_(limits) {}

XmlWorkers::~XmlWorkers() = default;

void XmlWorkers::check(const XmlText& document, Deadline deadline) {
    ask(document, nullptr, {}, deadline);
}

std::string XmlWorkers::transform(const XmlText& stylesheet, const XmlText& data,
                                  const NamedValues& parameters, Deadline deadline) {
    return ask(stylesheet, &data, parameters, deadline);
}

std::string XmlWorkers::ask(const XmlText& stylesheet, const XmlText* data, const NamedValues& parameters,
                            Deadline deadline) {
    const std::string message = workerMessages::write(stylesheet, data, parameters);
    if (message.size() > workerMessages::longest) throw XmlError("the document is too large", -1);
    const std::hash<std::string_view> hash;
    const std::string key = std::to_string(hash(stylesheet.bytes)) + " " +
                            std::to_string(data == nullptr ? 0 : hash(data->bytes));
    {
        const std::scoped_lock lock(mutex_);
        if (const auto failure = failures_.find(key)) throw XmlError(*failure, -1);
    }
    const Admission::Pass pass(admission_);
    for (;;) {
        Turn turn(*this, Deadline::in(limits_.patience).orEarlier(deadline));
        const auto begin = Deadline::Clock::now();
        try {
            return outputOf(turn.ask(message, Deadline::in(limits_.patience).orEarlier(deadline)));
        } catch (const XmlError& error) {
            remember(key, begin, error.what());
            throw;
        } catch (const WorkerGone&) {
            // One that has served others may have come to its end just now; another gets the request then.
            const bool cameSoon = Deadline::Clock::now() - begin < ownEnd;
            if (cameSoon && !turn.isFirst()) continue;
            remember(key, begin, tookTooLong);
            throw XmlError(cameSoon ? "the helper for XML ended" : tookTooLong, -1);
        }
    }
}

void XmlWorkers::remember(const std::string& key, Deadline::Clock::time_point begin, const char* failure) {
    const std::scoped_lock lock(mutex_);
    failures_.add(key, Deadline::Clock::now() - begin, failure);
}

std::shared_ptr<WorkerProcess> XmlWorkers::begin(Deadline until) {
    std::unique_lock lock(mutex_);
    const auto isReady = [this] { return isCancelled_ || !idle_.empty() || count_ < limits_.workers; };
    if (!changed_.wait_until(lock, until.until(), isReady)) throw XmlError(tookTooLong, -1);
    if (isCancelled_) throw XmlError("the server is about to end", -1);
    if (!idle_.empty()) {
        busy_.push_back(std::move(idle_.back()));
        idle_.pop_back();
        return busy_.back();
    }
    ++count_;
    lock.unlock();
    std::shared_ptr<WorkerProcess> worker;
    try {
        worker = std::make_shared<WorkerProcess>(program_, xmlWorkerArgument);
    } catch (const WorkerError&) {
        lock.lock();
        --count_;
        throw XmlError("the helper for XML can't be started", -1);
    } catch (...) {
        lock.lock();
        --count_;
        throw;
    }
    lock.lock();
    busy_.push_back(worker);
    return worker;
}

void XmlWorkers::end(const std::shared_ptr<WorkerProcess>& worker, bool mayGoOn) {
    {
        const std::scoped_lock lock(mutex_);
        std::erase(busy_, worker);
        if (mayGoOn && !isCancelled_ && worker->served() < limits_.requests) {
            idle_.push_back(worker);
        } else {
            --count_;
        }
    }
    changed_.notify_one();
}

void XmlWorkers::cancel() {
    {
        const std::scoped_lock lock(mutex_);
        isCancelled_ = true;
        for (const auto& worker : busy_) worker->kill();
    }
    changed_.notify_all();
}

}  // namespace torvex
