#include "support/UploadTest.h"

#include <algorithm>
#include <boost/json/parse.hpp>
#include <filesystem>
#include <fstream>
#include <sodium.h>

#include "platform/Keys.h"

namespace torvex::test {

namespace fs = std::filesystem;

namespace {

std::string base64(const std::string& bytes) {
    std::string encoded(sodium_base64_ENCODED_LEN(bytes.size(), sodium_base64_VARIANT_ORIGINAL), '\0');
    sodium_bin2base64(encoded.data(), encoded.size(), reinterpret_cast<const unsigned char*>(bytes.data()),
                      bytes.size(), sodium_base64_VARIANT_ORIGINAL);
    encoded.resize(encoded.find('\0'));
    return encoded;
}

constexpr std::string_view apiFolder = "/torvex/api/";

}  // namespace

void UploadTest::SetUp() {
    ApiTest::SetUp();
    if (HasFatalFailure()) return;
    for (const auto* folder : {"/wwwroot/images/aa", "/wwwroot/documents/aa"})
        fs::create_directories(root() + folder);
    host.application.set(applicationKey::imagesPath, root() + "/wwwroot/images/");
    host.application.set(applicationKey::documentsPath, root() + "/wwwroot/documents/");
    for (const auto* kind : {"IMAGES", "DOCUMENTS"})
        row("TORVEX_" + std::string(kind) + "_FOLDERS", {{"fld_site", "aa"},
                                                         {"fld_id", "001"},
                                                         {"fld_name", "Roses"},
                                                         {"fld_level", 1},
                                                         {"fld_parent", ""}});
    role(1);
    for (const int entry : {111, 112}) advancedRight(1, entry, "aa", "", true, true);
}

void UploadTest::startUploads(std::uint64_t mostBytes) {
    disk_ = std::make_unique<DiskFileSystem>(std::vector<std::string>{root() + reach});
    running.services.emplace(host.services().with(*disk_));
    for (PageRoute& route : api::uploadRoutes(api, {.folder = root() + "/uploads", .mostBytes = mostBytes}))
        running.pages.push_back(std::move(route));
    start();
}

std::string UploadTest::field(const Metadata& metadata) {
    std::string field;
    for (const auto& [name, value] : metadata)
        field += (field.empty() ? "" : ",") + name + (value == "-" ? "" : " " + base64(value));
    return field;
}

UploadTest::Metadata UploadTest::image(const std::string& filename, const Metadata& more) {
    Metadata metadata(more);
    metadata.insert({{"site", "aa"}, {"folder", "001"}, {"folderType", "images"}, {"filename", filename}});
    return metadata;
}

UploadTest::Metadata UploadTest::document(const std::string& filename, const Metadata& more) {
    Metadata metadata(more);
    metadata.insert({{"folderType", "documents"}});
    return image(filename, metadata);
}

std::string UploadTest::ours(const ApiClient& client) {
    return "Tus-Resumable: 1.0.0\r\nX-Torvex-Token: " + client.token + "\r\n";
}

ApiReply UploadTest::announce(ApiClient& client, const Metadata& metadata, std::uint64_t length) {
    return client.ask("POST", "uploads",
                      ours(client) + "Upload-Length: " + std::to_string(length) +
                          "\r\nUpload-Metadata: " + field(metadata) + "\r\nContent-Length: 0\r\n");
}

std::string UploadTest::begin(ApiClient& client, const Metadata& metadata, std::uint64_t length) {
    const ApiReply reply = announce(client, metadata, length);
    EXPECT_EQ(reply.status(), 201) << reply.raw.body;
    return reply.raw.field("Location");
}

ApiReply UploadTest::request(ApiClient& client, const std::string& method, const std::string& location,
                             const std::string& fields) {
    return client.ask(method, location.substr(std::min(apiFolder.size(), location.size())),
                      ours(client) + fields);
}

ApiReply UploadTest::send(ApiClient& client, const std::string& location, std::uint64_t offset,
                          const std::string& bytes) {
    const std::string fields =
        ours(client) +
        "Content-Type: application/offset+octet-stream\r\nUpload-Offset: " + std::to_string(offset) + "\r\n" +
        (bytes.empty() ? "Content-Length: 0\r\n" : "");
    return client.ask("PATCH", location.substr(std::min(apiFolder.size(), location.size())), fields, bytes);
}

RawReply UploadTest::head(ApiClient& client, const std::string& location) {
    RawHttpClient raw = running.client();
    raw.send("HEAD " + location +
             " HTTP/1.1\r\nHost: site.test\r\nTus-Resumable: 1.0.0\r\nCookie: " + client.cookie + "\r\n\r\n");
    return raw.readWithoutBody();
}

ApiReply UploadTest::upload(ApiClient& client, const Metadata& metadata, const std::string& bytes) {
    return send(client, begin(client, metadata, bytes.size()), 0, bytes);
}

std::string UploadTest::contentOf(const std::string& path) const {
    std::ifstream file(root() + "/wwwroot/" + path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

void UploadTest::put(const std::string& path, const std::string& bytes) const {
    const fs::path whole = root() + "/wwwroot/" + path;
    fs::create_directories(whole.parent_path());
    std::ofstream(whole, std::ios::binary) << bytes;
}

std::vector<std::string> UploadTest::filesIn(const std::string& folder) const {
    std::vector<std::string> names;
    std::error_code none;
    for (const auto& entry : fs::directory_iterator(root() + "/" + folder, none))
        if (entry.is_regular_file()) names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

std::vector<std::string> UploadTest::images() {
    std::vector<std::string> lines;
    auto rows = connection().query(
        "select img_filename, img_title, img_size, img_width, img_height, img_alt from TORVEX_IMAGES order "
        "by imgId");
    while (rows.next()) {
        std::string line;
        for (std::size_t i = 0; i < rows.columns(); ++i) line += (i == 0 ? "" : "|") + rows.value(i).toText();
        lines.push_back(line);
    }
    return lines;
}

void UploadTest::expectKind(const ApiReply& reply, int status, const std::string& kind) {
    EXPECT_EQ(reply.status(), status) << reply.raw.body;
    EXPECT_EQ(reply.kind(), kind);
    EXPECT_EQ(reply.raw.field("Content-Type"), "application/problem+json");
    EXPECT_EQ(reply.raw.field("Tus-Resumable"), "1.0.0");
    EXPECT_NE(reply.text("/detail"), "") << kind << " has no sentence";
}

void UploadTest::expectNothing() {
    EXPECT_TRUE(images().empty());
    EXPECT_TRUE(filesIn("wwwroot/images/aa/001").empty());
    EXPECT_TRUE(underWay().empty());
}

}  // namespace torvex::test
