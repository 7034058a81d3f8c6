#include <boost/json/object.hpp>
#include <cerrno>
#include <filesystem>
#include <optional>
#include <sys/stat.h>
#include <system_error>

#include "media/FileKinds.h"
#include "media/FileNames.h"
#include "media/FileSwap.h"
#include "media/FolderChanges.h"
#include "media/ImageHeader.h"
#include "pages/api/UploadDesk.h"
#include "platform/HostContext.h"
#include "platform/OperatorLog.h"
#include "platform/db/ConnectionSource.h"
#include "platform/files/FileSystem.h"
#include "replication/Replication.h"
#include "replication/SharedFiles.h"

namespace torvex::api {

namespace {

namespace fs = std::filesystem;
namespace json = boost::json;

std::string_view wordOf(MediaKind kind) {
    return kind == MediaKind::Images ? "images" : "documents";
}

operations::GivenValues placeOf(const UploadPlan& plan) {
    const MediaFolder& folder = plan.file.folder;
    return {{"site", folder.site},
            {"folderType", wordOf(folder.kind)},
            {"folder", folder.id},
            {"filename", plan.file.name}};
}

/// Folders may lie on different disks.
void bring(const std::string& from, const std::string& to) {
    std::error_code error;
    fs::rename(from, to, error);
    if (!error) return;
    if (error != std::errc::cross_device_link) throw std::system_error(error, to);
    fs::copy_file(from, to, fs::copy_options::overwrite_existing);
    fs::remove(from);
}

bool areOnOneDisk(const std::string& one, const std::string& other) {
    struct stat first {};
    struct stat second {};
    return ::stat(one.c_str(), &first) == 0 && ::stat(other.c_str(), &second) == 0 &&
           first.st_dev == second.st_dev;
}

/// From where the bytes can be given their name in one step: from where they are, or from beside it.
std::string besideFor(const HostContext& host, const std::string& from, const MediaFolder& folder) {
    const std::string directory = directoryOf(host, folder);
    if (host.files.fileExists(from) && areOnOneDisk(from, directory)) return from;
    return directory + "/.torvex-" + randomFileName("") + ".tmp";
}

/// An upload's bytes in the place of the file that it becomes. They go back unless they are kept.
class PutInPlace {
  public:
    PutInPlace(HostContext& host, std::string from, const MediaPath& file) : from_(std::move(from)) {
        SharedFiles files(host);
        makeMediaDirectories(host, files, file.folder);
        files.replicate();
        beside_ = besideFor(host, from_, file.folder);
        if (beside_ != from_) bring(from_, beside_);
        try {
            swap_.emplace(host.files, beside_, file.absolute(host));
        } catch (...) {
            if (beside_ != from_) bring(beside_, from_);
            throw;
        }
    }
    PutInPlace(const PutInPlace&) = delete;
    PutInPlace& operator=(const PutInPlace&) = delete;
    ~PutInPlace() {
        if (isKept_) return;
        swap_.reset();
        if (beside_ != from_) goBack();
    }
    void keep() {
        swap_->keep();
        isKept_ = true;
    }

  private:
    void goBack() noexcept {
        try {
            bring(beside_, from_);
        } catch (const std::exception&) {
            // The upload is lost, and its note is cleared away with the next start.
        }
    }

    const std::string from_;
    std::string beside_;
    std::optional<FileSwap> swap_;
    bool isKept_ = false;
};

Reply registerFile(Calls& calls, const UploadPlan& plan) {
    operations::GivenValues values = placeOf(plan);
    values.emplace_back("title", plan.title);
    return calls.call("cManager", "saveFile", values);
}

Reply renewFile(Calls& calls, const UploadPlan& plan) {
    const MediaFolder& folder = plan.file.folder;
    return calls.call(
        "registers", "replaceMedia",
        {{"site", folder.site}, {"folderType", wordOf(folder.kind)}, {"path", plan.file.relative()}});
}

json::object rowOf(const MediaRecord& record) {
    json::object row{{"folder", record.folder},       {"path", record.path},
                     {"title", record.title},         {"type", mediaSuffix(record.path)},
                     {"size", record.facts.size},     {"width", record.facts.width},
                     {"height", record.facts.height}, {"alt", nullptr}};
    if (record.alt) row["alt"] = *record.alt;
    return row;
}

bool isMeasured(std::string_view suffix) {
    return suffix == "gif" || suffix == "png" || suffix == "jpg" || suffix == "jpeg" || suffix == "bmp";
}

bool hasSize(const UploadDesk& desk, const Upload& upload) {
    const ImageHeader header = readImageHeader(
        [&](std::uint64_t offset, std::size_t length) { return desk.store.read(upload, offset, length); });
    return header.width.value_or(0) > 0 && header.height.value_or(0) > 0;
}

}  // namespace

Reply checkPlace(Calls& calls, const UploadPlan& plan) {
    return calls.call("registers", "checkUpload", placeOf(plan));
}

bool isDenied(const Reply& reply) {
    const auto* problem = std::get_if<Problem>(&reply);
    return problem && problem->status != kind::refused.status;
}

bool saysExists(const Reply& reply) {
    const auto* problem = std::get_if<Problem>(&reply);
    const json::value* code = problem ? problem->more.if_contains("code") : nullptr;
    return code && *code == "exists";
}

bool isOfItsKind(const UploadDesk& desk, const Upload& upload) {
    const std::string suffix = mediaSuffix(upload.plan.file.name);
    if (!beginsAs(suffix, desk.store.read(upload, 0, tellingBytes))) return false;
    const bool isPicture = upload.plan.file.folder.kind == MediaKind::Images && isMeasured(suffix);
    return !upload.isWhole() || !isPicture || hasSize(desk, upload);
}

Reply finishUpload(HostContext& host, UploadDesk& desk, Calls& calls, const std::string& id) {
    // Two files of one name must not both find their place free.
    const auto alone = desk.store.alone();
    const auto upload = desk.store.find(id);
    if (!upload) return calls.problem(kind::notThere);
    const UploadPlan& plan = upload->plan;
    Reply place = checkPlace(calls, plan);
    const bool isThere = saysExists(place);
    if (std::holds_alternative<Problem>(place) && !(isThere && plan.replaces)) return place;
    const auto connection = db::openOwn(host, db::Purpose::Everything);
    PutInPlace put(host, desk.store.pathOf(*upload), plan.file);
    Reply done = findMedia(*connection, plan.file) ? renewFile(calls, plan) : registerFile(calls, plan);
    if (std::holds_alternative<Problem>(done)) return done;
    put.keep();
    desk.store.remove(id);
    followUp(host.log, "the file \"" + plan.file.relative() + "\" did not reach the other servers", [&] {
        replicateFile(host, plan.file.absolute(host), isThere ? FileChange::Replace : FileChange::Add);
    });
    const auto record = findMedia(*connection, plan.file);
    if (!record) return done;
    json::value row = rowOf(*record);
    desk.finished.add(id, {plan, row});
    return row;
}

}  // namespace torvex::api
