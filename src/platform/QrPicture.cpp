#include "platform/QrPicture.h"

#include <fmt/format.h>
#include <iterator>
#include <memory>
#include <qrencode.h>

#include "platform/Errors.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

/// Squares around it that stay white.
constexpr int border = 4;

using Code = std::unique_ptr<QRcode, decltype(&QRcode_free)>;

bool isDark(const QRcode& code, int row, int column) {
    return (code.data[row * code.width + column] & 1U) != 0;
}

/// The dark squares of a row, those that touch as one.
void drawRow(std::string& path, const QRcode& code, int row) {
    for (int column = 0; column < code.width;) {
        const int from = column;
        while (column < code.width && isDark(code, row, column)) ++column;
        if (column > from)
            fmt::format_to(std::back_inserter(path), "M{} {}h{}v1h-{}z", from + border, row + border,
                           column - from, column - from);
        if (column == from) ++column;
    }
}

}  // namespace

std::string qrPicture(std::string_view text, std::string_view title) {
    const auto* bytes = reinterpret_cast<const unsigned char*>(text.data());
    const Code code(QRcode_encodeData(static_cast<int>(text.size()), bytes, 0, QR_ECLEVEL_M), &QRcode_free);
    if (!code) throw Error("no picture can be made of a text");
    std::string path;
    for (int row = 0; row < code->width; ++row) drawRow(path, *code, row);
    const int side = code->width + 2 * border;
    return fmt::format(
        "<svg class=\"qr-picture\" role=\"img\" aria-label=\"{0}\" width=\"240\" height=\"240\" "
        "viewBox=\"0 0 {1} {1}\" shape-rendering=\"crispEdges\">"
        "<path fill=\"#fff\" d=\"M0 0h{1}v{1}h-{1}z\"/><path fill=\"#000\" d=\"{2}\"/></svg>",
        text::htmlEncode(title), side, path);
}

}  // namespace torvex
