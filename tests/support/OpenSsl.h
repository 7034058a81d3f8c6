#pragma once

#include <memory>

namespace torvex::test {

/// An object of the library for TLS, and what frees it.
template <auto Free>
struct Freed {
    template <class T>
    void operator()(T* object) const {
        Free(object);
    }
};
template <class T, auto Free>
using Held = std::unique_ptr<T, Freed<Free>>;

}  // namespace torvex::test
