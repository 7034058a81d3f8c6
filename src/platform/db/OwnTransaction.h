#pragma once

#include <exception>
#include <string_view>
#include <utility>

#include "platform/HostContext.h"
#include "platform/OperatorLog.h"
#include "platform/db/ConnectionSource.h"

/// Changes that must be whole: work on a connection in one transaction, which says by its result whether the
/// changes stay. Three ways to run it, by what becomes of a failure:
///
///     // an exception; the caller's operation puts its line in front
///     const auto outcome = db::inOwnTransaction(host, [&](db::Connection& own) -> db::Outcome<LoginCode> {
///         if (!isFree(own, loginId)) return db::refuse(LoginCode::HeldElsewhere);
///         own.execute(holdLogin, {loginId});
///         return db::commit(LoginCode::LoggedIn);
///     });
///
///     // a code, and a line in the operators' log: "resetPage of page 12: the database's message"
///     const auto outcome = db::tryInOwnTransaction(host, "resetPage of page 12", status::failed, work);
///
///     // on a connection that the caller has already; an exception
///     const auto outcome = db::inTransaction(connection, work);
///
/// `outcome.value` is what the caller answers; `outcome.isCommitted` tells whether there is something to
/// follow up.
namespace torvex::db {

/// How the work of a transaction ended.
template <typename Result>
struct Outcome {
    bool isCommitted;  ///< false: rolled back, nothing has changed
    Result value;

    /// So that the texts of a work's answers may be of several types.
    template <typename Other>
    operator Outcome<Other>() const {
        return {isCommitted, Other(value)};
    }
};

/// The changes stay; `value` is the answer.
template <typename Result>
Outcome<Result> commit(Result value) {
    return {true, std::move(value)};
}
/// All of them are taken back; `value` says why.
template <typename Result>
Outcome<Result> refuse(Result value) {
    return {false, std::move(value)};
}

/// Runs `work(connection)`, which returns an `Outcome`. Whatever it throws takes its changes back.
template <typename Work>
auto inTransaction(Connection& connection, Work&& work) {
    Transaction transaction(connection);
    auto outcome = std::forward<Work>(work)(connection);
    if (outcome.isCommitted) transaction.commit();
    return outcome;
}

/// The same on a connection of its own, which nothing else of the request shares.
template <typename Work>
auto inOwnTransaction(HostContext& host, Work&& work) {
    const Lease own = openOwn(host);
    return inTransaction(*own, std::forward<Work>(work));
}

/// The same, but a failure, also of opening or of the commit, is refused with `failed`; `what` stands before
/// its cause in the operators' log.
template <typename Failed, typename Work>
auto tryInOwnTransaction(HostContext& host, std::string_view what, const Failed& failed, Work&& work) {
    using Result = decltype(work(std::declval<Connection&>()).value);
    try {
        return inOwnTransaction(host, std::forward<Work>(work));
    } catch (const std::exception& error) {
        warnOf(host.log, what, error);
        return Outcome<Result>{false, Result(failed)};
    }
}

}  // namespace torvex::db
