#pragma once

namespace torvex {

class ApplicationValues;
class Clock;
class FileSystem;
class HitCounter;
class HttpClient;
class OperatorLog;
class ServerShares;
class XmlTransformer;
namespace db {
class Database;
}

/// What all requests to an opened installation share. Owned by whoever opened it and outlives every holder of
/// these references; all of it is safe to share between threads.
struct Services {
    ApplicationValues& application;
    FileSystem& files;
    const Clock& clock;
    HttpClient& http;
    XmlTransformer& xml;
    db::Database& database;
    HitCounter& hits;
    ServerShares& shares;
    OperatorLog& log;

    /// The same, but for one.
    Services with(const Clock& other) const {
        return {application, files, other, http, xml, database, hits, shares, log};
    }
    Services with(HitCounter& other) const {
        return {application, files, clock, http, xml, database, other, shares, log};
    }
    Services with(FileSystem& other) const {
        return {application, other, clock, http, xml, database, hits, shares, log};
    }
    Services with(HttpClient& other) const {
        return {application, files, clock, other, xml, database, hits, shares, log};
    }
    Services with(XmlTransformer& other) const {
        return {application, files, clock, http, other, database, hits, shares, log};
    }
};

}  // namespace torvex
