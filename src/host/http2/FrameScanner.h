#pragma once

#include <cstddef>
#include <cstdint>
#include <nghttp2/nghttp2.h>
#include <string_view>

namespace torvex::http2 {

/// Follows what a client sends from frame to frame, and looks at the heads of frames alone: which of them there are, also
/// of those that the library passes over, and whether a request's header is under way.
class FrameScanner {
  public:
    struct Head {
        std::size_t size = 0;
        int type = 0;
        int flags = 0;
        std::uint32_t id = 0;
    };

    /// Calls `onFrame` with the head of each frame that begins in the bytes.
    template <class Action>
    void scan(std::string_view bytes, Action&& onFrame) {
        while (!bytes.empty()) {
            const std::size_t passed = bytes.size() < left_ ? bytes.size() : left_;
            left_ -= passed;
            bytes.remove_prefix(passed);
            if (bytes.empty()) return;
            add(static_cast<unsigned char>(bytes.front()));
            bytes.remove_prefix(1);
            if (known_ == headSize) onFrame(take());
        }
    }

    /// A header has begun, and isn't there as a whole.
    bool isInHeader() const { return isOpen_ || (left_ > 0 && isOfHeader(current_.type)); }
    /// How many have begun.
    std::uint64_t headers() const { return headers_; }

  private:
    static constexpr std::size_t headSize = 9;
    static constexpr std::size_t opening = NGHTTP2_CLIENT_MAGIC_LEN;  ///< stands ahead of the first frame

    static bool isOfHeader(int type) { return type == NGHTTP2_HEADERS || type == NGHTTP2_CONTINUATION; }

    void add(unsigned char byte) {
        if (known_ < 3) {
            next_.size = next_.size << 8U | byte;
        } else if (known_ == 3) {
            next_.type = byte;
        } else if (known_ == 4) {
            next_.flags = byte;
        } else {
            next_.id = next_.id << 8U | byte;
        }
        ++known_;
    }

    const Head& take() {
        current_ = next_;
        current_.id &= 0x7fffffffU;
        next_ = {};
        known_ = 0;
        left_ = current_.size;
        if (current_.type == NGHTTP2_HEADERS) ++headers_;
        if (isOfHeader(current_.type)) isOpen_ = (current_.flags & NGHTTP2_FLAG_END_HEADERS) == 0;
        return current_;
    }

    std::size_t left_ = opening;  ///< of the frame that is being passed
    Head current_;
    Head next_;
    std::size_t known_ = 0;  ///< bytes of it
    std::uint64_t headers_ = 0;
    bool isOpen_ = false;
};

}  // namespace torvex::http2
