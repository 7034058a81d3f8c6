// registers: content templates, base templates and stylesheets: an entry and its file.

#include <optional>

#include "accounts/Actor.h"
#include "authoring/StatusCodes.h"
#include "desk/DesignStatus.h"
#include "desk/RecordFields.h"
#include "desk/RecordLock.h"
#include "desk/registers.h"
#include "media/FileNames.h"
#include "platform/ApplicationValues.h"
#include "platform/Errors.h"
#include "platform/HostContext.h"
#include "platform/OperatorLog.h"
#include "platform/db/OwnTransaction.h"
#include "platform/files/FileSystem.h"
#include "platform/files/WildCards.h"
#include "platform/text/Text.h"
#include "records/Existence.h"
#include "records/RegisterLock.h"
#include "records/SiteCodes.h"
#include "replication/SharedFiles.h"
#include "templates/DesignAssets.h"
#include "templates/DesignPath.h"

namespace torvex {

namespace {

using Outcome = db::Outcome<std::string>;

/// One of the three registers, as a change sees it.
struct AssetRegister {
    std::string_view operation;
    std::string_view word;    ///< of the audit trail
    std::string_view item;    ///< of the item locks
    std::string_view ending;  ///< of its files; "" for any
    const AssetStatements& statements;
    std::string_view insert;  ///< site, language, name, description, file, and what `writesSystem`
    std::string_view update;  ///< name, description, file, and what `writesSystem`; the number
    bool writesSystem = false;
};

constexpr AssetRegister templates{
    .operation = "saveTemplate",
    .word = "Content template",
    .item = "contentTemplate",
    .ending = "",
    .statements = contentTemplateStatements,
    .insert =
        "insert into TORVEX_TEMPLATES "
        "(tpl_site, tpl_lang, tpl_name, tpl_description, tpl_filename, tpl_system, lock) "
        "values (?, ?, ?, ?, ?, ?, '')",
    .update =
        "update TORVEX_TEMPLATES set tpl_name = ?, tpl_description = ?, tpl_filename = ?, tpl_system = ?, "
        "lock = '' where tpl_id = ?",
    .writesSystem = true,
};
constexpr AssetRegister baseTemplates{
    .operation = "saveBaseTemplate",
    .word = "Base template",
    .item = "baseTemplate",
    .ending = "",
    .statements = baseTemplateStatements,
    .insert =
        "insert into TORVEX_BASETEMPLATES "
        "(btpl_site, btpl_lang, btpl_name, btpl_description, btpl_filename, lock) values (?, ?, ?, ?, ?, '')",
    .update =
        "update TORVEX_BASETEMPLATES set btpl_name = ?, btpl_description = ?, btpl_filename = ?, lock = '' "
        "where btpl_id = ?",
};
/// Visitors fetch them: a file of another kind would lie there for the taking.
constexpr AssetRegister stylesheets{
    .operation = "saveStylesheet",
    .word = "Stylesheet",
    .item = "stylesheet",
    .ending = ".css",
    .statements = stylesheetStatements,
    .insert =
        "insert into TORVEX_STYLESHEETS "
        "(ss_site, ss_lang, ss_name, ss_description, ss_filename, lock) values (?, ?, ?, ?, ?, '')",
    .update =
        "update TORVEX_STYLESHEETS set ss_name = ?, ss_description = ?, ss_filename = ?, lock = '' "
        "where ss_id = ?",
};

/// An entry as it is to be.
struct WantedAsset {
    int id;
    std::string site;
    std::string lang;
    std::string name;
    std::string description;
    std::string file;
    const std::string& source;
    int isSystem = 0;
};

/// A file with a new text: it is as it was before unless the change is kept.
class WrittenFile {
  public:
    explicit WrittenFile(HostContext& host) : host_(host), files_(host) {}
    WrittenFile(const WrittenFile&) = delete;
    WrittenFile& operator=(const WrittenFile&) = delete;
    ~WrittenFile() {
        if (path_.empty()) return;
        try {
            goBack();
        } catch (const std::exception& error) {
            warnOf(host_.log, "the file \"" + path_ + "\" has a text that was not kept", error);
        }
    }

