#include "platform/db/PostgresWatch.h"

#include <array>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <poll.h>
#include <sys/eventfd.h>
#include <system_error>
#include <thread>
#include <unistd.h>

#include "platform/SharedCell.h"
#include "platform/db/PostgresConnection.h"
#include "platform/db/PostgresStatement.h"
#include "platform/files/Descriptor.h"

namespace torvex::db {

namespace {

constexpr int betweenTries = 1000;  ///< milliseconds, to a server that can't be reached

struct FreeNotification {
    void operator()(PGnotify* notification) const noexcept { PQfreemem(notification); }
};
using Notification = std::unique_ptr<PGnotify, FreeNotification>;

PostgresResult run(PGconn* connection, const char* statement) {
    PostgresResult result(PQexec(connection, statement));
    const ExecStatusType status = PQresultStatus(result.get());
    if (status != PGRES_COMMAND_OK && status != PGRES_TUPLES_OK) throw DatabaseError("the watch has failed");
    return result;
}

}  // namespace

class PostgresListener::Implementation {
  public:
    Implementation(std::string text, std::string user, std::string password)
        : text_(std::move(text)),
          user_(std::move(user)),
          password_(std::move(password)),
          stop_(::eventfd(0, EFD_CLOEXEC)) {
        if (!stop_) throw std::system_error(errno, std::generic_category(), "eventfd");
        thread_ = std::thread([this] { work(); });
    }
    Implementation(const Implementation&) = delete;
    Implementation& operator=(const Implementation&) = delete;
    ~Implementation() {
        isStopping_ = true;
        ::eventfd_write(stop_.number(), 1);
        thread_.join();
    }

    SharedStates now() const { return states_.load(); }

  private:
    void work() {
        while (!isStopping_) {
            try {
                listen(connectPostgres(text_, user_, password_).get());
            } catch (const std::exception&) {
                // Tried again below. Whoever needs the database is told by what fails there.
            }
            states_.store(nullptr);
            wait(-1, betweenTries);
        }
    }

    void listen(PGconn* connection) {
        run(connection, "listen torvex_changes");
        begin(run(connection, "select tableName from TORVEX_TABLE_CHANGES"));
        while (!isStopping_) {
            wait(PQsocket(connection), -1);
            if (PQconsumeInput(connection) == 0) return;
            note(connection);
        }
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

    /// Until there is something to read, or it is to stop; `milliseconds` as `poll` takes them.
    void wait(int socket, int milliseconds) const {
        std::array<pollfd, 2> sockets{{{stop_.number(), POLLIN, 0}, {socket, POLLIN, 0}}};
        ::poll(sockets.data(), sockets.size(), milliseconds);
    }

    const std::string text_;
    const std::string user_;
    const std::string password_;
    const Descriptor stop_;
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

namespace {

class PostgresWatch final : public ContentWatch {
  public:
    explicit PostgresWatch(std::shared_ptr<const PostgresListener> listener)
        : listener_(std::move(listener)) {}

    SharedStates now() override { return listener_->now(); }

  private:
    std::shared_ptr<const PostgresListener> listener_;
};

}  // namespace

std::unique_ptr<ContentWatch> watchBy(std::shared_ptr<const PostgresListener> listener) {
    return std::make_unique<PostgresWatch>(std::move(listener));
}

}  // namespace torvex::db
