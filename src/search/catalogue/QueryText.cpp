#include "search/catalogue/QueryText.h"

#include <algorithm>
#include <fmt/format.h>
#include <utility>

#include "platform/text/LogText.h"
#include "platform/text/Text.h"
#include "search/catalogue/Catalogue.h"
#include "search/catalogue/Words.h"

namespace torvex::catalogue {

namespace {

using Kind = QueryNode::Kind;

constexpr std::size_t longestName = 100;
constexpr std::string_view fileNameProperty = "filename";

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

bool endsWord(char c) {
    return isBlank(c) || c == '(' || c == ')' || c == '"';
}

/// A property as it holds for the words behind it.
struct Property {
    std::string name = "contents";
    bool anyForm = false;
};

class Parser {
  public:
    Parser(std::string_view text, const QueryLimits& limits) : text_(text), limits_(limits) {}

    QueryNode parse() {
        if (text_.size() > limits_.bytes) throw TooManyError("the query is too long");
        if (text_.find('\0') != std::string_view::npos) refuse("a NUL stands", text_.find('\0'));
        if (!text::isValidUtf8(text_)) throw QueryError("the query is no UTF-8");
        Property property;
        QueryNode query = readQuery(property);
        skipBlanks();
        if (at_ < text_.size()) refuse("an operator is missing", at_);
        return query;
    }

  private:
    [[noreturn]] void refuse(std::string_view what, std::size_t at) const {
        throw QueryError(fmt::format("{} at character {} of the query: {}", what,
                                     text::length(text_.substr(0, at)) + 1, forLog(text_.substr(at), 30)));
    }

    /// Counts what a query is made of, and how deep it is nested.
    void count() {
        if (++nodes_ > limits_.nodes) throw TooManyError("the query has too many words");
    }
    void countWildCards(std::string_view text) {
        wildCards_ += static_cast<std::size_t>(
            std::count_if(text.begin(), text.end(), [](char c) { return c == '*' || c == '?'; }));
        if (wildCards_ > limits_.wildCards) throw TooManyError("the query has too many wild cards");
    }

    class Level {
      public:
        explicit Level(Parser& parser) : parser_(parser) {
            if (++parser_.depth_ > parser_.limits_.depth)
                throw TooManyError("the query is nested too deeply");
        }
        Level(const Level&) = delete;
        Level& operator=(const Level&) = delete;
        ~Level() { --parser_.depth_; }

      private:
        Parser& parser_;
    };

    void skipBlanks() {
        while (at_ < text_.size() && isBlank(text_[at_])) ++at_;
    }
    bool isNext(char c) {
        skipBlanks();
        return at_ < text_.size() && text_[at_] == c;
    }
    /// What would be read as a word or an operator.
    std::string_view nextWord() {
        skipBlanks();
        std::size_t end = at_;
        while (end < text_.size() && !endsWord(text_[end])) ++end;
        return text_.substr(at_, end - at_);
    }
    bool takeOperator(std::string_view name) {
        const std::string_view word = nextWord();
        if (!text::equals(word, name)) return false;
        at_ += word.size();
        return true;
    }

    QueryNode joined(Kind kind, std::vector<QueryNode> parts) {
        if (parts.size() == 1) return std::move(parts.front());
        count();
        QueryNode node;
        node.kind = kind;
        node.parts = std::move(parts);
        return node;
    }

    QueryNode readQuery(Property& property) {
        std::vector<QueryNode> parts;
        do parts.push_back(readPart(property));
        while (takeOperator("or"));
        return joined(Kind::Or, std::move(parts));
    }

    QueryNode readPart(Property& property) {
        std::vector<QueryNode> factors;
        do factors.push_back(readFactor(property));
        while (takeOperator("and"));
        return joined(Kind::And, std::move(factors));
    }

    QueryNode readFactor(Property& property) {
        skipBlanks();
        if (at_ == text_.size()) refuse("words are missing", at_);
        if (takeOperator("not")) return readNegation(property);
        switch (text_[at_]) {
            case '(':
                return readParentheses(property);
            case '#':
                return readFileName();
            case '@':
            case '$':
                readProperty(property);
                break;
            default:
                break;
        }
        return readWords(property);
    }

    QueryNode readNegation(Property& property) {
        const Level level(*this);
        count();
        QueryNode node;
        node.kind = Kind::Not;
        node.parts.push_back(readFactor(property));
        return node;
    }

