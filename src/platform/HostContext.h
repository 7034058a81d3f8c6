#pragma once

namespace torvex {

class ApplicationValues;
class Clock;
class FileSystem;
class HitCounter;
class HttpClient;
class OperatorLog;
class Request;
class Response;
class ServerShares;
class Session;
namespace db {
class Database;
}

/// One request's view of the server. It is handed to a class at creation and is the only way in: nothing is
/// reached through globals. It refers to what it names and must not outlive it; one thread uses it.
struct HostContext {
    Request& request;
    Response& response;
    Session& session;
    ApplicationValues& application;
    FileSystem& files;
    const Clock& clock;
    HttpClient& http;
    db::Database& database;
    HitCounter& hits;
    ServerShares& shares;
    OperatorLog& log;
    int scriptTimeout = 90;  ///< seconds that this request may take
};

}  // namespace torvex
