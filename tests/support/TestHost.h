#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/ApplicationValues.h"
#include "platform/DateTime.h"
#include "platform/HitCounter.h"
#include "platform/HostContext.h"
#include "platform/OperatorLog.h"
#include "platform/Request.h"
#include "platform/Response.h"
#include "platform/Session.h"
#include "platform/db/Database.h"
#include "platform/net/HttpClient.h"
#include "replication/ServerShares.h"
#include "support/DirectXmlTransformer.h"
#include "support/MemoryFileSystem.h"

namespace torvex::test {

/// Answers from `answers` by address; any other address, and any at all while `failure` is set, throws.
class FakeHttpClient final : public HttpClient {
  public:
    std::map<std::string, Answer> answers;
    std::string failure;

    using HttpClient::get;
    Answer get(const std::string& url, Deadline deadline) override;
};

/// Remembers how often each node was counted on each day.
class FakeHitCounter final : public HitCounter {
  public:
    std::map<std::pair<std::string, std::string>, int> views;  ///< by node and day
    std::map<std::pair<std::string, std::string>, int> uniqueViews;

    bool count(std::string_view nodeId, std::string_view day, bool unique) override;
    void countSearch(const SearchedWords& searched) override {
        if (words) words->countSearch(searched);
    }
    void countNothingFound(const SearchedWords& searched) override {
        if (words) words->countNothingFound(searched);
    }
    bool flush() override {
        ++flushes;
        return true;
    }
    int flushes = 0;
    HitCounter* words = nullptr;  ///< where searched words are counted; nowhere without it
};

/// Hands on to a database that comes later; until then using it throws `DatabaseError`.
class LateDatabase final : public db::Database {
  public:
    db::Database* target = nullptr;  ///< owned by the test

    db::Lease open(std::string_view text, std::string_view user, std::string_view password,
                   db::Purpose purpose) override;
    std::unique_ptr<db::ContentWatch> watch(std::string_view text, std::string_view user,
                                            std::string_view password, bool asks) override {
        return target ? target->watch(text, user, password, asks) : nullptr;
    }
    db::SharedStates watched(std::string_view text, std::string_view user,
                             std::string_view password) override {
        return target ? target->watched(text, user, password) : nullptr;
    }
};

/// Keeps the lines.
class FakeOperatorLog final : public OperatorLog {
  public:
    std::vector<std::string> lines;

    void warn(std::string_view line) override { lines.emplace_back(line); }
    void note(std::string_view line) override { lines.emplace_back(line); }
};

/// All that a request sees of a server, without a server: everything is public, to be filled and looked at.
/// The clock stands at noon of 2026-06-15. The shares of other servers are folders of the same memory.
class TestHost {
  public:
    TestHost() = default;
    TestHost(const TestHost&) = delete;
    TestHost& operator=(const TestHost&) = delete;

    HostContext& context() { return context_; }
    Services services() { return {application, files, clock, http, xml, database, hits, shares, log}; }

    Request request;
    Response response;
    Session session{"test-session"};
    ApplicationValues application;
    MemoryFileSystem files;
    FixedClock clock{DateTime{2026, 6, 15, 12, 0, 0}};
    FakeHttpClient http;
    DirectXmlTransformer xml;
    LateDatabase database;
    FakeHitCounter hits;
    ServerShares shares{[this](const std::string& share, const std::string&) { return openShare(share); }};
    FakeOperatorLog log;

  private:
    std::shared_ptr<FileSystem> openShare(const std::string& share);

    HostContext context_{services(), request, response, session};
};

}  // namespace torvex::test
