#include "search/catalogue/Queue.h"

#include <ctime>
#include <fmt/format.h>

#include "platform/DateTime.h"
#include "platform/db/Connection.h"

namespace torvex::catalogue {

namespace {

constexpr std::string_view insertFile =
    "insert into TORVEX_SEARCH_QUEUE (queue_path, queue_day) values (?, ?)";
constexpr std::string_view selectNext =
    "select queue_id, queue_path from TORVEX_SEARCH_QUEUE where queue_id > ? order by queue_id limit ?";
constexpr std::string_view selectLast = "select max(queue_id) as number from TORVEX_SEARCH_QUEUE";
constexpr std::string_view countBehind =
    "select count(*) as files from TORVEX_SEARCH_QUEUE where queue_id > ?";
constexpr std::string_view deleteOld = "delete from TORVEX_SEARCH_QUEUE where queue_day < ?";

constexpr int daysKept = 7;

std::string daysBefore(const Clock& clock, int days) {
    const DateTime now = clock.now();
    std::tm day{};
    day.tm_year = now.year - 1900;
    day.tm_mon = now.month - 1;
    day.tm_mday = now.day - days;
    const std::time_t moment = ::timegm(&day);
    ::gmtime_r(&moment, &day);
    return fmt::format("{:04}{:02}{:02}", day.tm_year + 1900, day.tm_mon + 1, day.tm_mday);
}

}  // namespace

void enqueue(db::Connection& connection, const Clock& clock, const std::vector<std::string>& paths) {
    if (paths.empty()) return;
    const std::string today = clock.today();
    db::Transaction transaction(connection);
    for (const std::string& path : paths) connection.execute(insertFile, {path, today});
    transaction.commit();
}

std::vector<QueuedFile> queuedBehind(db::Connection& connection, std::int64_t number, std::size_t most) {
    std::vector<QueuedFile> queued;
    auto rows = connection.query(selectNext, {number, static_cast<std::int64_t>(most)});
    while (rows.next()) {
        queued.push_back({static_cast<std::int64_t>(rows.number("queue_id")), rows.text("queue_path")});
    }
    return queued;
}

std::int64_t lastQueued(db::Connection& connection) {
    auto rows = connection.query(selectLast);
    return rows.next() ? static_cast<std::int64_t>(rows.number("number")) : 0;
}

std::size_t countQueuedBehind(db::Connection& connection, std::int64_t number) {
    auto rows = connection.query(countBehind, {number});
    return rows.next() ? static_cast<std::size_t>(rows.number("files")) : 0;
}

void removeOldQueue(db::Connection& connection, const Clock& clock) {
    connection.execute(deleteOld, {daysBefore(clock, daysKept)});
}

}  // namespace torvex::catalogue
