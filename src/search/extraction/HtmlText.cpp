#include "search/extraction/HtmlText.h"

#include <algorithm>
#include <libxml/HTMLparser.h>
#include <memory>
#include <new>

#include "platform/text/Text.h"
#include "search/extraction/OneOf.h"
#include "search/extraction/TextBuilder.h"

namespace torvex::catalogue {

namespace {

/// Tags within a word.
constexpr std::string_view inlineTags[] = {
    "a",     "abbr", "acronym", "b",      "bdi", "bdo", "big",  "cite", "code", "del",
    "dfn",   "em",   "font",    "i",      "ins", "kbd", "mark", "q",    "s",    "samp",
    "small", "span", "strike",  "strong", "sub", "sup", "tt",   "u",    "var",  "wbr"};
/// What they hold isn't shown.
constexpr std::string_view hiddenTags[] = {"script", "style", "noscript", "template", "title", "object"};

std::string_view viewOf(const xmlChar* text) {
    return text == nullptr ? std::string_view() : reinterpret_cast<const char*>(text);
}

std::string withoutBlanks(std::string_view name) {
    return text::replaceAll(text::lower(name), " ", "");
}

/// "en" of "EN", "en-US" and "en_us".
std::string languageCode(std::string_view value) {
    const std::string code = text::lowerTrim(value);
    const bool isCode = code.size() >= 2 && (code.size() == 2 || code[2] == '-' || code[2] == '_');
    return isCode ? code.substr(0, 2) : "";
}

class HtmlReader {
  public:
    void startTag(std::string_view name, const xmlChar** attributes) {
        if (!isOneOf(name, inlineTags)) text_.gap();
        if (isOneOf(name, hiddenTags)) ++hidden_;
        if (name == "title") inTitle_ = true;
        if (name == "meta") readMeta(attributes);
        if (name == "html" && reading_.language.empty()) {
            reading_.language = languageCode(attribute(attributes, "lang"));
        }
        // What an image shows is told beside it.
        if (name == "img") characters(attribute(attributes, "alt"));
    }
    void endTag(std::string_view name) {
        if (!isOneOf(name, inlineTags)) text_.gap();
        if (isOneOf(name, hiddenTags) && hidden_ > 0) --hidden_;
        if (name == "title") inTitle_ = false;
    }
    void characters(std::string_view text) {
        if (inTitle_) title_.add(text);
        if (hidden_ == 0) text_.add(text);
    }

    Reading take() {
        reading_.text = text_.take();
        put(std::string(column::title), title_.take());
        return std::move(reading_);
    }

  private:
    static std::string_view attribute(const xmlChar** attributes, std::string_view name) {
        for (; attributes != nullptr && attributes[0] != nullptr; attributes += 2) {
            if (viewOf(attributes[0]) == name) return viewOf(attributes[1]);
        }
        return {};
    }

    void readMeta(const xmlChar** attributes) {
        constexpr std::size_t mostColumns = 200;
        constexpr std::size_t longestName = 100;
        const std::string name = withoutBlanks(attribute(attributes, "name"));
        const std::string_view content = attribute(attributes, "content");
        if (name == "ms.locale") {
            reading_.language = languageCode(content);
        } else if (!name.empty() && name.size() <= longestName && reading_.columns.size() < mostColumns) {
            put(name, oneLine(content));
            if (name == "keywords" || name == "author" || name == "subject")
                put("doc" + name, oneLine(content));
        }
    }

    void put(const std::string& name, std::string value) {
        if (!value.empty()) reading_.columns.insert_or_assign(name, std::move(value));
    }

    Reading reading_;
    TextBuilder text_;
    TextBuilder title_{longestColumn};
    int hidden_ = 0;
    bool inTitle_ = false;
};

HtmlReader& readerOf(void* context) {
    return *static_cast<HtmlReader*>(context);
}

void onStart(void* context, const xmlChar* name, const xmlChar** attributes) {
    readerOf(context).startTag(viewOf(name), attributes);
}
void onEnd(void* context, const xmlChar* name) {
    readerOf(context).endTag(viewOf(name));
}
void onText(void* context, const xmlChar* text, int length) {
    readerOf(context).characters({reinterpret_cast<const char*>(text), static_cast<std::size_t>(length)});
}

struct FreeParser {
    void operator()(htmlParserCtxtPtr parser) const { htmlFreeParserCtxt(parser); }
};

/// The parser takes numbers of the size of an int.
constexpr std::size_t longestPage = 64u << 20;

}  // namespace

Reading readHtml(std::string_view bytes) {
    const std::string html = decodedText(bytes.substr(0, longestPage));
    HtmlReader reader;
    htmlSAXHandler handler{};
    handler.startElement = onStart;
    handler.endElement = onEnd;
    handler.characters = onText;
    handler.ignorableWhitespace = onText;
    const std::unique_ptr<htmlParserCtxt, FreeParser> parser(
        htmlCreatePushParserCtxt(&handler, &reader, nullptr, 0, nullptr, XML_CHAR_ENCODING_UTF8));
    if (!parser) throw std::bad_alloc();
    // The page's own encoding was decoded already.
    htmlCtxtUseOptions(parser.get(), HTML_PARSE_RECOVER | HTML_PARSE_NOERROR | HTML_PARSE_NOWARNING |
                                         HTML_PARSE_NONET | HTML_PARSE_IGNORE_ENC);
    constexpr std::size_t piece = 1 << 16;
    for (std::size_t at = 0; at < html.size(); at += piece) {
        const auto size = static_cast<int>(std::min(piece, html.size() - at));
        htmlParseChunk(parser.get(), html.data() + at, size, 0);
    }
    htmlParseChunk(parser.get(), "", 0, 1);
    return reader.take();
}

}  // namespace torvex::catalogue
