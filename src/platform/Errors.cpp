#include "platform/Errors.h"

namespace torvex {

namespace {

[[noreturn]] void raise(std::string_view function, std::string_view cause) {
    std::string description = "Error in function ";
    description.append(function).append("\r\n").append(cause);
    throw Error(description);
}

}  // namespace

void raiseFrom(std::string_view function) {
    try {
        throw;
    } catch (const ResponseEnded&) {
        throw;
    } catch (const std::exception& error) {
        raise(function, error.what());
    } catch (...) {
        raise(function, "unknown error");
    }
}

}  // namespace torvex
