#include "delivery/FeedSource.h"

#include <algorithm>

#include "platform/ApplicationValues.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Request.h"
#include "platform/text/Text.h"

namespace torvex::feeds {

namespace {

bool climbs(std::string_view path) {
    while (!path.empty()) {
        const std::size_t end = std::min(path.find('/'), path.size());
        if (path.substr(0, end) == "..") return true;
        path.remove_prefix(std::min(end + 1, path.size()));
    }
    return false;
}

std::string forwardSlashes(std::string text) {
    std::replace(text.begin(), text.end(), '\\', '/');
    return text;
}

}  // namespace

std::string filePath(HostContext& host, std::string_view site, std::string_view file) {
    const std::string below = forwardSlashes(std::string(site) + "/" + std::string(file));
    if (climbs(below)) return {};
    return forwardSlashes(host.application.text(applicationKey::documentsPath)) + below;
}

std::string address(std::string_view column) {
    return forwardSlashes(std::string(text::trim(column)));
}

HttpClient::Answer fetch(HostContext& host, const std::string& address) {
    if (text::contains(host.request.serverVariable("HTTP_CDN_LOOP"), fetchMark)) {
        throw Error("a page that is fetched as a feed can't fetch feeds itself");
    }
    return host.http.get(address, host.deadline());
}

std::string shownReason(HostContext& host, const std::exception& error) {
    std::string reason = error.what();
    for (const std::string_view key : {applicationKey::documentsPath, applicationKey::installPath}) {
        const std::string folder = host.application.text(key);
        if (!folder.empty()) reason = text::replaceAll(reason, folder, "");
    }
    return reason;
}

}  // namespace torvex::feeds
