#include "pages/authors/Policies.h"

#include <fmt/format.h>

#include "pages/ContentPolicy.h"
#include "pages/authors/Navigation.h"
#include "platform/HostContext.h"
#include "platform/Response.h"

namespace torvex {

namespace {

constexpr const char* policy = "Content-Security-Policy";
constexpr const char* framing = "X-Frame-Options";
constexpr const char* openerPolicy = "Cross-Origin-Opener-Policy";

/// Who in the interface may make HTML of texts: what draws its elements, and the library below its editor.
constexpr std::string_view makersOfTrustedTypes = "lit-html ProseMirrorClipboard";

}  // namespace

void addDoorPolicy(Response& response) {
    response.addHeader(policy,
                       "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self' data:; "
                       "form-action 'self'; base-uri 'none'; frame-ancestors 'none'");
    response.addHeader(framing, "DENY");
}

void addNoticePolicy(Response& response) {
    response.addHeader(policy,
                       "default-src 'none'; style-src 'self'; img-src 'self' data:; form-action 'none'; "
                       "base-uri 'none'; frame-ancestors 'self'");
}

void addConsentPolicy(Response& response) {
    response.addHeader(policy,
                       "default-src 'none'; style-src 'self'; img-src 'self' data:; form-action 'self'; "
                       "base-uri 'none'; frame-ancestors 'none'");
    response.addHeader(framing, "DENY");
}

void addShellPolicy(HostContext& host, std::string_view nonce) {
    host.response.addHeader(policy,
                            fmt::format("default-src 'none'; script-src 'self'; style-src 'self' 'nonce-{}'; "
                                        "img-src 'self' data: blob:; font-src 'self'; connect-src 'self'; "
                                        "frame-src {}/torvex/view.asp; form-action 'self'; base-uri 'none'; "
                                        "frame-ancestors 'none'; require-trusted-types-for 'script'; "
                                        "trusted-types {}; report-uri {}",
                                        nonce, originOf(host), makersOfTrustedTypes, policyReportPath));
    host.response.addHeader(openerPolicy, "same-origin");
    host.response.addHeader(framing, "DENY");
}

void addEditPolicy(Response& response) {
    response.addHeader(policy,
                       "script-src 'none'; frame-src 'none'; object-src 'none'; form-action 'none'; "
                       "base-uri 'self'; frame-ancestors 'self'");
}

void addTryPolicy(Response& response) {
    response.addHeader(policy,
                       "sandbox allow-scripts allow-forms allow-popups; base-uri 'self'; frame-ancestors "
                       "'self'");
}

}  // namespace torvex
