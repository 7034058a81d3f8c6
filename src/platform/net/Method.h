#pragma once

#include <initializer_list>
#include <string>

namespace torvex {

/// What a request wants done. `Other` is known to HTTP and of no use here.
enum class Method { Get, Head, Post, Patch, Put, Delete, Options, Other, Unknown };

/// The methods that an address takes.
class MethodSet {
  public:
    constexpr MethodSet(std::initializer_list<Method> methods) {
        for (const Method method : methods) bits_ |= bitOf(method);
    }

    constexpr bool has(Method method) const { return (bits_ & bitOf(method)) != 0; }
    /// As the field `Allow` lists them: "GET, HEAD".
    std::string text() const;

    constexpr bool operator==(const MethodSet&) const = default;

  private:
    static constexpr unsigned bitOf(Method method) { return 1U << static_cast<unsigned>(method); }

    unsigned bits_ = 0;
};

namespace methods {
inline constexpr MethodSet page{Method::Get, Method::Head};
inline constexpr MethodSet form{Method::Get, Method::Head, Method::Post};
/// For an address that sorts its methods itself.
inline constexpr MethodSet any{Method::Get, Method::Head,   Method::Post,    Method::Patch,
                               Method::Put, Method::Delete, Method::Options, Method::Other};
}  // namespace methods

}  // namespace torvex