    /// A file that has the text already isn't touched.
    void write(const std::string& path, const std::string& text) {
        before_ = host_.files.readBytes(path);
        if (before_ == text) return;
        path_ = path;
        files_.writeTexts({{path, text}}, TextFormat::SystemDefault);
    }
    /// The other servers get it; what lies at `former`, if that is another file, goes there as here.
    void keep(const std::string& former) {
        path_.clear();
        if (!former.empty()) files_.deleteFile(former);
        files_.replicate();
    }

  private:
    void goBack() {
        if (before_) {
            host_.files.writeBytes(path_, *before_);
        } else if (host_.files.fileExists(path_)) {
            host_.files.deleteFile(path_);
        }
    }

    HostContext& host_;
    SharedFiles files_;
    std::string path_;  ///< "" when there is nothing to take back
    std::optional<std::string> before_;
};

/// Authors' browsers may send a path with it. A name that the entry has already stays as it is written; nothing
/// for one that no file can have here.
std::optional<std::string> fileNameOf(const AssetRegister& assets, std::string_view given,
                                      std::string_view present) {
    given = text::trim(given);
    if (const auto divider = given.rfind('\\'); divider != std::string_view::npos)
        given.remove_prefix(divider + 1);
    if (!present.empty() && text::equals(given, present)) return std::string(present);
    const auto kept = keptFileName(given);
    if (!kept || hasWildCard(*kept) || !text::endsWith(*kept, assets.ending)) return std::nullopt;
    return kept;
}

/// The name of the file of an entry, which may be "". Its text isn't asked for: it may be one that can't be read.
/// Nothing when there is no such entry in the site and language.
std::optional<std::string> presentFile(db::Connection& own, const AssetRegister& assets,
                                       const WantedAsset& wanted) {
    if (wanted.id == 0) return std::string();
    auto rows = own.query(assets.statements.byId, {wanted.id});
    if (!rows.next() || !text::equals(text::trim(rows.text("site")), wanted.site) ||
        !text::equals(text::trim(rows.text("lang")), wanted.lang))
        return std::nullopt;
    return std::string(text::trim(rows.text("filename")));
}

/// What one save needs of the world, and what it leaves behind.
class AssetChange {
  public:
    AssetChange(HostContext& host, const AssetRegister& assets, const Actor& actor)
        : host_(host), assets_(assets), actor_(actor), file_(host) {}

    Outcome run(db::Connection& own, WantedAsset wanted) {
        lockRegisters(own);
        const auto present = presentFile(own, assets_, wanted);
        if (!present) return db::refuse(designStatus::gone);
        if (!siteExists(own, wanted.site) || !languageExists(own, wanted.lang))
            return db::refuse(designStatus::noWebsite);
        if (wanted.name.empty()) return db::refuse(designStatus::nameMissing);
        const auto file = fileNameOf(assets_, wanted.file, *present);
        if (!file) return db::refuse(designStatus::noFileName);
        wanted.file = *file;
        if (const auto refused = taken(own, wanted, *present); !refused.empty()) return db::refuse(refused);
        return wanted.id == 0 ? add(own, wanted) : change(own, wanted, *present);
    }
    void keep() { file_.keep(former_); }

