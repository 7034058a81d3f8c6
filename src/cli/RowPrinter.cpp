#include "cli/RowPrinter.h"

#include <algorithm>
#include <boost/json/serialize.hpp>
#include <boost/json/string.hpp>
#include <fmt/format.h>
#include <ostream>

#include "platform/text/Text.h"

namespace torvex::cli {

namespace {

std::string quotedJson(std::string_view text) {
    return boost::json::serialize(boost::json::string(text::toValidUtf8(text)));
}

std::string jsonOf(const Value& value) {
    if (value.isEmpty()) return "null";
    if (value.isNumber()) return text::fromNumber(value.number());
    if (value.isBoolean()) return value.boolean() ? "true" : "false";
    return quotedJson(value.toText());
}

class JsonPrinter final : public RowPrinter {
  public:
    explicit JsonPrinter(std::ostream& out) : out_(out) {}

    void print(const std::vector<std::string>& names, db::Rows& rows) override {
        while (rows.next()) {
            std::string line = "{";
            for (std::size_t i = 0; i < names.size(); ++i) {
                if (i > 0) line += ',';
                line += quotedJson(names[i]) + ':' + jsonOf(rows.value(i));
            }
            out_ << line << "}\n";
        }
    }

  private:
    std::ostream& out_;
};

struct Cell {
    std::string text;
    bool isNumber = false;
};

/// A text on one line, so that the columns stay under each other.
std::string onOneLine(const std::string& value) {
    std::string result;
    for (const char c : text::toValidUtf8(value)) {
        if (c == '\n') {
            result += "\\n";
        } else if (c == '\r') {
            result += "\\r";
        } else if (c == '\t') {
            result += "\\t";
        } else if (static_cast<unsigned char>(c) < 0x20 || c == 0x7f) {
            result += fmt::format("\\x{:02x}", static_cast<unsigned char>(c));
        } else {
            result += c;
        }
    }
    return result;
}

Cell cellOf(const Value& value) {
    if (value.isEmpty()) return {"null", false};
    return {onOneLine(value.toText()), value.isNumber()};
}

class TablePrinter final : public RowPrinter {
  public:
    explicit TablePrinter(std::ostream& out) : out_(out) {}

    void print(const std::vector<std::string>& names, db::Rows& rows) override {
        std::vector<std::vector<Cell>> table(1);
        for (const std::string& name : names) table[0].push_back({name, false});
        while (rows.next()) {
            auto& line = table.emplace_back();
            for (std::size_t i = 0; i < names.size(); ++i) line.push_back(cellOf(rows.value(i)));
        }
        printTable(table);
    }

  private:
    void printTable(const std::vector<std::vector<Cell>>& table) {
        const std::vector<std::size_t> widths = widthsOf(table);
        printLine(table[0], widths);
        std::string rule;
        for (const std::size_t width : widths) rule += (rule.empty() ? "" : "  ") + std::string(width, '-');
        out_ << rule << '\n';
        for (std::size_t i = 1; i < table.size(); ++i) printLine(table[i], widths);
        out_ << fmt::format("({} {})\n", table.size() - 1, table.size() == 2 ? "row" : "rows");
    }

    static std::vector<std::size_t> widthsOf(const std::vector<std::vector<Cell>>& table) {
        std::vector<std::size_t> widths(table[0].size());
        for (const auto& line : table) {
            for (std::size_t i = 0; i < line.size(); ++i) {
                widths[i] = std::max(widths[i], text::length(line[i].text));
            }
        }
        return widths;
    }

    void printLine(const std::vector<Cell>& line, const std::vector<std::size_t>& widths) {
        std::string result;
        for (std::size_t i = 0; i < line.size(); ++i) {
            const std::string padding(widths[i] - text::length(line[i].text), ' ');
            if (i > 0) result += "  ";
            result += line[i].isNumber ? padding + line[i].text : line[i].text + padding;
        }
        result.erase(result.find_last_not_of(' ') + 1);
        out_ << result << '\n';
    }

    std::ostream& out_;
};

}  // namespace

std::unique_ptr<RowPrinter> tablePrinter(std::ostream& out) {
    return std::make_unique<TablePrinter>(out);
}

std::unique_ptr<RowPrinter> jsonPrinter(std::ostream& out) {
    return std::make_unique<JsonPrinter>(out);
}

}  // namespace torvex::cli
