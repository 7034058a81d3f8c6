#include "host/files/EncodedFiles.h"

namespace torvex {

std::size_t EncodedFiles::cost(const Kept& kept) {
    constexpr std::size_t ofNodes = 256;
    return kept.bytes->size() + ofNodes;
}

std::size_t EncodedFiles::bytes() const {
    const std::scoped_lock guard(mutex_);
    return bytes_;
}

EncodedFiles::Bytes EncodedFiles::find(const FileStamp& stamp, Coding coding) {
    const std::scoped_lock guard(mutex_);
    const auto found = byKey_.find({stamp, coding});
    if (found == byKey_.end()) return nullptr;
    order_.splice(order_.begin(), order_, found->second);
    return found->second->bytes;
}

EncodedFiles::Bytes EncodedFiles::make(const PublicFile& file, Coding coding) {
    if (Bytes kept = find(file.stamp, coding)) return kept;
    const Bytes plain = file.read();
    if (!plain) return nullptr;
    Bytes made = std::make_shared<const std::string>(encodedAs(coding, *plain, Effort::Once));
    if (file.stamp.isSettled()) keep({file.stamp, coding}, made);
    return made;
}

void EncodedFiles::keep(const Key& key, const Bytes& bytes) {
    const std::scoped_lock guard(mutex_);
    Kept kept{key, bytes};
    // Two may have made it at once.
    if (cost(kept) > mostBytes_ || byKey_.contains(key)) return;
    bytes_ += cost(kept);
    order_.push_front(std::move(kept));
    byKey_.emplace(key, order_.begin());
    while (bytes_ > mostBytes_) {
        bytes_ -= cost(order_.back());
        byKey_.erase(order_.back().key);
        order_.pop_back();
    }
}

}  // namespace torvex
