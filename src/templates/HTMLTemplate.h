#pragma once

#include <string>
#include <string_view>

#include "platform/db/ConnectionSource.h"
#include "platform/files/FileSystem.h"
#include "records/PageIdentity.h"

namespace torvex {

struct HostContext;

/// The text template engine that all HTML passes through. An object holds one buffer; its operations find,
/// fill, cut and lift out places that are marked by comments:
///
///     <!--!name!-->                                    a tag: a place to fill
///     <!--!name_7!-->                                  a numbered tag
///     <!--!name_start!--> ... <!--!name_end!-->        a block
///     <!--!begin!--> ... <!--!end!-->                  a custom block between two freely named tags
///     <!--!name_1_start!--> ... <!--!name_1_end!-->    numbered blocks, addressed together as "name_i"
///
/// Names ignore case. Blocks don't nest by name: the first end marker behind the start ends the block. Text
/// that is put in is not searched again. One thread uses an object.
///
/// A block that an operation needs and doesn't find is a fault of the template: the operation answers the
/// browser with a page that names the block and ends the request (`ResponseEnded`). All other failures are
/// `Error` with the operation's line in front.
class HTMLTemplate {
  public:
    explicit HTMLTemplate(HostContext& host);

    /// What the operations that use the database work on.
    void connect(db::ConnectionSource connection) { connection_ = std::move(connection); }

    // The buffer
    const std::string& strVal() const { return buffer_; }
    void setStrVal(std::string text) { buffer_ = std::move(text); }
    /// Gives the buffer away, leaving it empty.
    std::string takeStrVal() { return std::move(buffer_); }

    // Files
    /// Fills the buffer and cuts the blocks that are meant for the other kind of browser ("IE", "NS"). False,
    /// with an empty buffer, when there is no such file.
    bool load(const std::string& filename, TextFormat format = TextFormat::SystemDefault);
    /// Writes the buffer and a line break, overwriting.
    bool save(const std::string& filename, bool unicode = false);
    /// Loads the content template that the application page `pageIdent` keeps under the title `tplTitle` in
    /// its system folder. The pageId of that template page, or -1.
    PageId loadAppTpl(const std::string& pageIdent, const std::string& tplTitle,
                      const std::string& mode = "L");

    // Tags
    bool tagExists(std::string_view tag) const;
    /// The number of the first numbered tag of that name, or 0.
    int iTagExists(std::string_view tag) const;
    /// `letterCase` "U" or "L" changes the text first; at most `count` places are filled, all when negative.
    void replaceTag(std::string_view tag, std::string_view text, std::string_view letterCase = "",
                    int count = -1);
    void removeTags();

    // Blocks
    bool blockExists(std::string_view tag) const;
    std::string extractBlock(std::string_view tag) const;
    std::string extractCustomBlock(std::string_view beginTag, std::string_view endTag) const;
    void replaceBlock(std::string_view tag, std::string_view text);
    void replaceCustomBlock(std::string_view beginTag, std::string_view endTag, std::string_view text);
    /// Replaces every block of that name; a name that ends in "_i" takes the numbered blocks from 1 along, up
    /// to the first number that is missing.
    void replaceAllBlocks(std::string_view tag, std::string_view text);

    // Services
    /// Turns plain e-mail addresses into links; knows nothing of tags.
    void emailToLinks();
    std::string jsEncode(std::string_view text) const;
    /// Lets a page that is shown in a frame tell the frame set which page it is.
    void syncFrames(const std::string& pageIdent);
    /// The script of `syncFrames`, whether or not pages are shown in frames; none for no page.
    void tellFrames(const PageIdentity& page);
    std::string getNodeId(PageId pageId);
    PageId getPageId(const std::string& nodeId);

  private:
    enum class Browser { Ie, Ns };

    [[noreturn]] void answerNotFound(const std::string& what) const;

    HostContext& host_;
    db::ConnectionSource connection_;
    std::string buffer_;
    Browser browser_;
};

}  // namespace torvex
