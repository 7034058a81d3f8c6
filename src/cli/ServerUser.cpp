#include "cli/ServerUser.h"

#include <arpa/inet.h>
#include <cerrno>
#include <fcntl.h>
#include <fmt/format.h>
#include <grp.h>
#include <optional>
#include <pwd.h>
#include <system_error>
#include <unistd.h>
#include <vector>

#include "installation/Installation.h"
#include "platform/Errors.h"

namespace torvex::cli {

namespace {

constexpr uid_t root = 0;

struct Account {
    uid_t user;
    gid_t group;
};

[[noreturn]] void refuse(const std::string& name, const std::string& reason) {
    throw Error(fmt::format("user in [server] of {} is \"{}\": {}", settingsFileName, name, reason));
}

std::string lastError() {
    return std::system_category().message(errno);
}

Account accountOf(const std::string& name) {
    constexpr std::size_t roomForAnyEntry = 65536;
    std::vector<char> room(roomForAnyEntry);
    passwd entry{};
    passwd* found = nullptr;
    if (const int code = ::getpwnam_r(name.c_str(), &entry, room.data(), room.size(), &found); code != 0) {
        refuse(name, std::system_category().message(code));
    }
    if (found == nullptr) refuse(name, "there is no such user on this machine");
    return {entry.pw_uid, entry.pw_gid};
}

bool isThisMachine(const std::string& address) {
    in_addr v4{};
    if (::inet_pton(AF_INET, address.c_str(), &v4) == 1) return ntohl(v4.s_addr) >> 24 == 127;
    in6_addr v6{};
    return ::inet_pton(AF_INET6, address.c_str(), &v6) == 1 && IN6_IS_ADDR_LOOPBACK(&v6);
}

void mustSucceed(int result, const std::string& name) {
    if (result != 0) refuse(name, "this process can't become that user: " + lastError());
}

}  // namespace

ServerUser::ServerUser(const std::string& name) : name_(name), user_(::geteuid()), group_(::getegid()) {
    if (!name.empty())
        takeOn(name);
    else
        isRootUnasked_ = user_ == root;
}

void ServerUser::takeOn(const std::string& name) {
    const Account account = accountOf(name);
    if (account.user == user_) return;
    if (user_ != root) refuse(name, "only root can serve as somebody else");
    mustSucceed(::initgroups(name.c_str(), account.group), name);
    mustSucceed(::setresgid(account.group, account.group, account.group), name);
    user_ = account.user;
    group_ = account.group;
    hasRoot_ = true;
    mustSucceed(::seteuid(user_), name);
}

void ServerUser::allowAddress(const std::string& address) const {
    if (!isRootUnasked_ || isThisMachine(address)) return;
    throw Error(
        fmt::format("root serves this machine alone, and not {}.\nName the user to serve as: user in "
                    "[server] of {}; the installation must belong to that user",
                    address, settingsFileName));
}

void ServerUser::demandFolder(const std::filesystem::path& folder) const {
    if (::faccessat(AT_FDCWD, folder.c_str(), R_OK | W_OK | X_OK, AT_EACCESS) == 0) return;
    const std::string reason = lastError();
    if (!hasRoot_) throw Error(fmt::format("{} can't be written: {}", folder.string(), reason));
    refuse(name_, fmt::format("{} isn't that user's: {}; chown -R {} {}", folder.string(), reason, name_,
                              folder.string()));
}

void ServerUser::asRoot(const std::function<void()>& work) const {
    if (!hasRoot_) return work();
    struct Reserve {
        const ServerUser& self;
        explicit Reserve(const ServerUser& user) : self(user) { mustSucceed(::seteuid(root), self.name_); }
        Reserve(const Reserve&) = delete;
        Reserve& operator=(const Reserve&) = delete;
        // To go on as root unnoticed would be worse than to end.
        ~Reserve() {
            if (::seteuid(self.user_) != 0) std::abort();
        }
    };
    const Reserve reserve(*this);
    work();
}

void ServerUser::giveUpRoot() {
    if (!hasRoot_) return;
    mustSucceed(::seteuid(root), name_);
    mustSucceed(::setresuid(user_, user_, user_), name_);
    if (::setuid(root) == 0) refuse(name_, "root's rights can't be given up");
    hasRoot_ = false;
}

}  // namespace torvex::cli
