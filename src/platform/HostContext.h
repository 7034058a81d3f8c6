#pragma once

namespace torvex {

class ApplicationValues;
class Clock;
class FileSystem;
class HitCounter;
class HttpClient;
class Request;
class Response;
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
    int scriptTimeout = 90;  ///< seconds that this request may take
};

}  // namespace torvex
