#include "platform/db/PostgresForesight.h"

#include <algorithm>
#include <utility>

namespace torvex::db {

namespace {

/// Of one connection, of which there are some: pages that are made all the time are few. Of one scope: a menu of many levels.
constexpr std::size_t mostScopes = 128;
constexpr std::size_t mostQuestions = 64;

std::string keyOf(const PostgresQuestion& question) {
    return question.name + '\0' + question.values->key();
}

bool send(PGconn* connection, const PostgresQuestion& question) {
    return PQsendQueryPrepared(connection, question.name.c_str(), question.values->count(),
                               question.values->values(), nullptr, nullptr, 0) == 1;
}

/// What comes until the server has answered all; fewer results when the line breaks.
std::vector<PostgresResult> results(PGconn* connection) {
    std::vector<PostgresResult> all;
    while (PQstatus(connection) == CONNECTION_OK) {
        PostgresResult result(PQgetResult(connection));
        if (!result) continue;  // behind each answer
        if (PQresultStatus(result.get()) == PGRES_PIPELINE_SYNC) break;
        all.push_back(std::move(result));
    }
    return all;
}

/// Some kilobytes, which the system takes at once: neither side waits for the other to read.
std::vector<PostgresResult> askTogether(PGconn* connection, const PostgresQuestions& questions) {
    if (PQenterPipelineMode(connection) == 0) return {};
    bool isSent = PQsendQueryParams(connection, PostgresReading::beginning, 0, nullptr, nullptr, nullptr,
                                    nullptr, 0) == 1;
    for (const PostgresQuestion& question : questions) isSent = isSent && send(connection, question);
    std::vector<PostgresResult> all;
    if (PQpipelineSync(connection) == 1) all = results(connection);
    const bool isOver = PQexitPipelineMode(connection) == 1;
    if (!isSent || !isOver) all.clear();
    return all;
}

}  // namespace

bool PostgresQuestion::operator==(const PostgresQuestion& other) const {
    return name == other.name && *values == *other.values;
}

const PostgresQuestions* PostgresForesight::after(const PostgresQuestion& first) const {
    const auto found = known_.find(keyOf(first));
    return found == known_.end() ? nullptr : &found->second;
}

/// When it is full all goes, and what is asked for comes back.
void PostgresForesight::learn(PostgresQuestions asked) {
    if (asked.empty()) return;
    if (known_.size() >= mostScopes) known_.clear();
    std::string key = keyOf(asked.front());
    asked.erase(asked.begin());
    asked.resize(std::min(asked.size(), mostQuestions));
    known_.insert_or_assign(std::move(key), std::move(asked));
}

bool PostgresReading::begin(PGconn* connection, const PostgresQuestion& first,
                            const PostgresForesight& foresight) {
    PostgresQuestions questions{first};
    if (const PostgresQuestions* behind = foresight.after(first))
        questions.insert(questions.end(), behind->begin(), behind->end());
    std::vector<PostgresResult> answers = askTogether(connection, questions);
    isBegun_ =
        answers.size() == questions.size() + 1 &&
        std::ranges::all_of(answers, [](const PostgresResult& answer) { return isFine(answer.get()); });
    if (!isBegun_) {
        const PostgresResult ended(PQexec(connection, "rollback"));
        return false;
    }
    for (std::size_t i = 0; i < questions.size(); ++i)
        foreseen_.push_back({std::move(questions[i]), std::move(answers[i + 1])});
    return true;
}

/// They are mostly asked for in their order, so the search goes on behind the last one.
PostgresResult PostgresReading::take(const PostgresQuestion& question) {
    for (std::size_t step = 0; step < foreseen_.size(); ++step) {
        const std::size_t at = (taken_ + step) % foreseen_.size();
        Foreseen& one = foreseen_[at];
        if (!one.result || one.question != question) continue;
        taken_ = at + 1;
        return std::move(one.result);
    }
    return nullptr;
}

void PostgresReading::teach(PostgresForesight& foresight) {
    const auto isTaken = [](const Foreseen& one) { return !one.result; };
    const bool isKnown = asked_.size() == foreseen_.size() && std::ranges::all_of(foreseen_, isTaken);
    if (!isKnown) foresight.learn(std::move(asked_));
}

}  // namespace torvex::db
