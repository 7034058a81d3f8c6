#include "platform/db/WalHead.h"

#include <atomic>
#include <cstring>
#include <sqlite3.h>
#include <string_view>

namespace torvex::db {

namespace {

constexpr int regionBytes = 32'768;  ///< in which SQLite maps the index
constexpr std::uint32_t knownFormat = 3'007'000;

/// The file holds its log in shared memory as long as it is open: no other connection can end that meanwhile.
std::uint64_t* mappedIndex(sqlite3* database) {
    sqlite3_file* file = nullptr;
    const int code = sqlite3_file_control(database, "main", SQLITE_FCNTL_FILE_POINTER, &file);
    if (code != SQLITE_OK || !file || !file->pMethods || file->pMethods->iVersion < 2) return nullptr;
    void volatile* region = nullptr;
    if (file->pMethods->xShmMap(file, 0, regionBytes, 0, &region) != SQLITE_OK) return nullptr;
    return static_cast<std::uint64_t*>(const_cast<void*>(region));
}

bool hasLog(sqlite3* database) {
    bool isLogged = false;
    const auto note = [](void* found, int, char** values, char**) {
        *static_cast<bool*>(found) = values[0] && std::string_view(values[0]) == "wal";
        return 0;
    };
    const int code = sqlite3_exec(database, "pragma journal_mode", note, &isLogged, nullptr);
    return code == SQLITE_OK && isLogged;
}

}  // namespace

void WalHead::attachTo(sqlite3* database) {
    shared_ = hasLog(database) ? mappedIndex(database) : nullptr;
    std::uint32_t format = 0;
    if (shared_) std::memcpy(&format, shared_, sizeof format);
    if (format != knownFormat) shared_ = nullptr;
}

WalHead::Head WalHead::read() const {
    Head head{};
    for (std::size_t word = 0; word < words; ++word)
        head[word] = std::atomic_ref(shared_[word]).load(std::memory_order_acquire);
    return head;
}

bool WalHead::hasMoved() const {
    return !shared_ || read() != noted_;
}

void WalHead::note() {
    if (shared_) noted_ = read();
}

}  // namespace torvex::db
