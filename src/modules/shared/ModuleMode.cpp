#include "modules/shared/ModuleMode.h"

#include "delivery/LinkBuilder.h"
#include "delivery/LinkMarking.h"
#include "platform/Errors.h"

namespace torvex {

ModuleCall callInMode(HostContext& host, db::Connection& connection, std::string_view mode) {
    return {host, connection, twinOf(mode), !mode.empty()};
}

std::string withModuleLinks(const ModuleCall& call, std::string html, const std::string& site,
                            const std::string& lang) {
    return asLevel("buildLinks !", [&] {
        return call.forAuthors
                   ? withMarkedLinks(call.host, call.connection, std::move(html), {site, lang, call.twin})
                   : withRealLinks(call.host, call.connection, std::move(html), site);
    });
}

}  // namespace torvex
