#include "pages/api/Answers.h"
#include "pages/api/Api.h"
#include "pages/api/Kept.h"

namespace torvex::api {

void answerDescription(HostContext& host, Api& api) {
    answerKept(host, api.description());
}

}  // namespace torvex::api
