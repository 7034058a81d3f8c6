#include "search/extraction/OfficeText.h"

#include <algorithm>
#include <map>
#include <vector>

#include "platform/text/Text.h"
#include "search/extraction/Archive.h"
#include "search/extraction/OneOf.h"
#include "search/extraction/TextBuilder.h"
#include "search/extraction/TextExtractor.h"

namespace torvex::catalogue {

namespace {

/// The text of parts in which each run of it is an element "t".
class RunText final : public XmlEvents {
  public:
    explicit RunText(TextBuilder& text) : text_(text) {}

    void startElement(std::string_view name, const Attributes&) override {
        if (name == "t") ++depth_;
        if (isOneOf(name, {"p", "si", "tab", "br", "cr", "c"})) text_.gap();
    }
    void endElement(std::string_view name) override {
        if (name == "t") --depth_;
        if (isOneOf(name, {"p", "si", "c"})) text_.gap();
    }
    void characters(std::string_view text) override {
        if (depth_ > 0) text_.add(text);
    }
    bool isDone() const override { return text_.isFull(); }

  private:
    TextBuilder& text_;
    int depth_ = 0;
};

/// All text of a document's body.
class BodyText final : public XmlEvents {
  public:
    explicit BodyText(TextBuilder& text) : text_(text) {}

    void startElement(std::string_view name, const Attributes&) override {
        if (name == "body") ++body_;
        if (isHidden(name)) ++hidden_;
        if (!isOneOf(name, {"span", "a", "s"})) text_.gap();
        if (name == "s") text_.add(" ");
    }
    void endElement(std::string_view name) override {
        if (name == "body") --body_;
        if (isHidden(name)) --hidden_;
        if (!isOneOf(name, {"span", "a", "s"})) text_.gap();
    }
    void characters(std::string_view text) override {
        if (body_ > 0 && hidden_ == 0) text_.add(text);
    }
    bool isDone() const override { return text_.isFull(); }

  private:
    static bool isHidden(std::string_view name) { return isOneOf(name, {"tracked-changes", "annotation"}); }

    TextBuilder& text_;
    int body_ = 0;
    int hidden_ = 0;
};

/// The texts of elements by their names; more of one name are divided by commas.
class Values final : public XmlEvents {
  public:
    void startElement(std::string_view name, const Attributes& attributes) override {
        current_ = name;
        // What isn't foreseen has a name of the author's.
        for (const auto& [attribute, value] : attributes) {
            if (name == "user-defined" && attribute == "name") current_ = text::lower(value);
        }
        text_.clear();
    }
    void endElement(std::string_view) override {
        const std::string value = oneLine(text_);
        text_.clear();
        if (value.empty() || current_.empty()) return;
        std::string& kept = values_[current_];
        kept += kept.empty() ? value : ", " + value;
        current_.clear();
    }
    void characters(std::string_view text) override {
        if (text_.size() < longestColumn) text_.append(text);
    }

    std::string of(std::string_view name) const {
        const auto found = values_.find(name);
        return found == values_.end() ? "" : found->second;
    }

  private:
    std::map<std::string, std::string, std::less<>> values_;
    std::string current_;
    std::string text_;
};

void put(Reading& reading, std::string_view name, std::string value) {
    if (!value.empty()) reading.columns.insert_or_assign(std::string(name), std::move(value));
}

void putLanguage(Reading& reading, const std::string& value) {
    if (value.size() >= 2 && (value.size() == 2 || value[2] == '-')) {
        reading.language = text::lower(value.substr(0, 2));
    }
}

/// By the numbers in them: the tenth slide comes behind the second.
std::vector<std::string> partsOf(const Archive& archive, std::string_view beginning) {
    std::vector<std::string> parts;
    for (const std::string& name : archive.names()) {
        if (name.starts_with(beginning) && name.ends_with(".xml") &&
            name.find('/', beginning.size()) == std::string::npos) {
            parts.push_back(name);
        }
    }
    std::sort(parts.begin(), parts.end(), [](const std::string& a, const std::string& b) {
        return a.size() != b.size() ? a.size() < b.size() : a < b;
    });
    return parts;
}

constexpr std::string_view openXmlParts[] = {
    "word/document",       "word/footnotes",   "word/endnotes",
    "word/header",         "word/footer",      "xl/sharedStrings",
    "xl/worksheets/sheet", "ppt/slides/slide", "ppt/notesSlides/notesSlide",
};

class EncryptionSign final : public XmlEvents {
  public:
    void startElement(std::string_view name, const Attributes&) override {
        isThere_ = isThere_ || name == "encryption-data";
    }
    void endElement(std::string_view) override {}
    void characters(std::string_view) override {}
    bool isDone() const override { return isThere_; }

  private:
    bool isThere_ = false;
};

}  // namespace

Reading readOpenXml(std::string_view bytes) {
    Archive archive(bytes);
    if (!archive.has("[Content_Types].xml")) throw ExtractionError("it is no document of its kind");
    TextBuilder text;
    RunText runs(text);
    for (const std::string_view beginning : openXmlParts) {
        for (const std::string& part : partsOf(archive, beginning)) {
            text.gap();
            if (!text.isFull()) archive.read(part, runs);
        }
    }
    Reading reading;
    reading.text = text.take();
    Values core;
    archive.read("docProps/core.xml", core);
    put(reading, column::title, core.of("title"));
    put(reading, column::author, core.of("creator"));
    put(reading, column::subject, core.of("subject"));
    put(reading, column::keywords, core.of("keywords"));
    put(reading, column::comments, core.of("description"));
    putLanguage(reading, core.of("language"));
    Values more;
    archive.read("docProps/app.xml", more);
    put(reading, column::company, more.of("Company"));
    return reading;
}

Reading readOpenDocument(std::string_view bytes) {
    Archive archive(bytes);
    if (!archive.has("content.xml")) throw ExtractionError("it is no document of its kind");
    EncryptionSign sign;
    archive.read("META-INF/manifest.xml", sign);
    if (sign.isDone()) throw ExtractionError("it is encrypted");
    TextBuilder text;
    BodyText body(text);
    archive.read("content.xml", body);
    Reading reading;
    reading.text = text.take();
    Values values;
    archive.read("meta.xml", values);
    const std::string first = values.of("initial-creator");
    put(reading, column::title, values.of("title"));
    put(reading, column::author, first.empty() ? values.of("creator") : first);
    put(reading, column::subject, values.of("subject"));
    put(reading, column::keywords, values.of("keyword"));
    put(reading, column::comments, values.of("description"));
    put(reading, column::company, values.of("company"));
    putLanguage(reading, values.of("language"));
    return reading;
}

}  // namespace torvex::catalogue
