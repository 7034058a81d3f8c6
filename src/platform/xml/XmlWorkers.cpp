#include "platform/xml/XmlWorkers.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <functional>
#include <poll.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/files/Descriptor.h"
#include "platform/xml/WorkerMessages.h"
#include "platform/xml/XmlWorker.h"

namespace torvex {

namespace {

constexpr const char* tookTooLong = "the document took too long to process";
/// A helper that ends sooner has come to its own end; later, to the end of its time.
constexpr std::chrono::milliseconds ownEnd{500};

/// What a new process is to find: the socket and nothing else of this one.
class Surroundings {
  public:
    explicit Surroundings(int socket) {
        posix_spawn_file_actions_init(&actions_);
        posix_spawn_file_actions_adddup2(&actions_, socket, STDIN_FILENO);
        posix_spawn_file_actions_addopen(&actions_, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_addopen(&actions_, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_addclosefrom_np(&actions_, STDERR_FILENO + 1);
        posix_spawn_file_actions_addchdir_np(&actions_, "/");
        posix_spawnattr_init(&attributes_);
        sigset_t none;
        sigset_t all;
        sigemptyset(&none);
        sigfillset(&all);
        posix_spawnattr_setsigmask(&attributes_, &none);
        posix_spawnattr_setsigdefault(&attributes_, &all);
        // A group of its own: Ctrl-C at a terminal is for the program, which ends its helpers.
        posix_spawnattr_setflags(&attributes_,
                                 POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETPGROUP);
    }
    Surroundings(const Surroundings&) = delete;
    Surroundings& operator=(const Surroundings&) = delete;
    ~Surroundings() {
        posix_spawn_file_actions_destroy(&actions_);
        posix_spawnattr_destroy(&attributes_);
    }

    pid_t start(const std::string& program) {
        std::string name = "torvex";
        std::string argument = xmlWorkerArgument;
        char* const arguments[] = {name.data(), argument.data(), nullptr};
        char* const environment[] = {nullptr};
        pid_t process = -1;
        if (::posix_spawn(&process, program.c_str(), &actions_, &attributes_, arguments, environment) != 0) {
            throw XmlError("the helper for XML can't be started", -1);
        }
        return process;
    }

  private:
    posix_spawn_file_actions_t actions_{};
    posix_spawnattr_t attributes_{};
};

/// Says that the other side ended before it answered.
struct WorkerGone {};

std::string outputOf(std::string_view answer) {
    workerMessages::Reply reply = workerMessages::readReply(answer);
    if (reply.faultCode != 0) throw XmlError(reply.output, reply.faultCode);
    return std::move(reply.output);
}

}  // namespace

/// One process. One thread talks to it at a time; any may kill it.
class XmlWorkers::Worker {
  public:
    explicit Worker(const std::string& program) {
        int ends[2];
        if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, ends) != 0) {
            throw XmlError("the helper for XML can't be started", -1);
        }
        socket_ = Descriptor(ends[0]);
        const Descriptor others(ends[1]);
        // The helper waits for its requests.
        ::fcntl(ends[1], F_SETFL, 0);
        process_ = Surroundings(ends[1]).start(program);
    }
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;
    ~Worker() {
        kill();
        ::waitpid(process_, nullptr, 0);
    }

    unsigned served() const { return served_; }
    void kill() { ::kill(process_, SIGKILL); }

    /// Throws `XmlError` when there is no answer in time, and `WorkerGone`.
    std::string ask(const std::string& message, Deadline until) {
        write(workerMessages::withLength(message), until);
        const std::size_t size = workerMessages::readLength(read(workerMessages::lengthSize, until));
        if (size > workerMessages::longest) throw XmlError("its output is too large", -1);
        std::string answer = read(size, until);
        ++served_;
        return answer;
    }

  private:
    void wait(short event, Deadline until) const {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(until.left());
        pollfd waiting{socket_.number(), event, 0};
        const int most = static_cast<int>(std::clamp<std::int64_t>(left.count(), 0, 60'000));
        if (::poll(&waiting, 1, most) == 0 && until.hasPassed()) throw XmlError(tookTooLong, -1);
    }

    void write(std::string_view bytes, Deadline until) const {
        while (!bytes.empty()) {
            const ssize_t sent = ::send(socket_.number(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
            if (sent > 0) {
                bytes.remove_prefix(static_cast<std::size_t>(sent));
            } else if (errno == EAGAIN || errno == EINTR) {
                wait(POLLOUT, until);
            } else {
                throw WorkerGone();
            }
        }
    }

    std::string read(std::size_t size, Deadline until) const {
        std::string bytes(size, '\0');
        for (std::size_t at = 0; at < size;) {
            const ssize_t taken = ::recv(socket_.number(), bytes.data() + at, size - at, 0);
            if (taken > 0) {
                at += static_cast<std::size_t>(taken);
            } else if (taken < 0 && (errno == EAGAIN || errno == EINTR)) {
                wait(POLLIN, until);
            } else {
                throw WorkerGone();
            }
        }
        return bytes;
    }

    Descriptor socket_;
    pid_t process_ = -1;
    unsigned served_ = 0;
};

/// A worker for one request.
class XmlWorkers::Turn {
  public:
    Turn(XmlWorkers& workers, Deadline until) : workers_(workers), worker_(workers.begin(until)) {}
    Turn(const Turn&) = delete;
    Turn& operator=(const Turn&) = delete;
    ~Turn() { workers_.end(worker_, isDone_); }

    bool isFirst() const { return worker_->served() == 0; }
    std::string ask(const std::string& message, Deadline until) {
        std::string answer = worker_->ask(message, until);
        isDone_ = true;
        return answer;
    }

  private:
    XmlWorkers& workers_;
    std::shared_ptr<Worker> worker_;
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

std::shared_ptr<XmlWorkers::Worker> XmlWorkers::begin(Deadline until) {
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
    std::shared_ptr<Worker> worker;
    try {
        worker = std::make_shared<Worker>(program_);
    } catch (...) {
        lock.lock();
        --count_;
        throw;
    }
    lock.lock();
    busy_.push_back(worker);
    return worker;
}

void XmlWorkers::end(const std::shared_ptr<Worker>& worker, bool mayGoOn) {
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
