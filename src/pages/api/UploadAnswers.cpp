#include "pages/api/UploadAnswers.h"

#include <boost/json/object.hpp>

#include "accounts/Actor.h"
#include "media/FileKinds.h"
#include "operations/register/NeedLabels.h"
#include "pages/api/UploadMetadata.h"
#include "pages/api/UploadWish.h"
#include "platform/Days.h"
#include "platform/HostContext.h"
#include "platform/Request.h"
#include "platform/text/Text.h"

namespace torvex::api {

namespace {

namespace json = boost::json;
using operations::ArgumentError;

constexpr std::string_view extensions = "creation,termination";

std::string fieldOf(const HostContext& host, std::string_view name) {
    return host.request.serverVariable(name);
}

std::string methodOf(const HostContext& host) {
    return fieldOf(host, "request_method");
}

std::chrono::sys_seconds nowOf(const HostContext& host) {
    return secondOf(host.clock.now());
}

/// One request, and what it needs of all.
struct Visit {
    HostContext& host;
    UploadDesk& desk;
    Calls& calls;

    void refuse(const Problem& problem) const { answer(host.response, problem); }
    void refuse(const ProblemKind& kind) const { refuse(calls.problem(kind)); }
    void finish(int status) const {
        host.response.status = status;
        host.response.cacheControl = "no-store";
        addFields(host.response);
    }
    const operations::Operation& operation() const { return *calls.find("registers", "checkUpload"); }
};

// ---- A file is announced ----

std::optional<Problem> refusalOf(const Visit& visit, const UploadPlan& plan, const UploadMetadata& metadata) {
    Reply place = checkPlace(visit.calls, plan);
    if (isDenied(place)) return std::get<Problem>(std::move(place));
    const UploadSettings& settings = visit.desk.settings;
    if (plan.length > settings.mostBytes)
        return visit.calls.problem(kind::fileTooLarge, {{"size", megabytes(settings.mostBytes)}});
    const auto claimed = metadata.find("filetype");
    const std::string_view type = claimed == metadata.end() ? std::string_view() : claimed->second;
    if (!isKeptKind(plan.file.folder.kind, plan.file.name, type, settings.types))
        return visit.calls.problem(kind::otherKind);
    const bool isInTheWay = std::holds_alternative<Problem>(place) && !(plan.replaces && saysExists(place));
    if (isInTheWay) return std::get<Problem>(std::move(place));
    return std::nullopt;
}

void beginPlanned(const Visit& visit, const UploadPlan& plan, const UploadMetadata& metadata) {
    if (auto refusal = refusalOf(visit, plan, metadata)) return visit.refuse(*refusal);
    visit.desk.store.removeExpired(nowOf(visit.host));
    const auto upload = visit.desk.store.begin(plan, nowOf(visit.host));
    if (!upload) return visit.refuse(kind::muchUnderWay);
    visit.host.response.addHeader("Location", std::string(uploadFolder) + upload->id);
    visit.host.response.addHeader("Upload-Offset", "0");
    visit.finish(201);
}

UploadPlan planFrom(const Visit& visit, const UploadMetadata& metadata, std::uint64_t length) {
    UploadPlan plan = planOf(metadata);
    if (length == 0)
        throw ArgumentError("a file with something in it is needed", "Upload-Length",
                            operations::need::content);
    plan.loginId = actorOf(visit.host).loginId;
    plan.length = length;
    plan.metadata = fieldOf(visit.host, "http_upload_metadata");
    return plan;
}

void begin(const Visit& visit) {
    if (isTooFast(visit.host, *visit.desk.api)) return;
    const auto length = numberIn(fieldOf(visit.host, "http_upload_length"));
    const auto metadata = readUploadMetadata(fieldOf(visit.host, "http_upload_metadata"));
    if (!length || !metadata) return visit.refuse(kind::notUnderstood);
    if (!isFromOwnDocument(visit.host)) return visit.refuse(visit.calls.foreign(visit.operation()));
    try {
        beginPlanned(visit, planFrom(visit, *metadata, *length), *metadata);
    } catch (const ArgumentError& error) {
        visit.refuse(visit.calls.notFitting(visit.operation(), error));
    }
}

// ---- One that is under way ----

/// Whether the request is by somebody who is logged in, and from our own pages unless it only reads; else it is
/// answered.
bool isByAuthor(const Visit& visit) {
    const bool isReading = methodOf(visit.host) == "HEAD";
    const bool isLoggedIn = actorOf(visit.host).isLoggedIn();
    if (isLoggedIn && (isReading || isFromOwnDocument(visit.host))) return true;
    visit.refuse(visit.calls.foreign(visit.operation()));
    return false;
}

/// Whether the login may still do it; else the request is answered.
bool isAllowed(const Visit& visit, const UploadPlan& plan) {
    const Reply place = checkPlace(visit.calls, plan);
    if (!isDenied(place)) return true;
    visit.refuse(std::get<Problem>(place));
    return false;
}

void tellState(const Visit& visit, const UploadPlan& plan, std::uint64_t offset) {
    visit.host.response.addHeader("Upload-Offset", std::to_string(offset));
    visit.host.response.addHeader("Upload-Length", std::to_string(plan.length));
    visit.host.response.addHeader("Upload-Metadata", plan.metadata);
    visit.finish(200);
}

/// What stands in the way of a piece without bytes.
std::optional<ProblemKind> faultOfEmptyPiece(const HostContext& host, std::uint64_t offset) {
    const std::string type = fieldOf(host, "http_content_type");
    if (!text::equals(text::trim(type.substr(0, type.find(';'))), pieceType)) return kind::otherType;
    const auto given = numberIn(fieldOf(host, "http_upload_offset"));
    if (!given) return kind::notUnderstood;
    if (*given != offset) return kind::otherOffset;
    return std::nullopt;
}

void answerRow(const Visit& visit, json::value row) {
    answer(visit.host.response, json::object{{"result", std::move(row)}});
}

void end(const Visit& visit, const std::string& id) {
    Reply reply = finishUpload(visit.host, visit.desk, visit.calls, id);
    if (const auto* problem = std::get_if<Problem>(&reply)) return visit.refuse(*problem);
    answerRow(visit, std::move(std::get<json::value>(reply)));
}

void goOn(const Visit& visit, const Upload& upload) {
    const std::uint64_t telling = std::min<std::uint64_t>(tellingBytes, upload.plan.length);
    if (upload.offset >= telling && !isOfItsKind(visit.desk, upload)) {
        visit.desk.store.remove(upload.id);
        return visit.refuse(kind::otherKind);
    }
    visit.host.response.addHeader("Upload-Offset", std::to_string(upload.offset));
    if (upload.isWhole()) return end(visit, upload.id);
    visit.finish(204);
}

void takePiece(const Visit& visit, const Upload& upload) {
    const std::string receipt = fieldOf(visit.host, "body_receipt");
    if (receipt.empty()) {
        if (const auto fault = faultOfEmptyPiece(visit.host, upload.offset)) return visit.refuse(*fault);
        return goOn(visit, upload);
    }
    const auto now = visit.desk.store.keep(upload.id, receipt, nowOf(visit.host));
    if (!now) return visit.refuse(kind::otherOffset);
    goOn(visit, *now);
}

void drop(const Visit& visit, const Upload& upload) {
    const auto alone = visit.desk.store.alone();
    visit.desk.store.remove(upload.id);
    visit.finish(204);
}

void answerUnfinished(const Visit& visit, const Upload& upload) {
    if (!isAllowed(visit, upload.plan)) return;
    const std::string method = methodOf(visit.host);
    if (method == "HEAD") return tellState(visit, upload.plan, upload.offset);
    if (method == "PATCH") return takePiece(visit, upload);
    drop(visit, upload);
}

void answerFinished(const Visit& visit, const FinishedUploads::Finished& finished) {
    if (!isAllowed(visit, finished.plan)) return;
    const std::string method = methodOf(visit.host);
    if (method == "HEAD") return tellState(visit, finished.plan, finished.plan.length);
    if (method == "DELETE") return visit.refuse(kind::notThere);
    if (const auto fault = faultOfEmptyPiece(visit.host, finished.plan.length)) return visit.refuse(*fault);
    answerRow(visit, finished.row);
}

void answerOwn(const Visit& visit) {
    if (!isByAuthor(visit)) return;
    const std::string id = uploadIn(fieldOf(visit.host, "script_name"));
    const int caller = actorOf(visit.host).loginId;
    const auto upload = visit.desk.store.find(id);
    if (upload && upload->plan.loginId == caller) return answerUnfinished(visit, *upload);
    if (const auto finished = visit.desk.finished.find(id, caller)) return answerFinished(visit, *finished);
    visit.refuse(kind::notThere);
}

/// What the protocol asks of a server that is asked for its version.
void tellProtocol(const Visit& visit) {
    Response& response = visit.host.response;
    response.addHeader("Tus-Version", std::string(uploadVersion));
    response.addHeader("Tus-Extension", std::string(extensions));
    response.addHeader("Tus-Max-Size", std::to_string(visit.desk.settings.mostBytes));
    visit.finish(204);
}

}  // namespace

void answerUpload(HostContext& host, UploadDesk& desk) {
    const Shared shared = desk.api->shared();
    Calls calls(shared, host, languageOf(host, desk.api->words));
    const Visit visit{host, desk, calls};
    if (methodOf(host) == "OPTIONS") return tellProtocol(visit);
    if (fieldOf(host, "http_tus_resumable") != uploadVersion) {
        host.response.addHeader("Tus-Version", std::string(uploadVersion));
        return visit.refuse(kind::otherVersion);
    }
    if (methodOf(host) == "POST") return begin(visit);
    answerOwn(visit);
}

}  // namespace torvex::api
