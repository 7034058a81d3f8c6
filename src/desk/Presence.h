#pragma once

#include <chrono>
#include <functional>
#include <list>
#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/DateTime.h"
#include "records/PageId.h"

namespace torvex {

/// Which authors are where at the moment, and what they do. Known to one running server and to nothing else: it
/// is told every half minute by each author, is worth nothing a minute later, and so is never written to the
/// disk. Safe to share between threads; nothing here waits. Bounded by the number of logins.
///
/// A login may be in several places, one for each of its windows.
class Presence {
  public:
    using TimePoint = std::chrono::steady_clock::time_point;
    using Now = std::function<TimePoint()>;

    struct Who {
        int loginId = 0;
        std::string name;
    };
    /// A page, or with 0 none, in a site and language; "" for nowhere.
    struct Place {
        std::string site;
        std::string lang;
        PageId pageId = 0;

        bool operator==(const Place&) const = default;
        bool isNowhere() const { return site.empty(); }
    };
    enum class Doing { Looking, Typing, Away };
    struct Visit {
        Who who;
        Place place;
        Doing doing = Doing::Looking;
        DateTime since;  ///< of the clock of requests, as people read it
    };
    /// That somebody would like to have a page.
    struct Ask {
        Who asker;
        PageId pageId = 0;
        std::string title;
        DateTime since;
    };

    explicit Presence(Now now = &std::chrono::steady_clock::now) : now_(std::move(now)) {}

    void note(const Visit& visit);
    /// Nowhere any more. When the login was last active stays known.
    void leave(int loginId);

    /// Everybody else in the site and language, by name; 200 at most.
    std::vector<Visit> others(int loginId, const std::string& site, const std::string& lang) const;
    /// Where the login was told to be last, in the site and language; of any when `site` is "".
    std::optional<Visit> latest(int loginId, const std::string& site, const std::string& lang) const;
    bool isHere(int loginId) const;
    /// Since the login last did something; nothing for one that was never noted.
    std::optional<std::chrono::seconds> idle(int loginId) const;

    /// Whoever asks again for the same page asks once.
    void ask(int holderId, const Ask& ask);
    /// What the login was asked in the last ten minutes, and hasn't answered.
    std::vector<Ask> asksOf(int loginId);
    void answer(int loginId, PageId pageId);

    /// That the login has the page checked out.
    void noteHeld(int loginId, PageId pageId);
    bool hasHeld(int loginId, PageId pageId) const;

  private:
    struct Stay {
        Visit visit;
        TimePoint told;
    };
    struct Pending {
        Ask ask;
        TimePoint made;
    };
    struct Author {
        std::list<Stay> stays;  ///< the one told last in front
        std::list<Pending> asks;
        std::set<PageId> held;
        TimePoint active{};
        TimePoint told{};
    };

    bool isOver(const Stay& stay) const;
    void forgetLongGone();

    const Now now_;
    mutable std::mutex mutex_;
    std::map<int, Author> authors_;
};

}  // namespace torvex
