#include "pages/ContentPolicy.h"

#include <algorithm>
#include <array>
#include <fmt/format.h>
#include <sodium.h>

#include "pages/PolicyReports.h"
#include "platform/ApplicationValues.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Request.h"
#include "platform/Response.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

/// What links say in the status line. Its text is given, and so is its attribute.
constexpr std::string_view statusScript = "window.status=top.torvex_empty;return true;";
constexpr std::size_t mostLinks = 16;  ///< a policy that grows with a page would cost more than it gives

/// What the site says for itself, or else what holds for all.
std::string setting(const HostContext& host, std::string_view name, std::string_view site) {
    const std::string own = host.application.text(fmt::format("{}_{}", name, site));
    return own.empty() ? host.application.text(name) : own;
}

/// Further places, with a blank in front. One that ended the directive would begin another.
std::string furtherSources(const HostContext& host, std::string_view site) {
    const std::string sources = setting(host, applicationKey::contentPolicySources, site);
    const bool isUsable = std::all_of(sources.begin(), sources.end(),
                                      [](char c) { return c >= 0x20 && c < 0x7f && c != ';' && c != ','; });
    return sources.empty() || !isUsable ? std::string() : " " + sources;
}

/// A login goes to https from a page on http, and from there back, where a site is on both.
std::string formTargets(const HostContext& host) {
    const auto& application = host.application;
    const bool isOnBoth =
        application.isTrue(applicationKey::extranetSsl) && !application.isTrue(applicationKey::websiteSsl);
    if (!isOnBoth) return {};
    const std::string name = host.request.serverVariable("server_name");
    return fmt::format(" http://{}:* https://{}:*", name, name);
}

std::string policyOf(const HostContext& host, std::string_view site, std::string_view scripts) {
    static const std::string status = scriptSource(statusScript);
    const std::string further = furtherSources(host, site);
    std::string policy;
    policy.reserve(512);
    policy.append("default-src 'self'").append(further);
    policy.append("; script-src 'self' 'unsafe-hashes'").append(status).append(scripts).append(further);
    policy.append("; style-src 'self' 'unsafe-inline'").append(further);
    policy.append("; img-src 'self' data:").append(further);
    policy.append("; object-src 'none'; base-uri 'self'; form-action 'self'").append(formTargets(host));
    return policy.append("; frame-ancestors 'self'");
}

/// As the browser reads an attribute's text and writes the address that it makes of it.
std::string asAddress(std::string_view attribute) {
    std::string address;
    for (const char c : text::replaceAll(std::string(attribute), "&amp;", "&")) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte > 0x7e) {
            address += fmt::format("%{:02X}", byte);
        } else {
            address += c;
        }
    }
    return address;
}

}  // namespace

void addContentPolicy(HostContext& host, std::string_view site, std::string_view scripts,
                      const PolicyReports& reports) {
    const std::string mode = setting(host, applicationKey::contentPolicy, site);
    if (text::equals(mode, "off")) return;
    const bool isInForce = text::equals(mode, "on");
    const bool isReported = reports.areWanted();
    host.response.holdsWhile([&reports, isReported] { return reports.areWanted() == isReported; });
    if (!isInForce && !isReported) return;
    std::string policy = policyOf(host, site, scripts);
    if (isReported) policy.append("; report-uri ").append(policyReportPath);
    host.response.addHeader(isInForce ? "Content-Security-Policy" : "Content-Security-Policy-Report-Only",
                            std::move(policy));
}

std::string scriptSource(std::string_view script) {
    std::array<unsigned char, crypto_hash_sha256_BYTES> hash{};
    crypto_hash_sha256(hash.data(), reinterpret_cast<const unsigned char*>(script.data()), script.size());
    std::array<char, sodium_base64_ENCODED_LEN(crypto_hash_sha256_BYTES, sodium_base64_VARIANT_ORIGINAL)>
        text{};
    sodium_bin2base64(text.data(), text.size(), hash.data(), hash.size(), sodium_base64_VARIANT_ORIGINAL);
    return fmt::format(" 'sha256-{}'", text.data());
}

std::string linkSources(std::string_view html) {
    constexpr std::string_view scheme = "javascript:";
    std::string sources;
    std::size_t links = 0;
    for (std::size_t at = html.find(scheme); at != std::string_view::npos && links < mostLinks;
         at = html.find(scheme, at + scheme.size())) {
        const char quote = at > 0 ? html[at - 1] : ' ';
        if (quote != '"' && quote != '\'') continue;
        const std::size_t end = html.find(quote, at);
        if (end == std::string_view::npos) break;
        const std::string source = scriptSource(asAddress(html.substr(at, end - at)));
        if (text::contains(sources, source)) continue;
        sources += source;
        ++links;
    }
    return sources;
}

std::string ownFormPolicy(const HostContext& host) {
    return fmt::format(
        "default-src 'none'; style-src 'unsafe-inline'; img-src 'self'; base-uri 'none'; form-action "
        "'self'{}; "
        "frame-ancestors 'self'",
        formTargets(host));
}

std::string ownPagePolicy(std::string_view scripts, std::string_view further) {
    std::string policy("default-src 'none'; style-src 'unsafe-inline'; img-src 'self'");
    if (!scripts.empty()) policy.append("; script-src 'self'").append(scripts);
    return policy.append(further).append("; base-uri 'none'; form-action 'none'; frame-ancestors 'self'");
}

}  // namespace torvex
