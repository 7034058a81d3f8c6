#include "cli/Services.h"

#include "platform/HostContext.h"
#include "platform/Request.h"
#include "platform/Response.h"
#include "platform/Session.h"

namespace torvex::cli {

Services::Services(Installation opened)
    : installation(std::move(opened)),
      database(db::makeDatabase()),
      files(std::vector<std::string>{installation.folder().string()}),
      directHits(*database, application) {
    installation.openCurrentDatabase(*database);
    installation.startValues(application);
}

void Services::runWithoutVisitor(const std::function<void(HostContext&)>& work) {
    Request request;
    Response response;
    Session session("");
    HostContext host{request, response, session, application, files, clock, http, *database, directHits};
    work(host);
}

}  // namespace torvex::cli
