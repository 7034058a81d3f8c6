#pragma once

#include <functional>

namespace spdlog {
class logger;
}

namespace torvex {

class ApplicationValues;
class Clock;
class FileSystem;
class HitCounter;
class HttpClient;
class ServerShares;
struct HostContext;
namespace db {
class Database;
}

/// What the server hands on to every request. All of it is owned by the caller, outlives the server and is
/// safe to share between threads.
struct HostServices {
    ApplicationValues& application;
    FileSystem& files;
    const Clock& clock;
    HttpClient& http;
    db::Database& database;
    HitCounter& hits;
    ServerShares& shares;
    spdlog::logger& log;
    /// Fills the session of a new visitor; called on a worker, before the page.
    std::function<void(HostContext&)> startSession;
};

}  // namespace torvex
