#include "platform/Response.h"

#include "platform/Errors.h"

namespace torvex {

void Response::end() {
    ended_ = true;
    throw ResponseEnded{};
}

void Response::redirect(std::string address) {
    status = 302;
    addHeader("Location", std::move(address));
}

bool Response::isTouched() const {
    return !body_.empty() || binary_ || ended_ || status != 200 || contentType != "text/html" ||
           !charset.empty() || expires || !cacheControl.empty() || !headers.empty();
}

}  // namespace torvex
