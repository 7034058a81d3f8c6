#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/Value.h"

namespace torvex {
struct HostContext;
namespace db {
class ConnectionSource;
}
}  // namespace torvex

/// The one list of the public classes and what each can do, under the names by which callers outside know
/// them. Its readers are the command line, the interface for programs, and the reference page.
namespace torvex::operations {

/// What an argument is converted to before the operation sees it; see Conversion.h.
enum class ArgumentType { Text, Number, Integer, Boolean, Date, TextFormat };

struct Argument {
    std::string name;
    ArgumentType type;
    std::optional<Value> defaultValue;  ///< none: the argument must be given
    bool withheld = false;              ///< a caller from outside can't give another value than the default
};

/// What a call leaves behind.
enum class Effect {
    Reads,   ///< nothing that outlasts the request
    Enters,  ///< where the caller works, in her session and login; nothing that others read
    Writes   ///< everything else
};

/// What the cells of a column hold; any of them may be empty.
enum class ColumnType { Text, Number, Boolean, Date };

std::string_view typeName(ColumnType type);
std::string_view effectName(Effect effect);

/// A grid may have columns behind those that its row names. They are always empty, and there only because
/// callers on this machine count columns.
struct Column {
    std::string name;
    ColumnType type;
};

/// The sentence that tells people of a refusal: the number of its label in the vocabulary of the interface, and
/// the name by which programs tell it from others. See CodeLabels.h.
struct CodeLabel {
    int number = 0;
    std::string_view kind = "refused";
};

/// An answer that stands for something else than itself.
struct StatusCode {
    Value code;  ///< of the operation's result type
    std::string meaning;
    bool isRefusal;        ///< the caller did not get what she asked for
    CodeLabel label = {};  ///< of a refusal
};

/// What a caller from outside must be allowed to do. An operation that states `Nobody` is out of reach of the
/// network: it reads or writes files by path, opens connections, or changes what isn't the caller's own.
struct Right {
    /// That an operation reads designs, and of which trees: whoever hasn't to do with a site and language
    /// (see `mayReadDesign`) sees there what is live and nothing else. Arguments are named as below.
    struct Design {
        std::string page = {};  ///< its tree; a page that isn't there has none, and no design
        std::string site = {};  ///< and this tree, unless only the page is given
        std::string lang = {};
        /// Where this is "L", or is left out and isn't "D" by itself, only what is live is read.
        std::string mode = {};
        bool isOfRecord = false;  ///< the page of the object's record, whose number and node anybody can set
        bool isOfAllTrees = false;  ///< whatever the arguments name
    };

    enum class Kind {
        Nobody,
        Visitor,
        AnyLogin,
        EditRight,
        AdvancedRight,
        OneselfOrAdvancedRight,  ///< what is done to the caller's own login is hers to do
        OnlySa
    };

    Kind kind;
    std::string detail = {};  ///< the action of an edit right; "view" or "edit" of an advanced right
    int advId = 0;  ///< the entry of the administration menu, for an advanced right; see AdminEntries.h
    // The arguments that say what the right must cover, by their names; "" where there is none. The page may
    // be a list of pages; where it is given, site and language are the page's own. A row that names all three
    // means the whole tree when no page is given; one that names no page means some part of the tree. An
    // advanced right that names a page means the page's own site and language.
    std::string page = {};
    std::string otherPage = {};  ///< a second page that must be covered as well
    std::string site = {};
    std::string lang = {};
    std::string login = {};  ///< the argument that is a login's number, where it may be the caller's own
    /// The argument that chooses between images and documents, whose entries are two; `advId` is the images'.
    std::string media = {};
    /// The argument that is a forum's number. Where one is given, site and language are the forum's own.
    std::string forum = {};
    /// "view" or "edit": this access to the entry, for the whole installation, does as well as an edit right.
    std::string orAccess = {};
    /// What has to be passed besides; nothing where no design is read, or the right alone tells who may.
    std::optional<Design> design = {};
};

/// That an operation tests a password. Callers from outside who guess are slowed down.
struct PasswordTest {
    std::string name;  ///< the argument that says whose password it is
    Value passed;      ///< what the operation gives for the right password
    Value failed;      ///< and for a wrong one
};

struct Operation {
    std::string name;
    Effect effect;
    std::vector<Argument> arguments;
    std::string result;  ///< its kind: "text", "number", "integer", "boolean", "empty" or "grid"
    std::string summary;
    Right right;
    std::vector<Column> columns = {};    ///< of a grid
    std::vector<StatusCode> codes = {};  ///< all that it answers; none when each answer is what was asked for
    std::optional<PasswordTest> passwordTest = {};
    /// Takes the object and one converted value for each argument, in order.
    std::function<Value(void*, const std::vector<Value>&)> invoke = {};

    /// Whether a caller from the network gets the entry of the row's right for the argument, whatever she
    /// sends: it is the `advId` for the audit trail, without which a change would leave no line there.
    bool isFilledByGate(const Argument& argument) const;
};

struct Property {
    std::string name;
    ArgumentType type;
    std::string summary;
    Right right;  ///< what a caller from outside needs to read it
    std::function<Value(const void*)> get;
    std::function<void(void*, const Value&)> set;  ///< takes a converted value; missing when it is read-only
};

struct ClassEntry {
    std::string name;
    std::string summary;
    std::function<std::shared_ptr<void>(HostContext&)> create;
    /// Missing for a class that takes no connection.
    std::function<void(void*, const db::ConnectionSource&)> connect;
    std::vector<Operation> operations;
    std::vector<Property> properties;

    /// Names ignore case; null when there is none.
    const Operation* findOperation(std::string_view name) const;
    const Property* findProperty(std::string_view name) const;
};

/// Immutable once made; safe to share between threads.
class Register {
  public:
    explicit Register(std::vector<ClassEntry> classes) : classes_(std::move(classes)) {}

    const std::vector<ClassEntry>& classes() const { return classes_; }
    /// Names ignore case; null when there is none.
    const ClassEntry* findClass(std::string_view name) const;
    /// The same; throws `Error` that names the classes when there is none.
    const ClassEntry& find(std::string_view name) const;

  private:
    std::vector<ClassEntry> classes_;
};

/// All public classes of the system.
Register makeRegister();

}  // namespace torvex::operations
