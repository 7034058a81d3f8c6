#include "host/cache/Recording.h"

#include <algorithm>

#include "host/cache/RecordingFiles.h"
#include "platform/ApplicationValues.h"
#include "platform/DateTime.h"
#include "platform/HitCounter.h"
#include "platform/OperatorLog.h"
#include "platform/db/Database.h"
#include "platform/files/RootFolder.h"
#include "platform/net/HttpClient.h"
#include "platform/text/Text.h"
#include "platform/xml/XmlTransformer.h"

namespace torvex {

class Recording::Application final : public ApplicationValues {
  public:
    explicit Application(Recording& to) : to_(to), real_(to.real_.application) {}

    Value get(std::string_view key) const override {
        Value value = real_.get(key);
        auto& read = to_.made_.application;
        const bool isKnown =
            std::ranges::any_of(read, [&](const auto& entry) { return text::equals(entry.first, key); });
        if (!isKnown) read.emplace_back(key, value);
        return value;
    }
    void set(std::string_view key, Value value) override {
        to_.refuse();
        real_.set(key, std::move(value));
    }
    void lock() override {
        to_.refuse();
        real_.lock();
    }
    void unlock() override { real_.unlock(); }

  private:
    Recording& to_;
    ApplicationValues& real_;
};

/// The day is part of what an answer is made of; a moment passes before the answer is out.
class Recording::Time final : public Clock {
  public:
    explicit Time(Recording& to) : to_(to) {}

    DateTime now() const override {
        to_.refuse();
        return to_.real_.clock.now();
    }
    std::int64_t unixSeconds() const override {
        to_.refuse();
        return to_.real_.clock.unixSeconds();
    }
    /// One day for the whole answer, also around midnight.
    std::string today() const override {
        if (to_.made_.day.empty()) to_.made_.day = to_.real_.clock.today();
        return to_.made_.day;
    }

  private:
    Recording& to_;
};

class Recording::Fetches final : public HttpClient {
  public:
    explicit Fetches(Recording& to) : to_(to) {}

    Answer get(const std::string& url, Deadline deadline) override {
        to_.refuse();
        return to_.real_.http.get(url, deadline);
    }

  private:
    Recording& to_;
};

/// What comes of a transformation follows from what goes in, but for what the document itself may ask for.
class Recording::Transformations final : public XmlTransformer {
  public:
    explicit Transformations(Recording& to) : to_(to) {}

    void check(const XmlText& document, Deadline deadline) override {
        to_.refuse();
        to_.real_.xml.check(document, deadline);
    }
    std::string transform(const XmlText& stylesheet, const XmlText& data, const NamedValues& parameters,
                          Deadline deadline) override {
        to_.refuse();
        return to_.real_.xml.transform(stylesheet, data, parameters, deadline);
    }

  private:
    Recording& to_;
};

class Recording::Database final : public db::Database {
  public:
    explicit Database(Recording& to) : to_(to) {}

    db::Lease open(std::string_view text, std::string_view user, std::string_view password,
                   db::Purpose purpose) override {
        db::Database& real = to_.real_.database;
        const db::SharedStates before = real.watched(text, user, password);
        auto held = std::make_shared<Held>(to_, real.open(text, user, password, purpose), before);
        db::Connection* const connection = held->lease.get();
        return {std::move(held), connection};
    }

  private:
    struct Held {
        Held(Recording& recording, db::Lease opened, const db::SharedStates& before)
            : to(recording), lease(std::move(opened)) {
            lease->record(record);
            record.states = before;
        }
        Held(const Held&) = delete;
        Held& operator=(const Held&) = delete;
        /// The connection writes to the record until it is back.
        ~Held() {
            lease.reset();
            to.noteReads(record);
        }

        Recording& to;
        db::ReadRecord record;
        db::Lease lease;
    };

    Recording& to_;
};

class Recording::Views final : public HitCounter {
  public:
    explicit Views(Recording& to) : to_(to) {}

    bool deferView(std::string_view nodeId) override {
        to_.views_.emplace_back(nodeId);
        return true;
    }
    bool count(std::string_view nodeId, std::string_view day, bool unique) override {
        to_.refuse();
        return to_.real_.hits.count(nodeId, day, unique);
    }
    void countSearch(const SearchedWords& searched) override {
        to_.refuse();
        to_.real_.hits.countSearch(searched);
    }
    void countNothingFound(const SearchedWords& searched) override {
        to_.refuse();
        to_.real_.hits.countNothingFound(searched);
    }
    bool flush() override {
        to_.refuse();
        return to_.real_.hits.flush();
    }

  private:
    Recording& to_;
};

/// Operators are told as often as it happens.
class Recording::Log final : public OperatorLog {
  public:
    explicit Log(Recording& to) : to_(to) {}

    void warn(std::string_view line) override {
        to_.refuse();
        to_.real_.log.warn(line);
    }
    void note(std::string_view line) override {
        to_.refuse();
        to_.real_.log.note(line);
    }

  private:
    Recording& to_;
};

class Recording::Files final : public RecordingFiles {
  public:
    explicit Files(Recording& to)
        : RecordingFiles(
              to.real_.files, [&to](const std::string& path) { to.noteFile(path); }, [&to] { to.refuse(); }) {
    }
};

Recording::Recording(const Services& real)
    : real_(real),
      application_(std::make_unique<Application>(*this)),
      files_(std::make_unique<Files>(*this)),
      time_(std::make_unique<Time>(*this)),
      fetches_(std::make_unique<Fetches>(*this)),
      transformations_(std::make_unique<Transformations>(*this)),
      database_(std::make_unique<Database>(*this)),
      counter_(std::make_unique<Views>(*this)),
      log_(std::make_unique<Log>(*this)) {}

Recording::~Recording() = default;

Services Recording::services() {
    return {*application_, *files_,   *time_,       *fetches_, *transformations_,
            *database_,    *counter_, real_.shares, *log_};
}

/// Before the file is read: what changes behind this look is found by the next one.
void Recording::noteFile(const std::string& path) {
    auto normal = normalPath(path);
    if (!normal) return;  // nothing ever lies there
    const bool isKnown =
        std::ranges::any_of(made_.files, [&](const auto& entry) { return entry.first == *normal; });
    if (isKnown) return;
    auto stamp = FileStamp::at(*normal);
    if (stamp && !stamp->isSettled()) refuse();
    made_.files.emplace_back(std::move(*normal), stamp);
}

/// All that was read must be of one state, or as good as that.
void Recording::noteReads(const db::ReadRecord& reads) {
    if (!reads.isWhole) refuse();
    made_.tables |= reads.tables;
    if (!reads.states) return;
    if (!made_.states) made_.states = reads.states;
    if (made_.states != reads.states && !made_.states->agreesWith(*reads.states, made_.tables)) refuse();
}

std::optional<Ingredients> Recording::ingredients() const {
    const bool isAskedForMore = std::ranges::any_of(made_.questions, [](const RequestQuestion& question) {
        return question.kind == RequestQuestion::Kind::Other;
    });
    // Changes of some tables aren't counted.
    const bool isCounted =
        made_.tables.none() || (made_.states && made_.states->agreesWith(*made_.states, made_.tables));
    if (!isRepeatable_ || isAskedForMore || !isCounted) return std::nullopt;
    return made_;
}

}  // namespace torvex
