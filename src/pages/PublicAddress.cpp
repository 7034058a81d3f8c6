#include "pages/PublicAddress.h"

#include "platform/ApplicationValues.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/Request.h"
#include "platform/text/Text.h"

namespace torvex {

std::string withPublicPorts(const HostContext& host, std::string text) {
    const std::string asked = host.request.serverVariable("http_host");
    const std::size_t colon = asked.rfind(':');
    if (colon == std::string::npos || asked.find(']', colon) != std::string::npos) return text;
    const std::string name = asked.substr(0, colon + 1);
    for (const auto& [scheme, key] :
         {std::pair{"http://", applicationKey::portHttp}, {"https://", applicationKey::portHttps}}) {
        const std::string port = host.application.text(key);
        if (port.empty() || port == asked.substr(colon + 1)) continue;
        text = text::replaceAll(text, scheme + asked, scheme + name + port);
    }
    return text;
}

}  // namespace torvex
