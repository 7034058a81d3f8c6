#pragma once

#include <string>
#include <vector>

#include "support/RegistersTest.h"

namespace torvex::test {

/// The base of tests of media: site "aa" with the folder "001", called "Roses", for images and for documents.
class MediaTest : public RegistersTest {
  protected:
    void SetUp() override {
        RegistersTest::SetUp();
        if (HasFatalFailure()) return;
        for (const auto* kind : {"IMAGES", "DOCUMENTS"}) folder(kind, "001", "Roses");
    }

    void folder(const std::string& table, const std::string& id, const std::string& name) {
        row("TORVEX_" + table + "_FOLDERS", {{"fld_site", "aa"},
                                             {"fld_id", id},
                                             {"fld_name", name},
                                             {"fld_level", static_cast<int>(id.size() / 3)},
                                             {"fld_parent", id.substr(0, id.size() - 3)}});
    }
    static std::string diskPath(const std::string& path) { return "/install/wwwroot/" + path; }
    void file(const std::string& path, const std::string& content) {
        host.files.bytes[diskPath(path)] = content;
    }
    /// As its bytes on the disk; "" when it isn't there.
    std::string contentOf(const std::string& path) {
        const auto found = host.files.bytes.find(diskPath(path));
        return found == host.files.bytes.end() ? std::string() : found->second;
    }
    /// Of 320 by 200 pixels, or of another width.
    static std::string gif(char lowByteOfWidth = '\x40') {
        return std::string("GIF89a") + lowByteOfWidth + std::string("\x01\xC8\x00\xF7\x00\x00", 6);
    }
    /// Of folder 001, on the disk and in the register.
    void image(const std::string& name, const std::string& title, const std::string& content = gif()) {
        file("images/aa/001/" + name, content);
        EXPECT_EQ(manager().saveFile("aa", "001", "images", name, title), name);
    }
    void document(const std::string& name, const std::string& title, const std::string& content = "12345") {
        file("documents/aa/001/" + name, content);
        EXPECT_EQ(manager().saveFile("aa", "001", "documents", name, title), name);
    }
    std::vector<std::string> images(const std::string& folder = "", const std::string& words = "") {
        return linesOf(registers().getMedia("aa", "images", folder, words));
    }
    std::vector<std::string> documents() { return linesOf(registers().getMedia("aa", "documents")); }
};

}  // namespace torvex::test
