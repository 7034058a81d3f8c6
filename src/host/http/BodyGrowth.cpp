#include "host/http/BodyGrowth.h"

#include <algorithm>

namespace torvex {

namespace {

/// A string that grows by itself doubles, also beyond the announced length, where it is never used.
void grow(std::string& body, std::size_t size) {
    std::string larger;
    larger.reserve(size);
    larger += body;
    body.swap(larger);
}

}  // namespace

void BodyGrowth::begin(std::string& body, std::size_t announced) {
    announced_ = announced;
    body.reserve(std::min(announced, reserved));
}

void BodyGrowth::add(std::string& body, std::string_view bytes) const {
    const std::size_t needed = body.size() + bytes.size();
    if (needed > body.capacity() && needed <= announced_)
        grow(body, std::min(std::max(needed, body.capacity() * 2), announced_));
    body.append(bytes);
}

}  // namespace torvex
