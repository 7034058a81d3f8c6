#include "search/ResultTemplate.h"

#include <array>
#include <cmath>
#include <fmt/format.h>

#include "platform/ApplicationValues.h"
#include "platform/HostContext.h"
#include "platform/Keys.h"
#include "platform/text/Text.h"
#include "search/extraction/Reading.h"
#include "templates/HTMLTemplate.h"

namespace torvex {

namespace {

namespace column = catalogue::column;

struct Field {
    std::string_view column;
    std::string_view tag;
    std::string_view blockWithout;
    bool ofDocumentsOnly = false;
};

constexpr std::array fields = {
    Field{column::title, "search_title", "search_noTitle"},
    Field{column::keywords, "search_keywords", "search_noKeywords"},
    Field{column::author, "search_author", "search_noAuthor"},
    Field{column::subject, "search_subject", "search_noSubject"},
    Field{column::comments, "search_comments", "search_noComments", true},
    Field{column::company, "search_company", "search_noCompany", true},
};

constexpr double kilobyte = 1024;

std::string wholeNumber(double number) {
    return text::fromNumber(std::nearbyint(number));
}

/// Fills one result's layout.
class Piece {
  public:
    Piece(HostContext& host, const std::string& layout) : text_(host) { text_.setStrVal(layout); }

    void tag(std::string_view name, std::string_view value) { text_.replaceTag(name, value); }
    void removeBlock(std::string_view name) { text_.replaceAllBlocks(name, ""); }
    /// A value with the block that stands for its being there, and the one for its not being there.
    void field(std::string_view name, std::string_view blockWithout, std::string_view value) {
        const std::string_view trimmed = text::trim(value);
        removeBlock(trimmed.empty() ? name : blockWithout);
        tag(name, text::htmlEncode(trimmed));
    }
    /// A field that this kind of result doesn't have.
    void drop(std::string_view name, std::string_view blockWithout) {
        removeBlock(name);
        removeBlock(blockWithout);
        tag(name, "");
    }
    std::string take() { return text_.takeStrVal(); }

  private:
    HTMLTemplate text_;
};

std::string columnOf(const catalogue::Row& row, std::string_view column) {
    const auto found = row.columns.find(std::string(column));
    return found == row.columns.end() ? std::string() : found->second;
}

/// Whether a name would be misread in the notation of stored links, or end the attribute that it stands in.
bool isOddName(std::string_view document) {
    return document.find_first_of("\"'<>()%&#?+") != std::string_view::npos;
}

std::string addressOf(const HostContext& host, std::string_view document) {
    std::string address = host.application.text(applicationKey::documentsUrl);
    for (const char c : document) {
        const bool stays = std::string_view("/-._~").find(c) != std::string_view::npos;
        if (stays) {
            address += c;
        } else {
            address += c == ' ' ? "%20" : text::urlEncode(std::string_view(&c, 1));
        }
    }
    return address;
}

/// As stored links are written, where that can be.
std::string linkTo(const HostContext& host, const FoundFile& file) {
    if (file.isPage()) return "page(" + text::fromNumber(file.page.pageId) + ")";
    return isOddName(file.document) ? addressOf(host, file.document) : "file(" + file.document + ")";
}

void fillFile(Piece& piece, const catalogue::Row& row, const FoundFile& file) {
    if (file.isPage()) {
        piece.removeBlock("search_filetype");
        piece.removeBlock("search_filesize");
        piece.drop("search_filename", "search_noFilename");
        return;
    }
    const auto size = static_cast<double>(row.size);
    piece.tag("search_filetype", text::htmlEncode(file.type));
    piece.tag("search_filesize", std::to_string(row.size));
    piece.tag("search_filesizeKB", fmt::format("{:.1f}", size / kilobyte));
    piece.tag("search_filesizeMB", fmt::format("{:.1f}", size / kilobyte / kilobyte));
    piece.field("search_filename", "search_noFilename", row.filename);
}

void fillFields(Piece& piece, const catalogue::Row& row, const FoundFile& file) {
    for (const Field& field : fields) {
        if (field.ofDocumentsOnly && file.isPage()) {
            piece.drop(field.tag, field.blockWithout);
        } else {
            piece.field(field.tag, field.blockWithout, columnOf(row, field.column));
        }
    }
    piece.field("search_abstract", "search_noAbstract", row.characterization);
}

std::string takenBlock(HTMLTemplate& layout, std::string_view name) {
    if (!layout.blockExists(name)) return {};
    std::string block = layout.extractBlock(name);
    layout.replaceAllBlocks(name, "");
    return block;
}

}  // namespace

ResultTemplate::ResultTemplate(HostContext& host, std::string_view block, const KeptQuery& query)
    : host_(host),
      extraColumns_(query.extraColumns),
      marks_(query.soughtWords, query.search.derivation, query.query.language) {
    HTMLTemplate layout(host);
    layout.setStrVal(std::string(block));
    graphUnit_ = takenBlock(layout, "search_rankingGraph");
    spacer_ = takenBlock(layout, "search_spacer");
    layout_ = layout.takeStrVal();
}

std::string ResultTemplate::fill(const catalogue::Row& row, const FoundFile& file, int rankBase) const {
    Piece piece(host_, layout_);
    piece.tag("search_link", linkTo(host_, file));
    piece.tag("search_ranking", wholeNumber(row.rank));
    piece.tag("search_ranking5", wholeNumber(row.rank / 5.0));
    piece.tag("search_ranking10", wholeNumber(row.rank / 10.0));
    fillFile(piece, row, file);
    piece.tag("search_rankingGraph", graph(row.rank, rankBase));
    fillFields(piece, row, file);
    piece.tag("search_titleMarked", marks_.marked(text::trim(columnOf(row, column::title))));
    piece.tag("search_abstractMarked", marks_.marked(text::trim(row.characterization)));
    for (const std::string& column : extraColumns_)
        piece.field("search_" + column, "search_no" + column, columnOf(row, column));
    return piece.take();
}

/// Five units from four fifths of the best rank on, and so down to one.
std::string ResultTemplate::graph(int rank, int rankBase) const {
    constexpr int most = 5;
    int units = 1;
    while (units < most && rank * most >= rankBase * units) ++units;
    std::string copies;
    for (int i = 0; i < units; ++i) copies += graphUnit_;
    return copies;
}

}  // namespace torvex
