#include "accounts/VisitorProof.h"

#include "platform/db/Connection.h"
#include "platform/db/OwnTransaction.h"

namespace torvex {

namespace {

/// Accounts that hold this password, or a hash that is still to be asked.
constexpr std::string_view selectStored =
    "select userId, password, passwordHash, case when password = ? then 1 else 0 end as isSame "
    "from TORVEX_USERS where username = ? and (password = ? or password like ?) order by userId";

constexpr std::string_view renewPassword =
    "update TORVEX_USERS set password = ?, passwordHash = ? where userId = ? and password = ?";

constexpr std::string_view updatePassword =
    "update TORVEX_USERS set password = ?, passwordHash = ? where username = ?";

constexpr std::string_view selectPassword = "select password from TORVEX_USERS where userId = ?";

struct Found {
    std::optional<VisitorProof> proof;
    bool hasAskedHash = false;
};

Found findProof(db::Connection& connection, const std::string& username, const std::string& password) {
    Found found;
    auto rows = connection.query(selectStored, {password, username, password, anyStrongMark});
    while (!found.proof && rows.next()) {
        const bool isStrong = isKeptStrongly(rows.view("password"), rows.view("passwordHash"));
        found.hasAskedHash = found.hasAskedHash || isStrong;
        const bool isRight =
            isStrong ? isPasswordOf(rows.text("passwordHash"), password) : rows.number("isSame") == 1;
        if (isRight)
            found.proof =
                VisitorProof{rows.number("userId"), isStrong ? rows.text("password") : password, {}};
    }
    return found;
}

}  // namespace

bool isKeptStrongly(std::string_view password, std::string_view hash) {
    // A visitor may have chosen a password that looks like a mark.
    return isStrongMark(password) && !hash.empty();
}

std::optional<VisitorProof> proofOfVisitor(db::Connection& connection, PasswordStore store,
                                           const std::string& username, const std::string& password) {
    Found found = findProof(connection, username, password);
    if (found.hasAskedHash || store != PasswordStore::Strong) return found.proof;
    // Made in vain, too: a wrong name must not be told from a wrong password by the time it takes.
    StrongForm form = makeStrongForm(password);
    if (found.proof) found.proof->renewal = std::move(form);
    return found.proof;
}

std::string renewVisitor(HostContext& host, const VisitorProof& proof, const std::string& username,
                         const std::string& password) {
    const StrongForm& form = *proof.renewal;
    const auto renewed = db::inOwnTransaction(host, [&](db::Connection& own) {
        own.execute(renewPassword, {form.mark, form.hash, proof.userId, proof.stored});
        auto rows = own.query(selectPassword, {proof.userId});
        return db::commit(rows.next() ? rows.text("password") : std::string());
    });
    if (renewed.value == form.mark) return form.mark;
    const auto other = markFor(*db::openOwn(host), username, password);
    return other.value_or(proof.stored);
}

std::optional<std::string> markFor(db::Connection& connection, const std::string& username,
                                   const std::string& password) {
    if (username.empty() || password.empty()) return std::nullopt;
    Found found = findProof(connection, username, password);
    if (!found.proof || !found.hasAskedHash || !isStrongMark(found.proof->stored)) return std::nullopt;
    return found.proof->stored;
}

void giveVisitorPassword(db::Connection& connection, PasswordStore store, std::string_view username,
                         std::string_view password) {
    if (store == PasswordStore::Given) {
        connection.execute(updatePassword, {password, nullptr, username});
        return;
    }
    const StrongForm form = makeStrongForm(password);
    connection.execute(updatePassword, {form.mark, form.hash, username});
}

}  // namespace torvex
