// Files that aren't taken, over HTTP.

#include <gmock/gmock.h>

#include "support/UploadTest.h"

namespace torvex {
namespace {

using test::ApiClient;
using test::ApiReply;
using testing::IsEmpty;
using testing::SizeIs;

class UploadRefusals : public test::UploadTest {};
INSTANTIATE_TEST_SUITE_P(Engines, UploadRefusals, test::bothEngines(), test::engineName);

// ---- What is refused ----

TEST_P(UploadRefusals, AnotherVersionOfTheProtocolIsRefused) {
    startUploads();
    ApiClient her = loggedIn();
    const std::string location = begin(her, image("rose.gif"), 13);
    for (const std::string version : {"", "Tus-Resumable: 0.2.2\r\n"}) {
        const std::string fields = "X-Torvex-Token: " + her.token + "\r\n" + version;
        for (const ApiReply& reply :
             {her.ask("POST", "uploads", fields + "Content-Length: 0\r\n"),
              her.ask("PATCH", location.substr(12),
                      fields + "Content-Type: application/offset+octet-stream\r\n", "x"),
              her.ask("DELETE", location.substr(12), fields + "Content-Length: 0\r\n")}) {
            expectKind(reply, 412, "other-version");
            EXPECT_EQ(reply.raw.field("Tus-Version"), "1.0.0");
        }
    }
}

TEST_P(UploadRefusals, WhatCantBeReadIsNotUnderstood) {
    startUploads();
    ApiClient her = loggedIn();
    for (const std::string fields :
         {"", "Upload-Length: x\r\n", "Upload-Length: -1\r\n", "Upload-Defer-Length: 1\r\n",
          "Upload-Length: 99999999999999999999\r\n", "Upload-Length: 5\r\nUpload-Metadata: site %%\r\n",
          "Upload-Length: 5\r\nUpload-Metadata: site YWE=,site YWE=\r\n"}) {
        SCOPED_TRACE(fields);
        expectKind(her.ask("POST", "uploads", ours(her) + fields + "Content-Length: 0\r\n"), 400,
                   "not-understood");
    }
    expectNothing();
}

TEST_P(UploadRefusals, NamesAndPlacesThatAreNoneDontFit) {
    startUploads();
    ApiClient her = loggedIn();
    const struct {
        std::string argument;
        Metadata metadata;
    } cases[] = {
        {"filename", image("../rose.gif")},
        {"filename", image("a/rose.gif")},
        {"filename", image("a\\rose.gif")},
        {"filename", image(".rose.gif")},
        {"filename", image("rose\n.gif")},
        {"filename", image("")},
        {"filename", image("-")},
        {"filename", image(std::string("rose\0.gif", 9))},
        {"filename", image(std::string(300, 'x') + ".gif")},
        {"filename", {{"site", "aa"}, {"folderType", "images"}}},
        {"folder", image("rose.gif", {{"folder", "01"}})},
        {"folder", image("rose.gif", {{"folder", "../"}})},
        {"site", image("rose.gif", {{"site", "../"}})},
        {"site", {{"folderType", "images"}, {"filename", "rose.gif"}}},
        {"folderType", image("rose.gif", {{"folderType", "films"}})},
        {"folderType", {{"site", "aa"}, {"filename", "rose.gif"}}},
        {"title", image("rose.gif", {{"title", "\xFF"}})},
        {"title", image("rose.gif", {{"title", std::string("a\0b", 3)}})},
    };
    for (const auto& [argument, metadata] : cases) {
        SCOPED_TRACE(field(metadata));
        const ApiReply reply = announce(her, metadata, 13);
        expectKind(reply, 422, "not-fitting");
        EXPECT_EQ(reply.text("/argument"), argument);
    }
    expectKind(announce(her, image("rose.gif"), 0), 422, "not-fitting");
    expectNothing();
}

TEST_P(UploadRefusals, AFolderThatIsntThereTakesNoFile) {
    startUploads();
    ApiClient her = loggedIn();
    const ApiReply reply = announce(her, image("rose.gif", {{"folder", "002"}}), 13);
    EXPECT_EQ(reply.status(), 409);
    EXPECT_EQ(reply.text("/code"), "-1");
    expectNothing();
}

TEST_P(UploadRefusals, ATypeThatIsntKeptIsRefused) {
    startUploads();
    ApiClient her = loggedIn();
    for (const auto* name : {"a.exe", "a.php", "a.asp", "a.conf", "a", "a.gif.exe"})
        expectKind(announce(her, document(name), 13), 415, "other-kind");
    for (const auto* name : {"a.pdf", "a.zip", "a.html", "a.txt"})
        expectKind(announce(her, image(name), 13), 415, "other-kind");
    expectKind(announce(her, image("a.gif", {{"filetype", "application/zip"}}), 13), 415, "other-kind");
    expectKind(announce(her, document("a.pdf", {{"filetype", "image/png"}}), 13), 415, "other-kind");
    expectNothing();
}

TEST_P(UploadRefusals, AFileThatIsTooLargeIsRefused) {
    startUploads(1000);
    ApiClient her = loggedIn();
    expectKind(announce(her, image("a.gif"), 1001), 413, "file-too-large");
    EXPECT_EQ(announce(her, image("a.gif"), 1000).status(), 201);
}

TEST_P(UploadRefusals, TooMuchUnderWayIsRefused) {
    startUploads(1000);
    ApiClient her = loggedIn();
    std::string location;
    for (int i = 0; i < 4; ++i) location = begin(her, image("a" + std::to_string(i) + ".gif"), 1000);
    expectKind(announce(her, image("b.gif"), 1), 413, "much-under-way");
    request(her, "DELETE", location, "Content-Length: 0\r\n");
    EXPECT_EQ(announce(her, image("b.gif"), 1).status(), 201);
}

TEST_P(UploadRefusals, OneThatRestsForADayIsRemoved) {
    startUploads();
    ApiClient her = loggedIn();
    const std::string location = begin(her, image("a.gif"), 13);
    host.clock = FixedClock(DateTime{2026, 6, 16, 12, 0, 0});
    begin(her, image("b.gif"), 13);
    EXPECT_EQ(head(her, location).status, 404);
    EXPECT_THAT(underWay(), SizeIs(2));
}

TEST_P(UploadRefusals, APieceGoesOnWhereTheLastOneEnded) {
    startUploads();
    ApiClient her = loggedIn();
    const std::string location = begin(her, image("rose.gif"), 13);
    send(her, location, 0, gif().substr(0, 5));
    for (const std::uint64_t offset : {0U, 4U, 6U, 13U}) {
        expectKind(send(her, location, offset, gif().substr(offset)), 409, "other-offset");
    }
    expectKind(send(her, location, 0, ""), 409, "other-offset");
    EXPECT_EQ(send(her, location, 5, "").status(), 204) << "a piece without bytes";
    EXPECT_EQ(offsetOf(her, location), "5");
}

TEST_P(UploadRefusals, AnUploadThatIsntThereTakesNothing) {
    startUploads();
    ApiClient her = loggedIn();
    for (const std::string id : {"", "00000000000000000000000000000000", "../../etc/passwd", "a/b"}) {
        expectKind(send(her, "/torvex/api/uploads/" + id, 0, gif()), 404, "not-there");
        EXPECT_EQ(head(her, "/torvex/api/uploads/" + id).status, 404) << id;
    }
}

TEST_P(UploadRefusals, APieceNeedsItsTypeAndItsPlace) {
    startUploads();
    ApiClient her = loggedIn();
    const std::string location = begin(her, image("rose.gif"), 13);
    const std::string target = location.substr(12);
    expectKind(
        her.ask("PATCH", target, ours(her) + "Content-Type: text/plain\r\nUpload-Offset: 0\r\n", gif()), 415,
        "other-type");
    expectKind(her.ask("PATCH", target, ours(her) + "Upload-Offset: 0\r\nContent-Length: 0\r\n"), 415,
               "other-type");
    for (const std::string offset : {"", "Upload-Offset: x\r\n", "Upload-Offset: -1\r\n"}) {
        const std::string fields = ours(her) + "Content-Type: application/offset+octet-stream\r\n" + offset;
        expectKind(her.ask("PATCH", target, fields, gif()), 400, "not-understood");
        expectKind(her.ask("PATCH", target, fields + "Content-Length: 0\r\n"), 400, "not-understood");
    }
    EXPECT_EQ(offsetOf(her, location), "0");
}

TEST_P(UploadRefusals, OtherMethodsAreToldWhichThereAre) {
    startUploads();
    ApiClient her = loggedIn();
    const ApiReply all = request(her, "GET", "/torvex/api/uploads");
    expectKind(all, 405, "other-method");
    EXPECT_EQ(all.raw.field("Allow"), "POST, OPTIONS");
    const ApiReply one = request(her, "GET", begin(her, image("rose.gif"), 13));
    EXPECT_EQ(one.status(), 405);
    EXPECT_EQ(one.raw.field("Allow"), "HEAD, PATCH, DELETE, OPTIONS");
}

TEST_P(UploadRefusals, AnAnnouncementBringsNoBytes) {
    startUploads();
    ApiClient her = loggedIn();
    const ApiReply reply =
        her.ask("POST", "uploads",
                ours(her) +
                    "Content-Type: application/x-www-form-urlencoded\r\nUpload-Length: 13\r\n"
                    "Upload-Metadata: " +
                    field(image("rose.gif")) + "\r\n",
                gif());
    EXPECT_EQ(reply.status(), 413);
    expectNothing();
}

// ---- Lies ----

TEST_P(UploadRefusals, MoreBytesThanWereSaidAreRefused) {
    startUploads();
    ApiClient her = loggedIn();
    const std::string location = begin(her, image("rose.gif"), 13);
    expectKind(send(her, location, 0, gif() + "more"), 413, "file-too-large");
    const ApiReply inChunks =
        her.ask("PATCH", location.substr(12),
                ours(her) +
                    "Content-Type: application/offset+octet-stream\r\nUpload-Offset: 0\r\n"
                    "Transfer-Encoding: chunked\r\n\r\n20\r\n" +
                    gif() + std::string(19, 'x') + "\r\n0\r\n\r\n");
    expectKind(inChunks, 413, "file-too-large");
    EXPECT_EQ(offsetOf(her, location), "0");
    EXPECT_EQ(send(her, location, 0, gif()).status(), 200);
}

TEST_P(UploadRefusals, AnArchiveIsNoPicture) {
    startUploads();
    ApiClient her = loggedIn();
    const std::string archive = "PK\3\4 and many files" + std::string(5000, 'x');
    for (const auto* name : {"a.png", "a.jpg", "a.gif", "a.bmp", "a.webp", "a.svg"}) {
        SCOPED_TRACE(name);
        const std::string location = begin(her, image(name), archive.size());
        expectKind(send(her, location, 0, archive), 415, "other-kind");
        EXPECT_EQ(head(her, location).status, 404);
    }
    expectNothing();
}

TEST_P(UploadRefusals, ALieIsFoundOutBeforeTheWholeFileHasCome) {
    startUploads();
    ApiClient her = loggedIn();
    const std::string location = begin(her, image("a.png"), 100000);
    expectKind(send(her, location, 0, "PK\3\4" + std::string(5000, 'x')), 415, "other-kind");
    expectNothing();
}

TEST_P(UploadRefusals, APictureWithoutASizeIsNone) {
    startUploads();
    ApiClient her = loggedIn();
    expectKind(upload(her, image("a.gif"), "GIF89a"), 415, "other-kind");
    expectKind(upload(her, image("a.jpg"), "\xFF\xD8\xFF" + std::string(100, 'x')), 415, "other-kind");
    expectNothing();
}

TEST_P(UploadRefusals, ADocumentIsWhatItsNameSays) {
    startUploads();
    ApiClient her = loggedIn();
    expectKind(upload(her, document("a.pdf"), "PK\3\4 and many files"), 415, "other-kind");
    expectKind(upload(her, document("a.txt"), std::string("MZ\x90\0\3\0", 6)), 415, "other-kind");
    EXPECT_THAT(underWay(), IsEmpty());
}

}  // namespace
}  // namespace torvex
