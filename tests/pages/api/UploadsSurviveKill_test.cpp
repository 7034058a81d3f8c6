// Uploads of the real program, which is killed while they are under way.

#include <csignal>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <iostream>
#include <regex>
#include <sodium.h>
#include <thread>

#include "cli/ProgramFixture.h"
#include "platform/text/Text.h"
#include "support/RawHttpClient.h"

namespace torvex::test {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t mebibyte = 1024 * 1024;
constexpr std::string_view starterSite = "ws";

class UploadsSurviveKill : public ProgramTest {
  protected:
    void SetUp() override { output({"init", site(), "--admin-password", "word"}); }

    void serve() {
        program_ = std::make_unique<RunningProgram>(
            folder(), Arguments{"serve", "--install", site(), "--listen", "127.0.0.1:0"});
        program_->waitForError("serving ");
        std::smatch found;
        const std::string said = program_->err();
        ASSERT_TRUE(std::regex_search(said, found, std::regex(R"(http://127\.0\.0\.1:(\d+)/)")));
        port_ = static_cast<std::uint16_t>(std::stoi(found[1]));
        cookie_.clear();
        logIn();
    }
    void kill() {
        program_->signal(SIGKILL);
        program_->wait();
    }
    RawReply ask(const std::string& head, const std::string& body = "") {
        RawHttpClient client(port_);
        client.send(request(head, body.size()) + body);
        const RawReply reply = head.starts_with("HEAD") ? client.readWithoutBody() : client.read();
        if (const std::string given = reply.sessionCookie(); !given.empty()) cookie_ = given;
        return reply;
    }
    std::string request(const std::string& head, std::size_t length) const {
        const std::size_t line = head.find('\n');
        return head.substr(0, line) +
               " HTTP/1.1\r\nHost: 127.0.0.1\r\nTus-Resumable: 1.0.0\r\nX-Torvex-Token: " + token_ +
               "\r\nCookie: " + cookie_ + "\r\nContent-Length: " + std::to_string(length) + "\r\n" +
               (line == std::string::npos ? ""
                                          : text::replaceAll(head.substr(line + 1) + "\n", "\n", "\r\n")) +
               "\r\n";
    }
    void logIn() {
        const std::string door = ask("GET /torvex/login").body;
        std::smatch found;
        ASSERT_TRUE(std::regex_search(door, found, std::regex("name=\"torvex-token\" content=\"([^\"]+)\"")))
            << door;
        token_ = found[1];
        const RawReply reply = ask("POST /torvex/api/cManager/login\nContent-Type: application/json",
                                   R"({"username": "sa", "password": "word"})");
        ASSERT_EQ(reply.status, 200) << reply.body;
        token_ = reply.field("X-Torvex-Token");
    }
    std::string begin(const std::string& filename, std::size_t length) {
        const RawReply reply = ask("POST /torvex/api/uploads\nUpload-Length: " + std::to_string(length) +
                                   "\nUpload-Metadata: folderType ZG9jdW1lbnRz,folder,site " +
                                   base64(std::string(starterSite)) + ",filename " + base64(filename));
        EXPECT_EQ(reply.status, 201) << reply.body;
        return reply.field("Location");
    }
    static std::string base64(const std::string& bytes) {
        std::string encoded(sodium_base64_ENCODED_LEN(bytes.size(), sodium_base64_VARIANT_ORIGINAL), '\0');
        sodium_bin2base64(encoded.data(), encoded.size(),
                          reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size(),
                          sodium_base64_VARIANT_ORIGINAL);
        encoded.resize(encoded.find('\0'));
        return encoded;
    }
    static std::string pieceAt(const std::string& location, std::size_t offset) {
        return "PATCH " + location +
               "\nContent-Type: application/offset+octet-stream\nUpload-Offset: " + std::to_string(offset);
    }
    std::size_t offsetOf(const std::string& location) {
        const std::string offset = ask("HEAD " + location).field("Upload-Offset");
        return offset.empty() ? std::string::npos : std::stoul(offset);
    }
    fs::path kept(const std::string& name) const {
        return fs::path(site()) / "wwwroot/documents" / std::string(starterSite) / name;
    }
    std::size_t memoryPeak() const {
        std::ifstream status("/proc/" + std::to_string(program_->process()) + "/status");
        for (std::string line; std::getline(status, line);)
            if (line.starts_with("VmHWM:")) return std::stoul(line.substr(6)) * 1024;
        return 0;
    }
    std::uint16_t port() const { return port_; }

