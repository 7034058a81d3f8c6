#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/cache/Ingredients.h"
#include "platform/Services.h"

namespace torvex {

/// Notes what one answer is made of while it is made: its services are the real ones, but they note what they are asked
/// for. What can't be noted (what comes over the network, the exact time, what was written) makes the answer one that
/// can't be repeated. Used by one thread; outlives all that is made of its services.
class Recording {
  public:
    explicit Recording(const Services& real);
    Recording(const Recording&) = delete;
    Recording& operator=(const Recording&) = delete;
    ~Recording();

    Services services();
    RequestQuestions& questions() { return made_.questions; }

    /// Nothing when the answer can't be repeated.
    std::optional<Ingredients> ingredients() const;
    /// The nodes that were viewed. Nobody has counted them yet: that is done for each visitor who gets the answer.
    const std::vector<std::string>& views() const { return views_; }

  private:
    class Application;
    class Files;
    class Time;
    class Fetches;
    class Transformations;
    class Database;
    class Views;
    class Log;

    void refuse() { isRepeatable_ = false; }
    void noteFile(const std::string& path);
    void noteReads(const db::ReadRecord& reads);

    const Services real_;
    Ingredients made_;
    std::vector<std::string> views_;
    bool isRepeatable_ = true;
    std::unique_ptr<Application> application_;
    std::unique_ptr<Files> files_;
    std::unique_ptr<Time> time_;
    std::unique_ptr<Fetches> fetches_;
    std::unique_ptr<Transformations> transformations_;
    std::unique_ptr<Database> database_;
    std::unique_ptr<Views> counter_;
    std::unique_ptr<Log> log_;
};

}  // namespace torvex
