#include <boost/json.hpp>
#include <fmt/format.h>

#include "pages/Pages.h"
#include "pages/PolicyReports.h"
#include "pages/Posted.h"
#include "platform/HostContext.h"
#include "platform/OperatorLog.h"
#include "platform/Request.h"
#include "platform/Response.h"
#include "platform/text/LogText.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

namespace json = boost::json;

constexpr std::string_view reportName = "csp-report";

const json::object* objectAt(const json::value& value, std::string_view name) {
    const auto* object = value.if_object();
    const json::value* member = object ? object->if_contains(name) : nullptr;
    return member ? member->if_object() : nullptr;
}

std::string textAt(const json::object& report, std::string_view name) {
    const json::value* value = report.if_contains(name);
    const json::string* found = value ? value->if_string() : nullptr;
    return found ? std::string(found->data(), found->size()) : std::string();
}

/// Without its query, which may hold what nobody else should read; the page's number is no secret.
std::string pageOf(const std::string& address) {
    const std::size_t question = address.find('?');
    if (question == std::string::npos) return address;
    const std::string pageId = Request(address.substr(question + 1), {}, {}).queryString("pageId");
    return address.substr(0, question) + (pageId.empty() ? "" : "?pageId=" + pageId);
}

/// "" for what is no report.
std::string lineOf(std::string_view body) {
    boost::system::error_code error;
    const json::value value = json::parse(json::string_view(body.data(), body.size()), error);
    const json::object* report = error ? nullptr : objectAt(value, reportName);
    if (!report) return {};
    std::string directive = textAt(*report, "effective-directive");
    if (directive.empty()) directive = textAt(*report, "violated-directive");
    if (directive.empty()) return {};
    const bool isInForce = textAt(*report, "disposition") == "enforce";
    return fmt::format("content policy of {}: {} {} {}", forLog(pageOf(textAt(*report, "document-uri"))),
                       forLog(directive), isInForce ? "forbids" : "would forbid",
                       forLog(textAt(*report, "blocked-uri")));
}

}  // namespace

void policyReportPage(HostContext& host, PolicyReports& reports) {
    host.response.cacheControl = "no-store";
    if (!isPosted(host)) {
        host.response.status = 405;
        host.response.addHeader("Allow", "POST");
        return;
    }
    host.response.status = 204;
    if (!reports.take()) return;
    const std::string line = lineOf(host.request.body());
    if (!line.empty()) host.log.warn(line);
}

}  // namespace torvex