  private:
    std::unique_ptr<RunningProgram> program_;
    std::uint16_t port_ = 0;
    std::string cookie_;
    std::string token_;
};

/// Each piece differs from the others, so that a wrong place is seen.
std::string contentOf(std::size_t length) {
    std::string content = "%PDF-1.7\n";
    while (content.size() < length) content += std::to_string(content.size()) + " ";
    content.resize(length);
    return content;
}

TEST_F(UploadsSurviveKill, AnUploadGoesOnBehindAServerThatWasKilled) {
    const std::string content = contentOf(3 * mebibyte);
    serve();
    const std::string location = begin("plan.pdf", content.size());
    EXPECT_EQ(ask(pieceAt(location, 0), content.substr(0, mebibyte)).status, 204);
    RawHttpClient half(port());
    half.send(request(pieceAt(location, mebibyte), mebibyte) + content.substr(mebibyte, mebibyte / 2));
    kill();
    EXPECT_FALSE(fs::exists(kept("plan.pdf")));
    serve();
    const std::size_t offset = offsetOf(location);
    ASSERT_EQ(offset, mebibyte);
    const RawReply last = ask(pieceAt(location, offset), content.substr(offset));
    EXPECT_EQ(last.status, 200) << last.body;
    EXPECT_TRUE(content == ProgramTest::content("site/" + fs::relative(kept("plan.pdf"), site()).string()));
    kill();
    EXPECT_TRUE(fs::is_empty(fs::path(site()) / "uploads"));
}

TEST_F(UploadsSurviveKill, AServerThatIsKilledAtAnyMomentLeavesNoHalfFile) {
    const std::string content = contentOf(600'000);
    for (int round = 0; round < 6; ++round) {
        SCOPED_TRACE(round);
        const std::string name = "plan" + std::to_string(round) + ".pdf";
        serve();
        const std::string location = begin(name, content.size());
        RawHttpClient client(port());
        client.send(request(pieceAt(location, 0), content.size()) + content);
        std::this_thread::sleep_for(std::chrono::milliseconds(round * 4));
        kill();
        if (fs::exists(kept(name))) {
            EXPECT_EQ(fs::file_size(kept(name)), content.size());
            continue;
        }
        serve();
        const std::size_t offset = offsetOf(location);
        ASSERT_LE(offset, content.size());
        EXPECT_EQ(ask(pieceAt(location, offset), content.substr(offset)).status, 200);
        EXPECT_EQ(fs::file_size(kept(name)), content.size());
        kill();
    }
}

TEST_F(UploadsSurviveKill, AHundredMegabytesTakeNoMemory) {
    const std::size_t length = 100 * mebibyte;
    serve();
    const std::string location = begin("film.mp4", length);
    const std::size_t before = memoryPeak();
    const auto start = std::chrono::steady_clock::now();
    RawHttpClient client(port());
    client.send(request(pieceAt(location, 0), length));
    client.send(std::string("\0\0\0\x18"
                            "ftypmp42",
                            12) +
                std::string(mebibyte - 12, 'x'));
    const std::string piece(mebibyte, 'x');
    for (int i = 1; i < 100; ++i) client.send(piece);
    EXPECT_EQ(client.read().status, 200);
    const auto took =
        std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start);
    const std::size_t grown = memoryPeak() - before;
    std::cout << "100 MB in " << took.count() << " ms, memory grown by " << grown / 1024 << " KB\n";
    EXPECT_LT(grown, 32 * mebibyte);
    EXPECT_EQ(fs::file_size(kept("film.mp4")), length);
}

}  // namespace
}  // namespace torvex::test
