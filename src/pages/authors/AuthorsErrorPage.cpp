#include <array>

#include "pages/authors/AuthorsPages.h"
#include "pages/authors/Notice.h"
#include "platform/HostContext.h"
#include "platform/Request.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

struct KnownError {
    std::string_view value;  ///< as in addresses
    int status;
    double message;
};

constexpr double noTemplateLabel = 4912;
constexpr double noBaseTemplateLabel = 4913;

constexpr std::array knownErrors = {
    KnownError{"template_not_found", 404, noTemplateLabel},
    KnownError{"template_body_error", 404, noBaseTemplateLabel},
    KnownError{"page_not_found", 404, noticeLabel::noPage},
    KnownError{"page_not_published", 404, noticeLabel::notPublished},
    KnownError{"no_right", 403, noticeLabel::noRight},
};

constexpr KnownError anyOther{"unknown", 500, noticeLabel::unknown};

const KnownError& errorOf(std::string_view value) {
    for (const auto& error : knownErrors) {
        if (text::equals(error.value, value)) return error;
    }
    return anyOther;
}

}  // namespace

void authorsErrorPage(HostContext& host) {
    const KnownError& error = errorOf(text::trim(host.request.queryString("error")));
    showNotice(host, {.status = error.status, .error = std::string(error.value), .message = error.message});
}

}  // namespace torvex
