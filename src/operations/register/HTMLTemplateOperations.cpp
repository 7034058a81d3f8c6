#include "operations/register/Binding.h"
#include "operations/register/Classes.h"
#include "templates/HTMLTemplate.h"

namespace torvex::operations {

namespace {

// The engine works on files by path and on text that the caller has already: nothing of it is for the
// network.

std::vector<Row<HTMLTemplate>> files() {
    return {
        reads("load", &HTMLTemplate::load, {argument("filename"), argument("tristate", -2)},
              "Fills the buffer from a file and cuts the blocks for other browsers.", nobody())
            .codes({refusal(false, "There is no such file.")}),
        writes("save", &HTMLTemplate::save, {argument("filename"), argument("unicode", false)},
               "Writes the buffer and a line break to a file.", nobody()),
        reads("loadAppTpl", &HTMLTemplate::loadAppTpl,
              {argument("pageIdent"), argument("tplTitle"), argument("mode", "L")},
              "Loads the template that an application page keeps under a title; the number of that template "
              "page, or -1.",
              nobody())
            .codes({code(-1, "There is no such template.")}),
    };
}

std::vector<Row<HTMLTemplate>> tags() {
    return {
        reads("tagExists", &HTMLTemplate::tagExists, {argument("tag")}, "Whether the buffer holds a tag.",
              nobody()),
        reads("iTagExists", &HTMLTemplate::iTagExists, {argument("tag")},
              "The number of the first numbered tag of a name.", nobody())
            .codes({code(0, "There is no such tag.")}),
        reads("replaceTag", &HTMLTemplate::replaceTag,
              {argument("tag"), argument("text"), argument("letterCase", ""), argument("count", -1)},
              "Puts a text, in upper (\"U\") or lower (\"L\") case if wanted, in the first places of a tag; "
              "in all when the count is negative.",
              nobody()),
        reads("removeTags", &HTMLTemplate::removeTags, {}, "Removes all markers from the buffer.", nobody()),
    };
}

std::vector<Row<HTMLTemplate>> blocks() {
    return {
        reads("blockExists", &HTMLTemplate::blockExists, {argument("tag")},
              "Whether the buffer holds a block.", nobody()),
        reads("extractBlock", &HTMLTemplate::extractBlock, {argument("tag")},
              "The text of the first block of a name; without one the request ends.", nobody()),
        reads("extractCustomBlock", &HTMLTemplate::extractCustomBlock,
              {argument("beginTag"), argument("endTag")},
              "The text between two tags; without them the request ends.", nobody()),
        reads("replaceBlock", &HTMLTemplate::replaceBlock, {argument("tag"), argument("text")},
              "Replaces the first block of a name; without one the request ends.", nobody()),
        reads("replaceCustomBlock", &HTMLTemplate::replaceCustomBlock,
              {argument("beginTag"), argument("endTag"), argument("text")},
              "Replaces what two tags enclose; without them the request ends.", nobody()),
        reads("replaceAllBlocks", &HTMLTemplate::replaceAllBlocks, {argument("tag"), argument("text")},
              "Replaces every block of a name; with \"_i\" at its end the numbered blocks too.", nobody()),
    };
}

std::vector<Row<HTMLTemplate>> services() {
    return {
        reads("emailToLinks", &HTMLTemplate::emailToLinks, {},
              "Turns the plain e-mail addresses of the buffer into links.", nobody()),
        reads("jsEncode", &HTMLTemplate::jsEncode, {argument("str")},
              "The text as it stands in a JavaScript string.", nobody()),
        reads("syncFrames", &HTMLTemplate::syncFrames, {argument("pageIdent")},
              "Lets a page that is shown in a frame tell the frame set which page it is.", nobody()),
        reads("getNodeId", &HTMLTemplate::getNodeId, {argument("pageId")},
              "The node of a page number; empty text when there is no such page.", nobody()),
        reads("getPageId", &HTMLTemplate::getPageId, {argument("nodeId")}, "The page number of a node.",
              nobody())
            .codes({code(-1, "There is no such page.")}),
    };
}

}  // namespace

ClassEntry htmlTemplateOperations() {
    return describe<HTMLTemplate>(
        "HTMLTemplate", "A text with marked places to find, fill, cut and lift out.",
        joined({files(), tags(), blocks(), services()}),
        {property("strVal", &HTMLTemplate::strVal, &HTMLTemplate::setStrVal, "The buffer.")});
}

}  // namespace torvex::operations
