// registers: the forums' definitions, as their administrators write them.

#include "authoring/StatusCodes.h"
#include "desk/ModuleFields.h"
#include "desk/ModuleStatus.h"
#include "desk/registers.h"
#include "platform/Errors.h"
#include "platform/db/Grid.h"
#include "platform/db/OwnTransaction.h"
#include "platform/net/MailAddress.h"
#include "records/RegisterLock.h"

namespace torvex {

namespace {

constexpr std::size_t longestAddresses = 1000;
constexpr std::size_t longestWords = 2000;
/// The choices of what a forum asks its visitors for; see `Asked`.
constexpr int lastChoice = 2;

constexpr std::string_view selectForums =
    "select d.forum_id, d.forum_name, d.forum_desc, d.forum_hotPeriod, d.forum_reactionsOnline, "
    "d.forum_archiveAfter, d.forum_archiveVisible, d.forum_sendEmail, d.forum_emailFrom, d.forum_emailTo, "
    "d.forum_emailSubject, d.forum_pageSize, d.forum_askName, d.forum_askEmail, d.forum_words, "
    "d.forum_deleted, d.forum_modified, "
    "case when exists (select 1 from TORVEX_FORUM_LIVE l where l.forum_id = d.forum_id) then 1 else 0 end "
    "as isLive, "
    "(select count(*) from TORVEX_FORUM_TOPICS where topic_forumId = d.forum_id) as topics, "
    "(select count(*) from TORVEX_FORUM_TOPICS where topic_forumId = d.forum_id and topic_online = 0) + "
    "(select count(*) from TORVEX_FORUM_REACTIONS where reaction_forumId = d.forum_id "
    "and reaction_online = 0) as hidden "
    "from TORVEX_FORUM_DESIGN d where d.forum_site = ? and d.forum_lang = ? order by d.forum_name, "
    "d.forum_id";
constexpr std::string_view selectMark = "select forum_deleted from TORVEX_FORUM_DESIGN where forum_id = ?";
constexpr std::string_view insertForum =
    "insert into TORVEX_FORUM_DESIGN (forum_site, forum_lang, forum_reference) values (?, ?, '')";
/// Those who add one wait for each other, so the last one is one's own.
constexpr std::string_view selectLast = "select max(forum_id) as forum_id from TORVEX_FORUM_DESIGN";
constexpr std::string_view updateForum =
    "update TORVEX_FORUM_DESIGN set forum_name = ?, forum_desc = ?, forum_hotPeriod = ?, "
    "forum_reactionsOnline = ?, forum_archiveAfter = ?, forum_archiveVisible = ?, forum_sendEmail = ?, "
    "forum_emailFrom = ?, forum_emailTo = ?, forum_emailSubject = ?, forum_pageSize = ?, forum_askName = ?, "
    "forum_askEmail = ?, forum_words = ?, forum_deleted = ?, forum_modified = 1 where forum_id = ?";

using Outcome = db::Outcome<std::string>;

struct ForumFields {
    std::string name;
    std::string description;
    int hotPeriod;
    bool showsAtOnce;
    int archiveAfter;
    bool isArchiveVisible;
    bool sendsMail;
    std::string mailFrom;
    std::string mailTo;
    std::string mailSubject;
    int pageSize;
    int askName;
    int askEmail;
    std::string words;
    bool isMarked;
};

/// Without a sender, or with one that mail can come from.
bool areAddresses(const ForumFields& fields) {
    if (!fields.mailFrom.empty() && !isMailAddress(fields.mailFrom)) return false;
    if (!fields.mailTo.empty() && mailAddressesIn(fields.mailTo).empty()) return false;
    return !fields.sendsMail || !fields.mailFrom.empty();
}

int addForum(db::Connection& own, const ModulePlace& place) {
    own.execute(insertForum, {place.site, place.lang});
    auto rows = own.query(selectLast);
    rows.next();
    return static_cast<int>(rows.number("forum_id"));
}

Outcome writeForum(db::Connection& own, int forumId, const ModulePlace& place, const ForumFields& fields) {
    lockRegisters(own);
    if (forumId != 0 && !own.query(selectMark, {forumId}).next()) return db::refuse(moduleStatus::gone);
    if (forumId == 0 && !isWebsite(own, place)) return db::refuse(moduleStatus::noSuchPlace);
    if (fields.name.empty()) return db::refuse(moduleStatus::nameMissing);
    if (!isOneOf(fields.askName, lastChoice) || !isOneOf(fields.askEmail, lastChoice))
        return db::refuse(moduleStatus::noSuchChoice);
    if (!areAddresses(fields)) return db::refuse(moduleStatus::noAddress);
    const int id = forumId != 0 ? forumId : addForum(own, place);
    own.execute(updateForum, {fields.name, fields.description, fields.hotPeriod, flagOf(fields.showsAtOnce),
                              fields.archiveAfter, flagOf(fields.isArchiveVisible), flagOf(fields.sendsMail),
                              fields.mailFrom, fields.mailTo, fields.mailSubject, fields.pageSize,
                              fields.askName, fields.askEmail, fields.words, flagOf(fields.isMarked), id});
    return db::commit(std::to_string(id));
}

}  // namespace

Value registers::getForums(const std::string& site, const std::string& lang) try {
    const ModulePlace place = placeFrom(site, lang);
    return db::gridOf(connection().query(selectForums, {place.site, place.lang}));
} catch (...) {
    raiseFrom("getForums !");
}

std::string registers::saveForum(int forumId, const std::string& site, const std::string& lang,
                                 const std::string& name, const std::string& description, int hotPeriod,
                                 bool reactionsOnline, int archiveAfter, bool archiveVisible, bool sendEmail,
                                 const std::string& emailFrom, const std::string& emailTo,
                                 const std::string& emailSubject, int pageSize, int askName, int askEmail,
                                 const std::string& words, bool marked, int advId) {
    if (!isLoggedIn()) return std::string(status::notLoggedIn);
    const ForumFields fields{.name = cleanField(name, longestModuleName),
                             .description = cleanField(description, longestModuleText),
                             .hotPeriod = shortNumber(hotPeriod),
                             .showsAtOnce = reactionsOnline,
                             .archiveAfter = shortNumber(archiveAfter),
                             .isArchiveVisible = archiveVisible,
                             .sendsMail = sendEmail,
                             .mailFrom = cleanField(emailFrom, longestAddresses),
                             .mailTo = cleanField(emailTo, longestAddresses),
                             .mailSubject = cleanField(emailSubject, longestModuleName),
                             .pageSize = shortNumber(pageSize),
                             .askName = askName,
                             .askEmail = askEmail,
                             .words = cleanField(words, longestWords),
                             .isMarked = marked};
    const auto outcome = db::tryInOwnTransaction(
        host_, "saveForum of " + std::to_string(forumId), status::failed,
        [&](auto& own) { return writeForum(own, forumId, placeFrom(site, lang), fields); });
    if (!outcome.isCommitted) return outcome.value;
    recordModule("saveForum", advId, forumId == 0, marked, "Forum \"" + fields.name + '"');
    return outcome.value;
}

}  // namespace torvex
