#pragma once

namespace torvex {
struct HostContext;
}

/// What answers each address below /torvex/api/. Called on a worker thread, with the session held.
namespace torvex::api {

struct Api;

/// /torvex/api/CLASS/OPERATION
void answerCall(HostContext& host, Api& api);

/// /torvex/api/batch
void answerBatch(HostContext& host, Api& api);

/// /torvex/api/session: who asks, what she may do, and the limits.
void answerSession(HostContext& host, Api& api);

/// /torvex/api/export/NAME.csv
void answerExport(HostContext& host, Api& api);

/// /torvex/api/openapi.json, to anybody.
void answerDescription(HostContext& host, Api& api);

/// /torvex/api/labels?lang=: the words of the interface by their numbers, to anybody.
void answerLabels(HostContext& host, Api& api);

}  // namespace torvex::api
