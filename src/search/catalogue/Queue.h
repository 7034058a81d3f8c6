#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace torvex {
class Clock;
namespace db {
class Connection;
}
}  // namespace torvex

/// The files that have changed since the catalogue saw them, in the database, so that every process can say so
/// and every server hears of it: each has a catalogue of its own and remembers up to where it has come.
namespace torvex::catalogue {

struct QueuedFile {
    std::int64_t number = 0;
    std::string path;  ///< ends in "/" for a folder
};

/// In a transaction of its own.
void enqueue(db::Connection& connection, const Clock& clock, const std::vector<std::string>& paths);

/// The next ones behind a number, in their order, at most `most`.
std::vector<QueuedFile> queuedBehind(db::Connection& connection, std::int64_t number, std::size_t most);
/// The number of the last one; 0 without any.
std::int64_t lastQueued(db::Connection& connection);

/// How many stand behind a number.
std::size_t countQueuedBehind(db::Connection& connection, std::int64_t number);

/// Removes those of more than some days ago: a server that has not seen them by then compares all files when
/// it starts.
void removeOldQueue(db::Connection& connection, const Clock& clock);

}  // namespace torvex::catalogue
