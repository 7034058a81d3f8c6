#include "pages/api/Tokens.h"
#include "pages/api/UploadAnswers.h"
#include "platform/HostContext.h"

namespace torvex::api {

namespace {

void answerCaller(HostContext& host, UploadDesk& desk) {
    desk.api->words.refresh(host);
    const bool isAnswered =
        answerInOwnSession(host, [&desk](HostContext& caller) { answerUpload(caller, desk); });
    if (!isAnswered) answerBadToken(host, *desk.api);
}

class Piece final : public BodySink {
  public:
    explicit Piece(std::shared_ptr<UploadWriter> writer) : writer_(std::move(writer)) {}

    bool take(std::string_view bytes) override { return writer_->write(bytes); }
    std::string receipt() const override { return writer_->receipt(); }

  private:
    const std::shared_ptr<UploadWriter> writer_;
};

/// A piece's bytes go into its upload before anybody knows whose they are; they count when that is known. Who
/// doesn't know the upload's number, which can't be guessed, sends no byte.
BodyReception receivePiece(UploadDesk& desk, const std::string& path, const FieldOf& field) {
    if (field("Tus-Resumable") != uploadVersion) return {.refusal = kind::otherVersion.status};
    const auto offset = numberIn(field("Upload-Offset"));
    if (!offset) return {.refusal = kind::notUnderstood.status};
    try {
        auto entrance = desk.store.enter(uploadIn(path), *offset);
        if (entrance.kind == UploadStore::Entrance::Kind::Gone) return {.refusal = kind::notThere.status};
        if (!entrance.writer) return {.refusal = kind::otherOffset.status};
        return {.sink = std::make_shared<Piece>(std::move(entrance.writer)), .limit = entrance.room};
    } catch (const std::exception&) {
        return {.refusal = kind::busy.status};
    }
}

const ProblemKind* kindOf(int status) {
    for (const ProblemKind* kind :
         {&kind::notThere, &kind::otherOffset, &kind::otherVersion, &kind::fileTooLarge})
        if (kind->status == status) return kind;
    return nullptr;
}

RefusalHandler refusalsOf(const std::shared_ptr<UploadDesk>& desk) {
    return [desk, others = refusals(desk->api)](const Refused& refused) {
        Response response;
        if (const ProblemKind* kind = kindOf(refused.status)) {
            const Words& words = desk->api->words;
            Problem problem = Problem::of(*kind);
            problem.detail = words.sentence(words.languageFor(refused.languages), kind->label,
                                            {{"size", megabytes(desk->settings.mostBytes)}});
            answer(response, problem);
        } else {
            response = others(refused);
        }
        response.addHeader("Tus-Resumable", std::string(uploadVersion));
        if (refused.status == kind::otherVersion.status)
            response.addHeader("Tus-Version", std::string(uploadVersion));
        return response;
    };
}

}  // namespace

std::vector<PageRoute> uploadRoutes(const std::shared_ptr<Api>& api, const UploadSettings& settings) {
    const auto desk = std::make_shared<UploadDesk>(api, settings);
    const PageHandler handler = [desk](HostContext& host) {
        // In every answer, also in those that a caller gets before her upload is looked at.
        host.response.addHeader("Tus-Resumable", std::string(uploadVersion));
        answerCaller(host, *desk);
    };
    PageRoute all{.path = std::string(uploadFolder.substr(0, uploadFolder.size() - 1)),
                  .handler = handler,
                  .methods = {Method::Post, Method::Options},
                  .bodyLimit = 0};
    all.takesTokens = true;
    all.refusal = refusalsOf(desk);
    PageRoute one{.path = std::string(uploadFolder),
                  .handler = handler,
                  .methods = {Method::Head, Method::Patch, Method::Delete, Method::Options},
                  .bodyLimit = 0,
                  .bodyTypes = {std::string(pieceType)},
                  .reach = PageRoute::Reach::Below};
    one.takesTokens = true;
    one.refusal = refusalsOf(desk);
    one.receiver = [desk](const std::string& path, const FieldOf& field) {
        return receivePiece(*desk, path, field);
    };
    return {std::move(all), std::move(one)};
}

}  // namespace torvex::api
