#include "modules/shared/PageLinks.h"

#include <algorithm>

#include "platform/text/Text.h"
#include "templates/HTMLTemplate.h"

namespace torvex {

namespace {

constexpr int linksBefore = 5;  ///< the page, while there are pages enough
constexpr int linksSpan = 10;
constexpr std::string_view plainSpacer = " | ";

class PageLinkWriter {
  public:
    PageLinkWriter(HostContext& host, const PageLinkNames& names, const std::string& html)
        : host_(host), names_(names), pieces_(host) {
        pieces_.setStrVal(html);
        spacer_ = pieces_.blockExists(names.spacer) ? pieces_.extractBlock(names.spacer) : plainSpacer;
    }

    void add(std::string_view block, int number) {
        if (!pieces_.blockExists(block)) return;
        HTMLTemplate piece(host_);
        piece.setStrVal(pieces_.extractBlock(block));
        piece.replaceTag(names_.number, std::to_string(number));
        links_ += piece.strVal() + spacer_;
    }

    /// One character goes from the end, whatever the spacer's length: templates reckon with it.
    std::string finish() const {
        const std::size_t length = text::length(links_);
        return std::string(text::first(links_, length == 0 ? 0 : length - 1));
    }

  private:
    HostContext& host_;
    const PageLinkNames& names_;
    HTMLTemplate pieces_;
    std::string spacer_;
    std::string links_;
};

}  // namespace

int ListPage::last() const {
    return std::min(first() + pageSize - 1, total);
}

ListPage listPage(int total, int pageSize, int asked) {
    if (pageSize <= 0) return {1, 1, total, total};
    const int pageCount = total / pageSize + (total % pageSize == 0 ? 0 : 1);
    return {std::clamp(asked, 1, std::max(pageCount, 1)), pageCount, pageSize, total};
}

std::string pageLinks(HostContext& host, const PageLinkNames& names, int page, int pageCount,
                      const std::string& html) {
    if (pageCount < 2) return {};
    int from = std::max(page - linksBefore, 1);
    int to = from + linksSpan;
    if (to > pageCount) {
        to = pageCount;
        from = std::max(pageCount - linksSpan, 1);
    }
    PageLinkWriter writer(host, names, html);
    if (page > 1) writer.add(names.previous, page - 1);
    if (from > 2) writer.add(names.dots, std::max(page - linksSpan, 1));
    for (int number = from; number <= to; ++number)
        writer.add(number == page ? names.active : names.link, number);
    if (to < pageCount - 1) writer.add(names.dots, std::min(page + linksSpan, pageCount));
    if (page < pageCount) writer.add(names.next, page + 1);
    return writer.finish();
}

}  // namespace torvex
