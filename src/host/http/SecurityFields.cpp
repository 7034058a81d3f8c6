#include "host/http/SecurityFields.h"

#include <algorithm>
#include <fmt/format.h>

#include "host/http/Ascii.h"
#include "installation/ServerOptions.h"

namespace torvex {

namespace {

/// A type is what we say it is; other sites don't learn the full address that a visitor came from; only pages
/// of this site may frame it (the frames mode is made of such).
constexpr std::string_view always =
    "X-Content-Type-Options: nosniff\r\n"
    "Referrer-Policy: strict-origin-when-cross-origin\r\n"
    "X-Frame-Options: SAMEORIGIN\r\n";

/// Pages may hold what is meant for one visitor: another site can't load them as a picture or a script to
/// read in its memory. Public files are everybody's: letters and other sites show pictures of this one.
constexpr std::string_view ofPages = "Cross-Origin-Resource-Policy: same-origin\r\n";
/// So may a page that authors try, whose scripts run in an origin of their own: fonts and modules load there.
constexpr std::string_view ofFiles =
    "Cross-Origin-Resource-Policy: cross-origin\r\nAccess-Control-Allow-Origin: *\r\n";

/// Whoever opened this site in a window gets no hold of it, while windows that it opens itself go on working.
/// Browsers heed that over https alone, and complain otherwise.
constexpr std::string_view overTls = "Cross-Origin-Opener-Policy: same-origin-allow-popups\r\n";

std::string compose(const ServerOptions& options, SecurityFields::Kind kind, bool isTls) {
    std::string fields(always);
    fields += kind == SecurityFields::Kind::Page ? ofPages : ofFiles;
    if (!options.permissionsPolicy.empty())
        fields.append("Permissions-Policy: ").append(options.permissionsPolicy).append("\r\n");
    if (!isTls) return fields;
    fields += overTls;
    if (options.httpsAlone && options.strictTransport.count() > 0)
        fields += fmt::format("Strict-Transport-Security: max-age={}\r\n", options.strictTransport.count());
    return fields;
}

constexpr std::array<std::string_view, 8> names{"X-Content-Type-Options",
                                                "Referrer-Policy",
                                                "X-Frame-Options",
                                                "Cross-Origin-Resource-Policy",
                                                "Cross-Origin-Opener-Policy",
                                                "Access-Control-Allow-Origin",
                                                "Permissions-Policy",
                                                "Strict-Transport-Security"};

}  // namespace

bool SecurityFields::has(std::string_view name) {
    return std::ranges::any_of(names, [name](std::string_view one) { return ascii::equals(one, name); });
}

SecurityFields::SecurityFields(const ServerOptions& options)
    : texts_{compose(options, Kind::Page, false), compose(options, Kind::Page, true),
             compose(options, Kind::PublicFile, false), compose(options, Kind::PublicFile, true)} {}

}  // namespace torvex