  private:
    std::string pathOf(const WantedAsset& wanted, std::string_view file) {
        return designPath(host_.application, assets_.statements.directoryKey, wanted.site, wanted.lang, file);
    }
    /// A file that no entry has is somebody's too.
    std::string_view taken(db::Connection& own, const WantedAsset& wanted, const std::string& present) {
        const auto status = DesignAssets(assets_.statements, host_, own)
                                .check(wanted.site, wanted.lang, wanted.id, wanted.name, wanted.file);
        if (status == assetStatus::nameTaken) return designStatus::nameTaken;
        const bool isNew = !text::equals(wanted.file, present);
        const bool isThere = isNew && host_.files.fileExists(pathOf(wanted, wanted.file));
        return status == assetStatus::fileTaken || isThere ? designStatus::fileTaken : std::string_view();
    }
    std::vector<db::Parameter> columnsOf(const WantedAsset& wanted) {
        std::vector<db::Parameter> columns{std::string_view(wanted.name),
                                           std::string_view(wanted.description),
                                           std::string_view(wanted.file)};
        if (assets_.writesSystem) columns.emplace_back(wanted.isSystem);
        return columns;
    }
    Outcome add(db::Connection& own, const WantedAsset& wanted) {
        auto columns = columnsOf(wanted);
        columns.insert(columns.begin(), {std::string_view(wanted.site), std::string_view(wanted.lang)});
        own.execute(assets_.insert, columns);
        const int id =
            DesignAssets(assets_.statements, host_, own).idByName(wanted.name, wanted.site, wanted.lang);
        file_.write(pathOf(wanted, wanted.file), wanted.source);
        return db::commit(std::to_string(id));
    }
    Outcome change(db::Connection& own, const WantedAsset& wanted, const std::string& present) {
        const RecordLock lock(own, actor_, assets_.item, wanted.id);
        if (!lock.isHeld()) return db::refuse(designStatus::openElsewhere);
        auto columns = columnsOf(wanted);
        columns.emplace_back(wanted.id);
        own.execute(assets_.update, columns);
        former_ = formerPath(own, wanted, present);
        file_.write(pathOf(wanted, wanted.file), wanted.source);
        return db::commit(std::to_string(wanted.id));
    }
    /// Of the file that has no entry any more; "" when it is still the entry's, or another's.
    std::string formerPath(db::Connection& own, const WantedAsset& wanted, const std::string& present) {
        const bool stays = present.empty() || hasWildCard(present) || text::equals(present, wanted.file) ||
                           own.query(assets_.statements.fileTaken,
                                     {wanted.site, wanted.lang, std::string_view(present), wanted.id})
                               .next();
        return stays ? std::string() : pathOf(wanted, present);
    }

    HostContext& host_;
    const AssetRegister& assets_;
    const Actor& actor_;
    WrittenFile file_;
    std::string former_;
};

struct Saved {
    std::string answer;
    std::string_view action;  ///< of the audit trail; "" when nothing has changed
    std::string description;
};

Saved save(HostContext& host, const AssetRegister& assets, WantedAsset wanted) {
    const Actor actor = actorOf(host);
    if (!actor.isLoggedIn()) return {std::string(status::notLoggedIn), {}, {}};
    wanted.site = siteCode(wanted.site);
    wanted.lang = text::lowerTrim(wanted.lang);
    wanted.name = recordName(wanted.name);
    wanted.description = recordDescription(wanted.description);
    const std::string what = std::string(assets.operation) + " of " + std::to_string(wanted.id);
    AssetChange change(host, assets, actor);
    const auto outcome = db::tryInOwnTransaction(host, what, status::failed,
                                                 [&](auto& own) { return change.run(own, wanted); });
    if (!outcome.isCommitted) return {outcome.value, {}, {}};
    followUp(host.log, what, [&] { change.keep(); });
    const std::string word(assets.word);
    if (wanted.id == 0) return {outcome.value, "new", "New " + text::lower(word) + " \"" + wanted.name + '"'};
    return {outcome.value, "save", word + " \"" + wanted.name + "\" has been updated"};
}

}  // namespace

std::string registers::saveTemplate(int templateId, const std::string& site, const std::string& lang,
                                    const std::string& name, const std::string& description,
                                    const std::string& file, const std::string& source, bool system,
                                    int advId) {
    const auto saved =
        save(host_, templates, {templateId, site, lang, name, description, file, source, system ? 1 : 0});
    if (!saved.action.empty()) recordChange("saveTemplate", advId, saved.action, saved.description);
    return saved.answer;
}

std::string registers::saveBaseTemplate(int baseTemplateId, const std::string& site, const std::string& lang,
                                        const std::string& name, const std::string& description,
                                        const std::string& file, const std::string& source, int advId) {
    const auto saved =
        save(host_, baseTemplates, {baseTemplateId, site, lang, name, description, file, source});
    if (!saved.action.empty()) recordChange("saveBaseTemplate", advId, saved.action, saved.description);
    return saved.answer;
}

std::string registers::saveStylesheet(int stylesheetId, const std::string& site, const std::string& lang,
                                      const std::string& name, const std::string& description,
                                      const std::string& file, const std::string& source, int advId) {
    const auto saved = save(host_, stylesheets, {stylesheetId, site, lang, name, description, file, source});
    if (!saved.action.empty()) recordChange("saveStylesheet", advId, saved.action, saved.description);
    return saved.answer;
}

}  // namespace torvex
