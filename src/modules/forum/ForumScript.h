#pragma once

#include <string>
#include <string_view>

namespace torvex {
namespace db {
class Connection;
}

/// The client script with which a topic is moderated, its words in an interface language. Its tags and blocks
/// are filled by whoever shows the page:
///
///     torvex_site, torvex_lang, torvex_pageId, forum, forumId, topicId, id, topicName
///     ua           what `browserVersion` is
///     winHeight    the height of the window in which a reaction is edited
///     total        a block around the rows, with one block for each kind of row in it, which are repeated:
///     mainReaction   one with reactions below it
///     reaction       one without
std::string moderationScript(db::Connection& connection, std::string_view language);

}  // namespace torvex
