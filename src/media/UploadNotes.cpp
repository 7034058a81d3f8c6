#include "media/UploadNotes.h"

#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>

namespace torvex {

namespace {

namespace json = boost::json;

std::string textOf(const json::object& note, std::string_view key) {
    return std::string(note.at(key).as_string());
}

std::uint64_t numberOf(const json::object& note, std::string_view key) {
    return note.at(key).to_number<std::uint64_t>();
}

}  // namespace

std::string noteOf(const Upload& upload) {
    const UploadPlan& plan = upload.plan;
    const json::object note{{"login", plan.loginId},
                            {"isImage", plan.file.folder.kind == MediaKind::Images},
                            {"site", plan.file.folder.site},
                            {"folder", plan.file.folder.id},
                            {"name", plan.file.name},
                            {"title", plan.title},
                            {"replaces", plan.replaces},
                            {"length", plan.length},
                            {"metadata", plan.metadata},
                            {"offset", upload.offset},
                            {"changed", upload.changed.time_since_epoch().count()}};
    return json::serialize(note);
}

std::optional<Upload> readNote(std::string_view note) try {
    const json::object read = json::parse(json::string_view(note.data(), note.size())).as_object();
    const MediaKind kind = read.at("isImage").as_bool() ? MediaKind::Images : MediaKind::Documents;
    Upload upload;
    upload.plan.loginId = read.at("login").to_number<int>();
    const auto file = mediaPathOf(kind, textOf(read, "site"),
                                  relativePathOf(textOf(read, "folder")) + textOf(read, "name"));
    if (!file) return std::nullopt;
    upload.plan.file = *file;
    upload.plan.title = textOf(read, "title");
    upload.plan.replaces = read.at("replaces").as_bool();
    upload.plan.length = numberOf(read, "length");
    upload.plan.metadata = textOf(read, "metadata");
    upload.offset = numberOf(read, "offset");
    upload.changed =
        std::chrono::sys_seconds(std::chrono::seconds(read.at("changed").to_number<std::int64_t>()));
    if (upload.offset > upload.plan.length) return std::nullopt;
    return upload;
} catch (const std::exception&) {
    return std::nullopt;
}

}  // namespace torvex
