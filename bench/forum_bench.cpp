#include <benchmark/benchmark.h>
#include <fmt/format.h>

#include "Store.h"
#include "modules/forum/Forum.h"
#include "modules/forum/ForumViews.h"
#include "templates/HTMLTemplate.h"

// A topic of two thousand reactions in ten levels, on the embedded store: the tree as the class draws it, and
// the thread as visitors see it.

namespace torvex {
namespace {

constexpr int reactions = 2000;
constexpr int levels = 10;

class LongTopic : public bench::Store {
  public:
    LongTopic() {
        connection().execute(
            "insert into TORVEX_FORUM_LIVE (forum_id, forum_site, forum_lang, forum_name, forum_hotPeriod) "
            "values (1, 'aa', 'en', 'Plants', 7)");
        connection().execute(
            "insert into TORVEX_FORUM_TOPICS (topic_id, topic_forumId, topic_title, topic_dateCreation) "
            "values (1, 1, 'Moss', '20260601')");
        db::Transaction transaction(connection());
        std::string place;
        for (int id = 1; id <= reactions; ++id) {
            // Two hundred branches, each of them ten levels deep.
            const int level = (id - 1) % levels;
            const int branch = (id - 1) / levels;
            place = level == 0 ? branchPlace(branch) : place + ".01";
            connection().execute(
                "insert into TORVEX_FORUM_REACTIONS (reaction_id, reaction_forumId, reaction_topicId, "
                "reaction_reference, reaction_title, reaction_date, reaction_online, reaction_author, "
                "reaction_text) values (?, 1, 1, ?, 'A reaction of the usual length', '20260610', 1, 'Ann', "
                "'Some lines of text, as people write them, with http://a.example/page in it.')",
                {id, place});
        }
        transaction.commit();
    }

  private:
    static std::string branchPlace(int branch) {
        if (branch < 99) return fmt::format("{:02}", branch + 1);
        const int letters = branch - 99;
        return fmt::format("{}{}", static_cast<char>('A' + letters / 10), letters % 10);
    }
};

void forumReactionTree(benchmark::State& state) {
    LongTopic topic;
    Forum forum(topic.host.context());
    forum.connect(topic.connection());
    std::size_t bytes = 0;
    for (auto unused : state) bytes = forum.getReactionTree(1, 1, 5).size();
    if (bytes < 100'000) state.SkipWithError("the tree wasn't drawn");
    state.counters["bytes"] = static_cast<double>(bytes);
}
BENCHMARK(forumReactionTree)->Unit(benchmark::kMillisecond);

void forumThread(benchmark::State& state) {
    LongTopic topic;
    ForumRecord forum;
    forum.id = 1;
    std::size_t bytes = 0;
    for (auto unused : state) {
        HTMLTemplate page(topic.host.context());
        page.setStrVal(
            "<!--!topic_title!--><!--!reaction_row_start!--><h3><!--!reaction_title!--></h3>"
            "<!--!reaction_new_start!-->new<!--!reaction_new_end!--><p><!--!reaction_author!-->, "
            "<!--!reaction_day!-->.<!--!reaction_month!-->.<!--!reaction_year!--></p><!--!reaction_text!-->"
            "<a href=\"<!--!reaction_reactURL!-->\">Answer</a><!--!reaction_row_end!-->");
        const TopicView view{.forum = forum,
                             .topic = *topicOf(topic.connection(), forum, 1, topic.host.clock.now()),
                             .reactions = reactionsOf(topic.connection(), 1, 1, 5),
                             .shownReaction = 5};
        fillTopic(page, view, ForumAddress(11), topic.host.clock.now());
        bytes = page.strVal().size();
    }
    if (bytes < 100'000) state.SkipWithError("the thread wasn't drawn");
    state.counters["bytes"] = static_cast<double>(bytes);
}
BENCHMARK(forumThread)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace torvex
