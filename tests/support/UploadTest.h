#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "pages/api/Uploads.h"
#include "platform/files/DiskFileSystem.h"
#include "support/ApiTest.h"

namespace torvex::test {

/// The base of tests of uploads, over real HTTP and on a real disk: site "aa" with the folder "001" for images
/// and for documents, where "anna" may edit both.
class UploadTest : public ApiTest {
  protected:
    using Metadata = std::map<std::string, std::string>;

    void SetUp() override;

    void startUploads(std::uint64_t mostBytes = 1024 * 1024);

    /// "site YWE=,filename ...": a name whose value is "-" has none.
    static std::string field(const Metadata& metadata);
    /// An image for folder "001", with what is given besides or instead.
    static Metadata image(const std::string& filename, const Metadata& more = {});
    static Metadata document(const std::string& filename, const Metadata& more = {});

    ApiReply announce(ApiClient& client, const Metadata& metadata, std::uint64_t length);
    /// The address of one that is announced; "" (and a failed test) when it isn't taken.
    std::string begin(ApiClient& client, const Metadata& metadata, std::uint64_t length);
    ApiReply send(ApiClient& client, const std::string& location, std::uint64_t offset,
                  const std::string& bytes);
    ApiReply request(ApiClient& client, const std::string& method, const std::string& location,
                     const std::string& fields = "");
    /// The answer to a HEAD.
    RawReply head(ApiClient& client, const std::string& location);
    /// As HEAD tells it; "" when it tells none.
    std::string offsetOf(ApiClient& client, const std::string& location) {
        return head(client, location).field("Upload-Offset");
    }
    /// Announces and sends a file in one piece.
    ApiReply upload(ApiClient& client, const Metadata& metadata, const std::string& bytes);
    /// The fields of a request that isn't just reading.
    static std::string ours(const ApiClient& client);

    /// Of the media folders: "images/aa/001/rose.gif"; "" when it isn't there.
    std::string contentOf(const std::string& path) const;
    void put(const std::string& path, const std::string& bytes) const;
    /// Names of the files in a folder below the installation, also of those that aren't listed otherwise.
    std::vector<std::string> filesIn(const std::string& folder) const;
    std::vector<std::string> underWay() const { return filesIn("uploads"); }
    std::vector<std::string> images();

    /// That it is a problem in the protocol's form and people's.
    static void expectKind(const ApiReply& reply, int status, const std::string& kind);
    /// That nothing has come of it.
    void expectNothing();

    static std::string gif(char lowByteOfWidth = '\x40') {
        return std::string("GIF89a") + lowByteOfWidth + std::string("\x01\xC8\x00\xF7\x00\x00", 6);
    }

    const std::string& root() const { return root_.path(); }

    /// The folder below the installation that its files are read and written in.
    std::string reach;

  private:
    TemporaryFolder root_;
    std::unique_ptr<DiskFileSystem> disk_;
};

}  // namespace torvex::test
