#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace torvex {

/// The number under which every error of a public operation reaches its caller.
inline constexpr int operationErrorNumber = 40000;

/// A broken world: the database, a file, a value of the wrong kind. `what()` is the text for operators; after
/// it has passed public operations it has one line for each, outermost first.
class Error : public std::runtime_error {
  public:
    explicit Error(const std::string& description, int number = operationErrorNumber)
        : std::runtime_error(description), number_(number) {}

    int number() const { return number_; }

  private:
    int number_;
};

/// Thrown by `Response::end` to leave the request at once, wherever it stands. It is no error: it passes
/// `raiseFrom` unchanged and must not be swallowed.
struct ResponseEnded {};

/// To be called in a `catch (...)` of a public operation: passes the caught error on with the operation's own
/// line in front, "Error in function " and `function`, which holds the name with its mark as operators know
/// it ("getPage!", "getNodeId !").
[[noreturn]] void raiseFrom(std::string_view function);

/// Runs a part of an operation that operators know by a name of its own: what it throws gets its line too.
template <typename Work>
auto asLevel(std::string_view function, Work&& work) -> decltype(work()) try {
    return work();
} catch (...) {
    raiseFrom(function);
}

}  // namespace torvex
