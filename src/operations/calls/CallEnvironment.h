#pragma once

namespace torvex {
class ApplicationValues;
class Clock;
class FileSystem;
class HitCounter;
class HttpClient;
class OperatorLog;
class ServerShares;
namespace db {
class Database;
}
}  // namespace torvex

namespace torvex::operations {

/// What all requests of a run share: an opened installation with its application values derived. Must outlive
/// whoever holds it; every part is safe to share between threads.
struct CallEnvironment {
    ApplicationValues& application;
    FileSystem& files;
    const Clock& clock;  ///< for requests that name no moment of their own
    HttpClient& http;
    db::Database& database;
    HitCounter& hits;
    ServerShares& shares;
    OperatorLog& log;
};

}  // namespace torvex::operations
