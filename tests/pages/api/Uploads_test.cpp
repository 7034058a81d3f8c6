// Files that come in pieces, over HTTP.

#include <boost/json/serialize.hpp>
#include <filesystem>
#include <gmock/gmock.h>
#include <thread>

#include "accounts/ProgramTokens.h"
#include "support/UploadTest.h"

namespace torvex {
namespace {

using test::ApiClient;
using test::ApiReply;
using test::RawHttpClient;
using test::RawReply;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

class Uploads : public test::UploadTest {
  protected:
    /// Until the server has noticed.
    std::string offsetBecomes(ApiClient& client, const std::string& location, const std::string& offset) {
        std::string last;
        for (int i = 0; i < 200; ++i) {
            last = offsetOf(client, location);
            if (last == offset) break;
            std::this_thread::sleep_for(std::chrono::milliseconds(25));
        }
        return last;
    }
    /// The head of a request that sends a whole file, for what is sent by hand.
    static std::string headOf(const ApiClient& client, const std::string& location, std::size_t length) {
        return "PATCH " + location + " HTTP/1.1\r\nHost: site.test\r\nCookie: " + client.cookie + "\r\n" +
               ours(client) +
               "Content-Type: application/offset+octet-stream\r\nUpload-Offset: 0\r\nContent-Length: " +
               std::to_string(length) + "\r\n\r\n";
    }
};
INSTANTIATE_TEST_SUITE_P(Engines, Uploads, test::bothEngines(), test::engineName);

// ---- What goes well ----

TEST_P(Uploads, APictureComesInPieces) {
    startUploads();
    ApiClient her = loggedIn();
    const ApiReply announced = announce(her, image("Red Rose.GIF", {{"title", "A rose"}}), gif().size());
    EXPECT_EQ(announced.status(), 201);
    EXPECT_EQ(announced.raw.field("Tus-Resumable"), "1.0.0");
    EXPECT_EQ(announced.raw.field("Torvex-Api"), "1");
    const std::string location = announced.raw.field("Location");
    EXPECT_THAT(location, testing::MatchesRegex("/torvex/api/uploads/[0-9a-f]{32}"));
    const ApiReply first = send(her, location, 0, gif().substr(0, 5));
    EXPECT_EQ(first.status(), 204);
    EXPECT_EQ(first.raw.field("Upload-Offset"), "5");
    EXPECT_THAT(images(), IsEmpty());
    EXPECT_THAT(filesIn("wwwroot/images/aa/001"), IsEmpty());
    const ApiReply last = send(her, location, 5, gif().substr(5));
    EXPECT_EQ(last.status(), 200) << last.raw.body;
    EXPECT_EQ(last.raw.field("Upload-Offset"), std::to_string(gif().size()));
    EXPECT_EQ(boost::json::serialize(last.at("/result")),
              R"({"folder":"001","path":"001/red_rose.gif","title":"A rose","type":"gif","size":1.3E1,)"
              R"("width":3.2E2,"height":2E2,"alt":null})");
    EXPECT_EQ(contentOf("images/aa/001/red_rose.gif"), gif());
    EXPECT_THAT(images(), ElementsAre("001/red_rose.gif|A rose|13|320|200|"));
    EXPECT_THAT(filesIn("wwwroot/images/aa/001"), ElementsAre("red_rose.gif"));
    EXPECT_THAT(underWay(), IsEmpty());
}

TEST_P(Uploads, WhoLostTheLastAnswerAsksAgain) {
    startUploads();
    ApiClient her = loggedIn();
    const std::string location = begin(her, image("rose.gif"), 13);
    const ApiReply lost = send(her, location, 0, gif());
    EXPECT_EQ(offsetOf(her, location), "13");
    EXPECT_EQ(send(her, location, 13, "").raw.body, lost.raw.body);
    expectKind(send(her, location, 0, ""), 409, "other-offset");
    expectKind(request(her, "DELETE", location, "Content-Length: 0\r\n"), 404, "not-there");
    EXPECT_THAT(images(), SizeIs(1));
    ApiClient other = loggedIn("sa", "127.0.0.2");
    EXPECT_EQ(head(other, location).status, 404);
}

TEST_P(Uploads, ADocumentNeedsNoTitle) {
    startUploads();
    ApiClient her = loggedIn();
    const ApiReply reply = upload(her, document("Plan of 2026.pdf", {{"folder", ""}}), "%PDF-1.7 and more");
    EXPECT_EQ(reply.status(), 200) << reply.raw.body;
    EXPECT_EQ(reply.text("/result/path"), "plan_of_2026.pdf");
    EXPECT_EQ(reply.text("/result/title"), "Plan of 2026");
    EXPECT_EQ(contentOf("documents/aa/plan_of_2026.pdf"), "%PDF-1.7 and more");
    EXPECT_EQ(cell("select doc_type from TORVEX_DOCUMENTS"), "pdf");
}

TEST_P(Uploads, HeadTellsHowFarItIs) {
    startUploads();
    ApiClient her = loggedIn();
    const std::string location = begin(her, image("rose.gif"), 13);
    send(her, location, 0, gif().substr(0, 4));
    const RawReply reply = head(her, location);
    EXPECT_EQ(reply.status, 200);
    EXPECT_EQ(reply.field("Upload-Offset"), "4");
    EXPECT_EQ(reply.field("Upload-Length"), "13");
    EXPECT_EQ(reply.field("Upload-Metadata"), field(image("rose.gif")));
    EXPECT_THAT(reply.field("Cache-Control"), HasSubstr("no-store"));
}

TEST_P(Uploads, OneThatIsDroppedLeavesNothing) {
    startUploads();
    ApiClient her = loggedIn();
    const std::string location = begin(her, image("rose.gif"), 13);
    send(her, location, 0, gif().substr(0, 4));
    EXPECT_EQ(request(her, "DELETE", location, "Content-Length: 0\r\n").status(), 204);
    EXPECT_EQ(head(her, location).status, 404);
    expectNothing();
}

TEST_P(Uploads, TheServerTellsItsProtocol) {
    startUploads(5000);
    const ApiReply reply = visitor().ask("OPTIONS", "uploads", "");
    EXPECT_EQ(reply.status(), 204);
    EXPECT_EQ(reply.raw.field("Tus-Version"), "1.0.0");
    EXPECT_EQ(reply.raw.field("Tus-Resumable"), "1.0.0");
    EXPECT_EQ(reply.raw.field("Tus-Extension"), "creation,termination");
    EXPECT_EQ(reply.raw.field("Tus-Max-Size"), "5000");
}

TEST_P(Uploads, FilesOfAllKindsArrive) {
    startUploads();
    ApiClient her = loggedIn();
    EXPECT_EQ(upload(her, document("a.txt"), "BM is no picture").status(), 200);
    EXPECT_EQ(upload(her, document("a.docx"), "PK\3\4 and so on").status(), 200);
    EXPECT_EQ(upload(her, image("a.svg"), "<svg xmlns=\"http://www.w3.org/2000/svg\"/>").status(), 200);
    EXPECT_EQ(upload(her, document("a.gif", {{"filetype", "image/gif"}}), gif()).status(), 200);
}

TEST_P(Uploads, AFolderWhoseDirectoryIsMissingGetsOne) {
    row("TORVEX_IMAGES_FOLDERS", {{"fld_site", "aa"},
                                  {"fld_id", "001002"},
                                  {"fld_name", "Old"},
                                  {"fld_level", 2},
                                  {"fld_parent", "001"}});
    startUploads();
    ApiClient her = loggedIn();
    EXPECT_EQ(upload(her, image("rose.gif", {{"folder", "001002"}}), gif()).status(), 200);
    EXPECT_EQ(contentOf("images/aa/001/002/rose.gif"), gif());
}

TEST_P(Uploads, FilesMayLieWhereUploadsCantBeReached) {
    reach = "/wwwroot";
    startUploads();
    ApiClient her = loggedIn();
    EXPECT_EQ(upload(her, image("rose.gif"), gif()).status(), 200);
    EXPECT_EQ(upload(her, image("rose.gif", {{"replace", "-"}}), gif('\x41')).status(), 200);
    EXPECT_EQ(contentOf("images/aa/001/rose.gif"), gif('\x41'));
    EXPECT_THAT(filesIn("wwwroot/images/aa/001"), ElementsAre("rose.gif"));
    EXPECT_THAT(underWay(), IsEmpty());
    put("images/aa/001/late.gif", "");
    const std::string location = begin(her, image("late.gif", {{"replace", "-"}}), 13);
    connection().execute("create unique index trouble on TORVEX_IMAGES (img_site)");
    EXPECT_EQ(send(her, location, 0, gif()).status(), 409);
    EXPECT_THAT(filesIn("wwwroot/images/aa/001"), ElementsAre("late.gif", "rose.gif"));
    connection().execute("drop index trouble");
    EXPECT_EQ(send(her, location, 13, "").status(), 200);
    EXPECT_EQ(contentOf("images/aa/001/late.gif"), gif());
}

// ---- The same name ----

TEST_P(Uploads, ANameThatIsTakenIsRefused) {
    put("images/aa/001/rose.gif", "old");
    startUploads();
    ApiClient her = loggedIn();
    const ApiReply reply = announce(her, image("Rose.GIF"), 13);
    EXPECT_EQ(reply.status(), 409) << reply.raw.body;
    EXPECT_EQ(reply.text("/code"), "exists");
    EXPECT_EQ(contentOf("images/aa/001/rose.gif"), "old");
    EXPECT_THAT(underWay(), IsEmpty());
}

TEST_P(Uploads, ANameThatIsTakenMeanwhileIsRefusedAndTheUploadKept) {
    startUploads();
    ApiClient her = loggedIn();
    const std::string location = begin(her, image("rose.gif"), 13);
    put("images/aa/001/rose.gif", "another's");
    const ApiReply reply = send(her, location, 0, gif());
    EXPECT_EQ(reply.status(), 409);
    EXPECT_EQ(reply.text("/code"), "exists");
    EXPECT_EQ(contentOf("images/aa/001/rose.gif"), "another's");
    EXPECT_EQ(offsetOf(her, location), "13");
}

TEST_P(Uploads, AFileIsReplacedAndKeepsItsTitle) {
    startUploads();
    ApiClient her = loggedIn();
    upload(her, image("rose.gif", {{"title", "A rose"}}), gif());
    connection().execute("update TORVEX_IMAGES set img_alt = 'Red'");
    const ApiReply reply =
        upload(her, image("rose.gif", {{"title", "New"}, {"replace", "-"}}), gif('\x41') + "more");
    EXPECT_EQ(reply.status(), 200) << reply.raw.body;
    EXPECT_EQ(reply.text("/result/title"), "A rose");
    EXPECT_EQ(contentOf("images/aa/001/rose.gif"), gif('\x41') + "more");
    EXPECT_THAT(images(), ElementsAre("001/rose.gif|A rose|17|321|200|Red"));
    EXPECT_THAT(filesIn("wwwroot/images/aa/001"), ElementsAre("rose.gif"));
    EXPECT_THAT(auditTrail(),
                testing::Contains(HasSubstr("|111|save|Image \"001/rose.gif\" has a new content")));
}

TEST_P(Uploads, AFileThatNobodyRegisteredIsReplacedAndRegistered) {
    put("images/aa/001/rose.gif", "old");
    startUploads();
    ApiClient her = loggedIn();
    EXPECT_EQ(upload(her, image("rose.gif", {{"replace", "-"}}), gif()).status(), 200);
    EXPECT_THAT(images(), ElementsAre("001/rose.gif|rose|13|320|200|"));
    EXPECT_EQ(contentOf("images/aa/001/rose.gif"), gif());
}

// ---- Who may ----

TEST_P(Uploads, NobodyUploadsWithoutALogin) {
    startUploads();
    ApiClient nobody = visitor();
    expectKind(announce(nobody, image("rose.gif"), 13), 401, "not-logged-in");
    ApiClient her = loggedIn();
    const std::string location = begin(her, image("rose.gif"), 13);
    expectKind(send(nobody, location, 0, gif()), 401, "not-logged-in");
    EXPECT_EQ(head(nobody, location).status, 401);
    EXPECT_EQ(offsetOf(her, location), "0");
}

TEST_P(Uploads, ALoginThatIsLostSendsNothingMore) {
    startUploads();
    ApiClient her = loggedIn();
    const std::string location = begin(her, image("rose.gif"), 13);
    connection().execute("update TORVEX_LOGINS set sessionId = 'another' where loginId = 7");
    expectKind(send(her, location, 0, gif()), 401, "login-lost");
    expectKind(announce(her, image("b.gif"), 13), 401, "login-lost");
    EXPECT_THAT(images(), IsEmpty());
}

TEST_P(Uploads, WhoHasNoRightInTheSiteUploadsNothing) {
    site("bb");
    startUploads();
    ApiClient her = loggedIn();
    expectKind(announce(her, image("rose.gif", {{"site", "bb"}, {"folder", ""}}), 13), 403, "no-right");
    connection().execute("delete from TORVEX_ADVANCED_RIGHTS where advId = 111");
    expectKind(announce(her, image("rose.gif"), 13), 403, "no-right");
    EXPECT_EQ(announce(her, document("rose.pdf"), 13).status(), 201) << "documents have a right of their own";
}

TEST_P(Uploads, ARightThatIsTakenAwayEndsAnUpload) {
    startUploads();
    ApiClient her = loggedIn();
    const std::string location = begin(her, image("rose.gif"), 13);
    connection().execute("delete from TORVEX_ADVANCED_RIGHTS where advId = 111");
    expectKind(send(her, location, 0, gif()), 403, "no-right");
    EXPECT_THAT(images(), IsEmpty());
    EXPECT_THAT(filesIn("wwwroot/images/aa/001"), IsEmpty());
}

TEST_P(Uploads, AnothersUploadIsNotThere) {
    startUploads();
    ApiClient her = loggedIn();
    ApiClient other = loggedIn("sa", "127.0.0.2");
    const std::string location = begin(her, image("rose.gif"), 13);
    expectKind(send(other, location, 0, gif()), 404, "not-there");
    EXPECT_EQ(head(other, location).status, 404);
    expectKind(request(other, "DELETE", location, "Content-Length: 0\r\n"), 404, "not-there");
    EXPECT_EQ(send(her, location, 0, gif()).status(), 200);
}

TEST_P(Uploads, AnotherSitesPageSendsNothing) {
    startUploads();
    ApiClient her = loggedIn();
    const std::string location = begin(her, image("rose.gif"), 13);
    const std::string token = her.token;
    for (const std::string wrong : {"", "0123456789abcdef"}) {
        her.token = wrong;
        expectKind(announce(her, image("b.gif"), 13), 403, "foreign");
        expectKind(send(her, location, 0, gif()), 403, "foreign");
        expectKind(request(her, "DELETE", location, "Content-Length: 0\r\n"), 403, "foreign");
    }
    her.token = token;
    expectKind(request(her, "DELETE", location, "Content-Length: 0\r\nOrigin: https://evil.test\r\n"), 403,
               "foreign");
    EXPECT_EQ(offsetOf(her, location), "0");
}

TEST_P(Uploads, AProgramUploadsWithItsToken) {
    startUploads();
    author(9, "robot", "Robot");
    connection().execute("update TORVEX_LOGINS set kind = 'program' where loginId = 9");
    hold(1, 9);
    ApiClient robot(running, "127.0.0.1");
    robot.bearer = makeToken(connection(), {9, "photos", "registers.checkUpload, cManager.saveFile", "", ""});
    EXPECT_EQ(upload(robot, image("rose.gif"), gif()).status(), 200);
    EXPECT_THAT(images(), SizeIs(1));
    robot.bearer = makeToken(connection(), {9, "reader", "reads", "", ""});
    const std::string location = begin(robot, image("b.gif"), gif().size());
    expectKind(send(robot, location, 0, gif()), 403, "not-covered");
    EXPECT_THAT(images(), SizeIs(1));
    robot.bearer = "tvx_0123";
    expectKind(announce(robot, image("c.gif"), 13), 401, "bad-token");
}

// ---- Interruptions ----

TEST_P(Uploads, AnUploadGoesOnBehindABrokenLine) {
    startUploads();
    ApiClient her = loggedIn();
    const std::string content = gif() + std::string(200000, 'x');
    const std::string location = begin(her, image("rose.gif"), content.size());
    { running.client().send(headOf(her, location, content.size()) + content.substr(0, 120000)); }
    EXPECT_EQ(offsetBecomes(her, location, "120000"), "120000");
    EXPECT_THAT(images(), IsEmpty());
    EXPECT_EQ(send(her, location, 120000, content.substr(120000)).status(), 200);
    EXPECT_EQ(contentOf("images/aa/001/rose.gif"), content);
}

TEST_P(Uploads, AFurtherTryTakesThePlaceOfOneThatHangs) {
    startUploads();
    ApiClient her = loggedIn();
    const std::string location = begin(her, image("rose.gif"), 13);
    RawHttpClient hanging = running.client();
    hanging.send(headOf(her, location, gif().size()) + "GIF");
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    EXPECT_EQ(send(her, location, 0, gif()).status(), 200);
    EXPECT_EQ(contentOf("images/aa/001/rose.gif"), gif());
}

TEST_P(Uploads, OtherCallsDontWaitForAnUpload) {
    startUploads();
    ApiClient her = loggedIn();
    const std::string location = begin(her, image("rose.gif"), 13);
    RawHttpClient slow = running.client();
    slow.send(headOf(her, location, gif().size()) + "GIF");
    EXPECT_EQ(her.get("cManager/getLoginState?loginId=7").status(), 200);
    slow.send(gif().substr(3));
    EXPECT_EQ(slow.read().status, 200);
}

TEST_P(Uploads, WhatCouldNotBeRegisteredWaitsForAnotherTry) {
    startUploads();
    ApiClient her = loggedIn();
    row("TORVEX_IMAGES", {{"img_site", "zz"}, {"img_size", 13}});
    connection().execute("create unique index trouble on TORVEX_IMAGES (img_size)");
    const std::string location = begin(her, image("rose.gif"), 13);
    const ApiReply failed = send(her, location, 0, gif());
    EXPECT_EQ(failed.status(), 409) << failed.raw.body;
    EXPECT_EQ(failed.text("/operation"), "cManager.saveFile");
    EXPECT_THAT(filesIn("wwwroot/images/aa/001"), IsEmpty());
    EXPECT_EQ(offsetOf(her, location), "13");
    connection().execute("drop index trouble");
    EXPECT_EQ(send(her, location, 13, "").status(), 200);
    EXPECT_EQ(contentOf("images/aa/001/rose.gif"), gif());
}

TEST_P(Uploads, AReplacementThatCouldNotBeRegisteredTakesNothingAway) {
    startUploads();
    ApiClient her = loggedIn();
    upload(her, image("rose.gif"), gif());
    row("TORVEX_IMAGES", {{"img_site", "zz"}, {"img_size", 17}});
    connection().execute("create unique index trouble on TORVEX_IMAGES (img_size)");
    const std::string location = begin(her, image("rose.gif", {{"replace", "-"}}), 17);
    EXPECT_EQ(send(her, location, 0, gif() + "more").status(), 409);
    EXPECT_EQ(contentOf("images/aa/001/rose.gif"), gif());
    EXPECT_THAT(filesIn("wwwroot/images/aa/001"), ElementsAre("rose.gif"));
    connection().execute("drop index trouble");
    EXPECT_EQ(send(her, location, 17, "").status(), 200);
    EXPECT_EQ(contentOf("images/aa/001/rose.gif"), gif() + "more");
}

TEST_P(Uploads, AFailureOfTheDatabaseLosesNothing) {
    startUploads();
    ApiClient her = loggedIn();
    const std::string location = begin(her, image("rose.gif"), 13);
    send(her, location, 0, gif().substr(0, 5));
    connection().execute("alter table TORVEX_IMAGES rename to TORVEX_IMAGES_AWAY");
    expectKind(send(her, location, 5, gif().substr(5)), 500, "failed");
    connection().execute("alter table TORVEX_IMAGES_AWAY rename to TORVEX_IMAGES");
    EXPECT_EQ(head(her, location).status, 200);
    const auto offset = std::stoul(offsetOf(her, location));
    EXPECT_EQ(send(her, location, offset, gif().substr(offset)).status(), 200);
    EXPECT_EQ(contentOf("images/aa/001/rose.gif"), gif());
}

TEST_P(Uploads, PiecesDontCountAgainstTheRateOfCalls) {
    startUploads();
    api->ofSessions = {.perSecond = 0.001, .atOnce = 5};
    ApiClient her = loggedIn();
    const std::string location = begin(her, image("rose.gif"), 13);
    for (std::size_t i = 0; i < 12; ++i) EXPECT_EQ(send(her, location, i, gif().substr(i, 1)).status(), 204);
    EXPECT_EQ(send(her, location, 12, gif().substr(12)).status(), 200);
    for (int i = 0; i < 4; ++i) announce(her, image("b.gif"), 13);
    expectKind(announce(her, image("b.gif"), 13), 429, "too-fast");
}

TEST_P(Uploads, AHundredMegabytesComeInBoundedMemory) {
    startUploads(256 * 1024 * 1024);
    ApiClient her = loggedIn();
    const std::uint64_t length = 100 * 1024 * 1024;
    const std::string location = begin(her, document("film.mp4"), length);
    RawHttpClient client = running.client();
    client.send(headOf(her, location, length));
    client.send(std::string("\0\0\0\x18"
                            "ftypmp42",
                            12) +
                std::string(1024 * 1024 - 12, 'x'));
    const std::string piece(1024 * 1024, 'x');
    for (int i = 1; i < 100; ++i) client.send(piece);
    EXPECT_EQ(client.read().status, 200);
    EXPECT_EQ(std::filesystem::file_size(root() + "/wwwroot/documents/aa/001/film.mp4"), length);
    EXPECT_EQ(cell("select doc_size from TORVEX_DOCUMENTS"), std::to_string(length));
}

}  // namespace
}  // namespace torvex
