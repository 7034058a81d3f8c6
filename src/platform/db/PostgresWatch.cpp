#include "platform/db/PostgresWatch.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <iterator>
#include <mutex>
#include <poll.h>
#include <sys/eventfd.h>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

#include "platform/SharedCell.h"
#include "platform/db/PostgresConnection.h"
#include "platform/db/PostgresStatement.h"
#include "platform/files/Descriptor.h"

namespace torvex::db {

namespace {

constexpr int betweenTries = 1000;   ///< milliseconds, to a server that can't be reached
constexpr int longestAnswer = 2000;  ///< milliseconds, to a question that costs the server nothing

struct FreeNotification {
    void operator()(PGnotify* notification) const noexcept { PQfreemem(notification); }
};
using Notification = std::unique_ptr<PGnotify, FreeNotification>;

PostgresResult run(PGconn* connection, const char* statement) {
    PostgresResult result(PQexec(connection, statement));
    if (!isFine(result.get())) throw DatabaseError("the watch has failed");
    return result;
}

}  // namespace

class PostgresListener::Implementation {
  public:
    Implementation(std::string text, std::string user, std::string password)
        : text_(std::move(text)),
          user_(std::move(user)),
          password_(std::move(password)),
          call_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
        if (!call_) throw std::system_error(errno, std::generic_category(), "eventfd");
        thread_ = std::thread([this] { work(); });
    }
    Implementation(const Implementation&) = delete;
    Implementation& operator=(const Implementation&) = delete;
    ~Implementation() {
        isStopping_ = true;
        wake();
        thread_.join();
    }

    SharedStates now() const { return states_.load(); }

    void ask(const void* asker, ContentWatch::Told told) {
        {
            const std::scoped_lock guard(mutex_);
            if (!states_.isEmpty()) {
                waiting_.push_back({asker, std::move(told)});
                return wake();
            }
        }
        told(nullptr);
    }

    void forget(const void* asker) {
        const std::scoped_lock guard(mutex_);
        for (Questions* questions : {&waiting_, &underWay_})
            std::erase_if(*questions, [asker](const Question& one) { return one.asker == asker; });
    }

  private:
    void work() {
        while (!isStopping_) {
            try {
                listen(connectPostgres(text_, user_, password_).get());
            } catch (const std::exception&) {
                // Tried again below. Whoever needs the database is told by what fails there.
            }
            states_.store(nullptr);
            take();
            tell(nullptr);
            if (!isStopping_) wait(-1, betweenTries);
        }
    }

    void listen(PGconn* connection) {
        run(connection, "listen torvex_changes");
        begin(run(connection, "select tableName from TORVEX_TABLE_CHANGES"));
        while (!isStopping_) {
            wait(PQsocket(connection), -1);
            if (PQconsumeInput(connection) == 0) return;
            note(connection);
            if (take() && !answer(connection)) return;
        }
    }

    /// The server tells what was committed before a question came, before it answers. False when the line is broken.
    bool answer(PGconn* connection) {
        if (!hasAnswered(connection)) return false;
        note(connection);
        tell(states_.load());
        return true;
    }

    /// To nothing at all, which the server answers all the same.
    static bool hasAnswered(PGconn* connection) {
        if (PQsendQuery(connection, "") == 0) return false;
        const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(longestAnswer);
        while (true) {
            while (PQisBusy(connection) == 0) {
                const PostgresResult result(PQgetResult(connection));
                if (!result) return PQstatus(connection) == CONNECTION_OK;
            }
            pollfd socket{PQsocket(connection), POLLIN, 0};
            const auto left =
                std::chrono::duration_cast<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
            if (left.count() <= 0) return false;
            ::poll(&socket, 1, static_cast<int>(left.count()));
            if (PQconsumeInput(connection) == 0) return false;
        }
    }

    struct Question {
        const void* asker;
        ContentWatch::Told told;
    };
    using Questions = std::vector<Question>;

    /// One question to the server is for all who have asked by now; whether there is anybody.
    bool take() {
        const std::scoped_lock guard(mutex_);
        std::ranges::move(waiting_, std::back_inserter(underWay_));
        waiting_.clear();
        return !underWay_.empty();
    }

    /// Under the lock, so that nobody is told any more who has been forgotten.
    void tell(const SharedStates& states) {
        const std::scoped_lock guard(mutex_);
        for (const Question& one : underWay_) one.told(states);
        underWay_.clear();
    }

    /// What was told while nobody listened isn't known, so all tables count as changed.
    void begin(const PostgresResult& names) {
        const auto states = std::make_shared<TableStates>();
        ++begun_;
        for (int row = 0; row < PQntuples(names.get()); ++row)
            states->note(PQgetvalue(names.get(), row, 0), begun_ << 40);
        states_.store(states);
    }

    /// All that has come, at once.
    void note(PGconn* connection) {
        std::shared_ptr<TableStates> changed;
        for (Notification one(PQnotifies(connection)); one; one.reset(PQnotifies(connection))) {
            if (!changed) changed = std::make_shared<TableStates>(*states_.load());
            changed->add(one->extra);
        }
        if (changed) states_.store(std::move(changed));
    }

    void wake() const { ::eventfd_write(call_.number(), 1); }

    /// Until there is something to read, somebody asks, or it is to stop; `milliseconds` as `poll` takes them.
    void wait(int socket, int milliseconds) const {
        std::array<pollfd, 2> sockets{{{call_.number(), POLLIN, 0}, {socket, POLLIN, 0}}};
        ::poll(sockets.data(), sockets.size(), milliseconds);
        eventfd_t calls = 0;
        ::eventfd_read(call_.number(), &calls);
    }

    const std::string text_;
    const std::string user_;
    const std::string password_;
    const Descriptor call_;  ///< to stop, or to ask
    std::mutex mutex_;
    Questions waiting_;
    Questions underWay_;  ///< while the server is asked
    std::int64_t begun_ = 0;
    std::atomic<bool> isStopping_ = false;
    SharedCell<TableStates> states_;
    std::thread thread_;
};

PostgresListener::PostgresListener(std::string text, std::string user, std::string password)
    : implementation_(
          std::make_unique<Implementation>(std::move(text), std::move(user), std::move(password))) {}

PostgresListener::~PostgresListener() = default;

SharedStates PostgresListener::now() const {
    return implementation_->now();
}

void PostgresListener::ask(const void* asker, ContentWatch::Told told) {
    implementation_->ask(asker, std::move(told));
}

void PostgresListener::forget(const void* asker) {
    implementation_->forget(asker);
}

namespace {

class PostgresWatch final : public ContentWatch {
  public:
    PostgresWatch(std::shared_ptr<PostgresListener> listener, bool asks)
        : listener_(std::move(listener)), asks_(asks) {}
    PostgresWatch(const PostgresWatch&) = delete;
    PostgresWatch& operator=(const PostgresWatch&) = delete;
    ~PostgresWatch() override { listener_->forget(this); }

    SharedStates now() override { return listener_->now(); }
    bool mustAsk() const override { return asks_; }
    void ask(const Told& told) override { listener_->ask(this, told); }

  private:
    const std::shared_ptr<PostgresListener> listener_;
    const bool asks_;
};

}  // namespace

std::unique_ptr<ContentWatch> watchBy(std::shared_ptr<PostgresListener> listener, bool asks) {
    return std::make_unique<PostgresWatch>(std::move(listener), asks);
}

}  // namespace torvex::db