    /// What is said of properties within ends with them.
    QueryNode readParentheses(Property property) {
        const Level level(*this);
        ++at_;
        QueryNode node = readQuery(property);
        if (!isNext(')')) {
            if (at_ == text_.size()) refuse("\")\" is missing", at_);
            refuse("an operator is missing", at_);
        }
        ++at_;
        return node;
    }

    QueryNode readFileName() {
        const std::size_t begin = at_;
        const std::string_view word = nextWord();
        const std::size_t sign = word.find('=');
        if (sign == std::string_view::npos || !text::equals(word.substr(1, sign - 1), fileNameProperty)) {
            refuse("\"#\" isn't followed by \"filename=\"", begin);
        }
        QueryNode node;
        node.kind = Kind::FileName;
        node.text = text::lower(word.substr(sign + 1));
        if (node.text.empty()) refuse("the pattern of a file name is missing", begin);
        at_ += word.size();
        count();
        countWildCards(node.text);
        return node;
    }

    void readProperty(Property& property) {
        const std::size_t begin = at_;
        property.anyForm = text_[at_] == '$';
        const std::string_view word = nextWord();
        property.name = text::lower(word.substr(1));
        if (property.name.empty() || property.name.find_first_of("@$#*=<>") != std::string::npos) {
            refuse("the name of a property is missing or wrong", begin);
        }
        if (property.name.size() > longestName) refuse("the name of a property is too long", begin);
        at_ += word.size();
        skipBlanks();
        // A property may also stand before parentheses.
        if (at_ == text_.size() || text_[at_] == ')') refuse("words are missing behind the property", begin);
    }

    /// One word or phrase; behind "$" as many as follow each other.
    QueryNode readWords(Property& property) {
        skipBlanks();
        if (text_[at_] == '(') return readParentheses(property);
        std::vector<QueryNode> words;
        do words.push_back(text_[at_] == '"' ? readPhrase(property) : readWord(property));
        while (property.anyForm && wordFollows());
        return joined(Kind::Or, std::move(words));
    }

    bool wordFollows() {
        skipBlanks();
        if (at_ == text_.size()) return false;
        if (text_[at_] == '"') return true;
        if (std::string_view("()@$#").find(text_[at_]) != std::string_view::npos) return false;
        const std::string_view word = nextWord();
        return !text::equals(word, "and") && !text::equals(word, "or") && !text::equals(word, "not");
    }

    QueryNode readPhrase(const Property& property) {
        const std::size_t begin = at_++;
        const std::size_t end = text_.find('"', at_);
        if (end == std::string_view::npos) refuse("a quotation has no end", begin);
        const std::string_view quoted = text_.substr(at_, end - at_);
        at_ = end + 1;
        return nodeOf(quoted, property.name, Kind::Word);
    }

    QueryNode readWord(const Property& property) {
        const std::size_t begin = at_;
        std::string_view word = nextWord();
        at_ += word.size();
        for (const std::string_view name : {"and", "or", "not"}) {
            if (text::equals(word, name)) refuse("an operator stands where a word is due", begin);
        }
        if (word.empty() || word.front() == '@' || word.front() == '$' || word.front() == '#') {
            refuse("a word is missing", begin);
        }
        if (word.find_first_of("<>") != std::string_view::npos) refuse("comparisons aren't known", begin);
        const bool isPrefix = word.back() == '*';
        if (isPrefix) word.remove_suffix(1);
        if (word.find('*') != std::string_view::npos) refuse("\"*\" stands only at the end of a word", begin);
        if (!isPrefix) return nodeOf(word, property.name, property.anyForm ? Kind::Forms : Kind::Word);
        countWildCards("*");
        if (!WordReader(word).next()) refuse("\"*\" has no letters before it", begin);
        return nodeOf(word, property.name, Kind::Prefix);
    }

    /// What holds several words, as "e-mail", is a phrase of them; of a prefix only the last is open.
    QueryNode nodeOf(std::string_view text, const std::string& property, Kind kind) {
        count();
        QueryNode node;
        node.property = property;
        node.text = text;
        WordReader reader(text);
        if (!reader.next()) return node;
        std::size_t words = 1;
        while (reader.next()) {
            ++words;
            count();
        }
        node.kind = words == 1 || kind == Kind::Prefix ? kind : Kind::Phrase;
        return node;
    }

    std::string_view text_;
    const QueryLimits& limits_;
    std::size_t at_ = 0;
    std::size_t depth_ = 0;
    std::size_t nodes_ = 0;
    std::size_t wildCards_ = 0;
};

}  // namespace

QueryNode parseQuery(std::string_view text, const QueryLimits& limits) {
    return Parser(text, limits).parse();
}

}  // namespace torvex::catalogue
