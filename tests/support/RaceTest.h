#pragma once

#include <barrier>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "support/PublishTest.h"

namespace torvex::test {

/// Authors at the same moment, each in a request and on a connection of its own.
class RaceTest : public PublishTest {
  protected:
    /// One author's request.
    struct Author {
        Author(const TestHost& shared, db::Database& database, db::Lease lease, int loginId)
            : connection(std::move(lease)) {
            host.database.target = &database;
            host.application.set("torvex_odbc", shared.application.text("torvex_odbc"));
            host.application.set("torvex_install_path", "/install/");
            host.session.set("torvex_loginId", loginId);
            host.session.set("torvex_fullname", "Author " + std::to_string(loginId));
            manager = std::make_unique<cManager>(host.context());
            manager->connect(*connection);
        }
        TestHost host;
        db::Lease connection;
        std::unique_ptr<cManager> manager;
    };

    std::unique_ptr<Author> author(int loginId) {
        return std::make_unique<Author>(host, database(), openAnother(), loginId);
    }

    /// What the two answer when they start together.
    template <typename First, typename Second>
    static std::vector<std::string> together(First first, Second second) {
        std::barrier start(2);
        std::vector<std::string> results(2);
        std::thread other([&] {
            start.arrive_and_wait();
            results[1] = second();
        });
        start.arrive_and_wait();
        results[0] = first();
        other.join();
        return results;
    }
};

}  // namespace torvex::test
