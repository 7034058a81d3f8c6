#include "support/TestHost.h"

#include "platform/Errors.h"

namespace torvex::test {

HttpClient::Answer FakeHttpClient::get(const std::string& url, Deadline /*deadline*/) {
    if (!failure.empty()) throw Error(failure);
    const auto answer = answers.find(url);
    if (answer == answers.end()) throw Error("no answer from " + url);
    return answer->second;
}

bool FakeHitCounter::count(std::string_view nodeId, std::string_view day, bool unique) {
    const std::pair key{std::string(nodeId), std::string(day)};
    const bool isUnique = ++views[key] == 1 || unique;
    if (isUnique) ++uniqueViews[key];
    return isUnique;
}

db::Lease LateDatabase::open(std::string_view text, std::string_view user, std::string_view password,
                             db::Purpose purpose) {
    if (target == nullptr) throw db::DatabaseError("this test has no database");
    return target->open(text, user, password, purpose);
}

std::shared_ptr<FileSystem> TestHost::openShare(const std::string& share) {
    if (!files.folderExists(share)) throw Error(share + ": there is no such folder");
    return {std::shared_ptr<void>(), &files};
}

}  // namespace torvex::test
