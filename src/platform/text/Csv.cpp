#include "platform/text/Csv.h"

#include <algorithm>
#include <array>
#include <utility>

namespace torvex::csv {

namespace {

constexpr char quote = '"';

bool isLineEnd(char c) {
    return c == '\n' || c == '\r';
}

class Reader {
  public:
    Reader(std::string_view text, char divider) : text_(text), divider_(divider) {}

    Table read() {
        while (at_ < text_.size() && table_.openQuote == 0) readLine();
        return std::move(table_);
    }

  private:
    void readLine() {
        Line line{number_, {}};
        const std::size_t begin = at_;
        do {
            line.cells.push_back(readCell());
        } while (table_.openQuote == 0 && takeDivider());
        const bool isEmpty = at_ == begin;
        takeLineEnd();
        if (!isEmpty && table_.openQuote == 0) table_.lines.push_back(std::move(line));
    }

    std::string readCell() {
        if (at_ < text_.size() && text_[at_] == quote) return readQuoted();
        return readPlain();
    }

    /// What stands behind the closing quote belongs to the cell as well.
    std::string readQuoted() {
        const std::size_t opened = number_;
        std::string cell;
        ++at_;
        while (at_ < text_.size()) {
            if (text_[at_] == quote) {
                ++at_;
                if (at_ == text_.size() || text_[at_] != quote) return cell + readPlain();
            }
            countLine();
            cell += text_[at_++];
        }
        table_.openQuote = opened;
        return cell;
    }

    std::string readPlain() {
        const std::size_t begin = at_;
        while (at_ < text_.size() && text_[at_] != divider_ && !isLineEnd(text_[at_])) ++at_;
        return std::string(text_.substr(begin, at_ - begin));
    }

    bool takeDivider() {
        if (at_ == text_.size() || text_[at_] != divider_) return false;
        ++at_;
        return true;
    }

    void takeLineEnd() {
        if (at_ == text_.size()) return;
        if (text_[at_] == '\r' && at_ + 1 < text_.size() && text_[at_ + 1] == '\n') ++at_;
        ++at_;
        ++number_;
    }

    /// Within quotes: "\r\n" is one end.
    void countLine() {
        const bool isPair = text_[at_] == '\r' && at_ + 1 < text_.size() && text_[at_ + 1] == '\n';
        if (isLineEnd(text_[at_]) && !isPair) ++number_;
    }

    std::string_view text_;
    char divider_;
    std::size_t at_ = 0;
    std::size_t number_ = 1;
    Table table_;
};

bool mustBeQuoted(std::string_view cell, char divider) {
    return std::ranges::any_of(cell,
                               [divider](char c) { return c == divider || c == quote || isLineEnd(c); }) ||
           cell.starts_with(' ') || cell.ends_with(' ');
}

std::string quoted(std::string_view cell) {
    std::string result(1, quote);
    for (const char c : cell) {
        if (c == quote) result += quote;
        result += c;
    }
    return result + quote;
}

}  // namespace

char dividerOf(std::string_view text) {
    std::array<std::size_t, 3> counts{};
    constexpr std::string_view dividers = ",;\t";
    bool isQuoted = false;
    for (const char c : text.substr(0, text.find_first_of("\r\n"))) {
        if (c == quote) isQuoted = !isQuoted;
        const std::size_t which = isQuoted ? std::string_view::npos : dividers.find(c);
        if (which != std::string_view::npos) ++counts[which];
    }
    return dividers[static_cast<std::size_t>(std::ranges::max_element(counts) - counts.begin())];
}

Table read(std::string_view text, char divider) {
    return Reader(text, divider).read();
}

std::string write(const std::vector<std::string>& cells, char divider) {
    std::string line;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        if (i > 0) line += divider;
        line += mustBeQuoted(cells[i], divider) ? quoted(cells[i]) : cells[i];
    }
    return line + "\r\n";
}

}  // namespace torvex::csv
