#include "platform/workers/WorkerProcess.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace torvex {

namespace {

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

    pid_t start(const std::string& program, const char* argument) {
        std::string name = "torvex";
        std::string role = argument;
        char* const arguments[] = {name.data(), role.data(), nullptr};
        char* const environment[] = {nullptr};
        pid_t process = -1;
        if (::posix_spawn(&process, program.c_str(), &actions_, &attributes_, arguments, environment) != 0) {
            throw WorkerError("the helper can't be started");
        }
        return process;
    }

  private:
    posix_spawn_file_actions_t actions_{};
    posix_spawnattr_t attributes_{};
};

constexpr std::size_t lengthSize = sizeof(std::uint32_t);

}  // namespace

WorkerProcess::WorkerProcess(const std::string& program, const char* argument) {
    int ends[2];
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, ends) != 0) {
        throw WorkerError("the helper can't be started");
    }
    socket_ = Descriptor(ends[0]);
    const Descriptor others(ends[1]);
    // The helper waits for its requests.
    ::fcntl(ends[1], F_SETFL, 0);
    process_ = Surroundings(ends[1]).start(program, argument);
}

WorkerProcess::~WorkerProcess() {
    kill();
    ::waitpid(process_, nullptr, 0);
}

void WorkerProcess::kill() {
    ::kill(process_, SIGKILL);
}

std::string WorkerProcess::ask(std::string_view head, std::string_view body, std::size_t longestAnswer,
                               Deadline until) {
    const auto length = static_cast<std::uint32_t>(head.size() + body.size());
    std::string beginning(reinterpret_cast<const char*>(&length), lengthSize);
    write(beginning.append(head), until);
    write(body, until);
    std::uint32_t size = 0;
    std::memcpy(&size, read(lengthSize, until).data(), lengthSize);
    if (size > longestAnswer) throw WorkerError("its output is too large");
    std::string answer = read(size, until);
    ++served_;
    return answer;
}

void WorkerProcess::wait(short event, Deadline until) const {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(until.left());
    pollfd waiting{socket_.number(), event, 0};
    const int most = static_cast<int>(std::clamp<std::int64_t>(left.count(), 0, 60'000));
    if (::poll(&waiting, 1, most) == 0 && until.hasPassed()) throw WorkerLate();
}

void WorkerProcess::write(std::string_view bytes, Deadline until) const {
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

std::string WorkerProcess::read(std::size_t size, Deadline until) const {
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

}  // namespace torvex
