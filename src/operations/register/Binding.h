#pragma once

#include <array>
#include <concepts>
#include <initializer_list>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "accounts/AdminEntries.h"
#include "modules/SiteModules.h"
#include "operations/register/CodeLabels.h"
#include "operations/register/Conversion.h"
#include "operations/register/Register.h"
#include "platform/db/ConnectionSource.h"
#include "platform/files/FileSystem.h"

/// Makes rows of the register from member functions. A row names what C++ doesn't know (the given names, the
/// defaults, the effect, what it does, its codes, the right); types come from the function itself, and a row
/// with the wrong number of arguments, or of another class than its list, doesn't compile. Only for the
/// sources that hold rows; docs/adding.md tells how to write one.
namespace torvex::operations {

// ---- Rights ----

inline Right nobody() {
    return {Right::Kind::Nobody};
}
inline Right visitor() {
    return {Right::Kind::Visitor};
}
inline Right anyLogin() {
    return {Right::Kind::AnyLogin};
}
/// To do `action` to the page, or to all pages of the list, that the argument `page` names.
inline Right editRight(std::string action, std::string page) {
    return {Right::Kind::EditRight, std::move(action), 0, std::move(page)};
}
/// To do it to the pages of both arguments.
inline Right editRight(std::string action, std::string page, std::string otherPage) {
    return {Right::Kind::EditRight, std::move(action), 0, std::move(page), std::move(otherPage)};
}
/// The same where a page is given; without one, to do it in the whole tree of the site and language.
inline Right editRight(std::string action, std::string page, std::string site, std::string lang) {
    return {Right::Kind::EditRight, std::move(action), 0, std::move(page), {},
            std::move(site),        std::move(lang)};
}
/// To do `action` somewhere in the site and language that the arguments name.
inline Right editRightIn(std::string action, std::string site, std::string lang) {
    return {Right::Kind::EditRight, std::move(action), 0, {}, {}, std::move(site), std::move(lang)};
}
inline Right viewAccess(int advId, std::string site = {}, std::string lang = {}) {
    return {Right::Kind::AdvancedRight, "view", advId, {}, {}, std::move(site), std::move(lang)};
}
/// In the site and language of the page that the argument names.
inline Right viewAccessAt(int advId, std::string page) {
    return {Right::Kind::AdvancedRight, "view", advId, std::move(page)};
}
inline Right editAccess(int advId, std::string site = {}, std::string lang = {}) {
    return {Right::Kind::AdvancedRight, "edit", advId, {}, {}, std::move(site), std::move(lang)};
}
/// In the site and language of the forum whose number the argument names; where that is 0, in those that the
/// other two name.
inline Right accessAtForum(std::string access, std::string forum, std::string site = {},
                           std::string lang = {}) {
    return {.kind = Right::Kind::AdvancedRight,
            .detail = std::move(access),
            .advId = adminEntry::forum,
            .site = std::move(site),
            .lang = std::move(lang),
            .forum = std::move(forum)};
}
/// The entry of images or that of documents, by the kind of media that the argument `media` names.
inline Right mediaAccess(std::string access, std::string media, std::string site) {
    return {.kind = Right::Kind::AdvancedRight,
            .detail = std::move(access),
            .advId = adminEntry::images,
            .site = std::move(site),
            .media = std::move(media)};
}
/// The number in the argument `login` is the caller's own, or she has edit access to the entry.
inline Right oneselfOrEditAccess(std::string login, int advId) {
    return {Right::Kind::OneselfOrAdvancedRight, "edit", advId, {}, {}, {}, {}, std::move(login)};
}
inline Right onlySa() {
    return {Right::Kind::OnlySa};
}
/// The edit right, or view access to the entry for the whole installation.
inline Right orViewAccess(Right editRight, int advId) {
    editRight.orAccess = "view";
    editRight.advId = advId;
    return editRight;
}
/// The right, and to read the design of the page that the argument `page` names; where there is an argument
/// for the mode, in mode "D" only.
inline Right alsoReadingDesign(Right right, std::string page, std::string mode = {}) {
    right.design = Right::Design{.page = std::move(page), .mode = std::move(mode)};
    return right;
}
inline Right designOf(std::string page, std::string mode = {}) {
    return alsoReadingDesign(anyLogin(), std::move(page), std::move(mode));
}
/// In the site and language that the arguments name, and where the page is if one is given.
inline Right designIn(std::string site, std::string lang, std::string mode = {}, std::string page = {}) {
    Right right = designOf(std::move(page), std::move(mode));
    right.design->site = std::move(site);
    right.design->lang = std::move(lang);
    return right;
}
inline Right designOfRecord(std::string mode) {
    Right right = designOf({}, std::move(mode));
    right.design->isOfRecord = true;
    return right;
}
inline Right designOfAllTrees(std::string mode) {
    Right right = designOf({}, std::move(mode));
    right.design->isOfAllTrees = true;
    return right;
}

// ---- Arguments ----

/// An argument as a row names it. Has no default constructor, so that a row can't leave one out.
struct NamedArgument {
    explicit NamedArgument(std::string given, std::optional<Value> value = std::nullopt)
        : name(std::move(given)), defaultValue(std::move(value)) {}

    std::string name;
    std::optional<Value> defaultValue;
    bool withheld = false;
};

inline NamedArgument argument(std::string name) {
    return NamedArgument(std::move(name));
}
inline NamedArgument argument(std::string name, Value defaultValue) {
    return NamedArgument(std::move(name), std::move(defaultValue));
}

/// The argument, out of reach of the network: callers from outside get its default.
inline NamedArgument withheld(NamedArgument made) {
    made.withheld = true;
    return made;
}

// ---- Types ----

template <typename T>
constexpr ArgumentType typeOf() {
    using Plain = std::remove_cvref_t<T>;
    if constexpr (std::is_same_v<Plain, bool>) {
        return ArgumentType::Boolean;
    } else if constexpr (std::is_same_v<Plain, int>) {
        return ArgumentType::Integer;
    } else if constexpr (std::is_same_v<Plain, double>) {
        return ArgumentType::Number;
    } else if constexpr (std::is_same_v<Plain, DateTime>) {
        return ArgumentType::Date;
    } else if constexpr (std::is_same_v<Plain, TextFormat>) {
        return ArgumentType::TextFormat;
    } else {
        static_assert(std::is_convertible_v<const std::string&, Plain>, "no argument type for this");
        return ArgumentType::Text;
    }
}

template <typename T>
std::string resultName() {
    if constexpr (std::is_void_v<T>) {
        return "empty";
    } else if constexpr (std::is_same_v<T, Value>) {
        return "value";
    } else {
        return std::string(typeName(typeOf<T>()));
    }
}

/// A converted value as the C++ parameter. Texts are viewed in place.
template <typename T>
decltype(auto) unwrap(const Value& value) {
    using Plain = std::remove_cvref_t<T>;
    if constexpr (std::is_same_v<Plain, bool>) {
        return value.boolean();
    } else if constexpr (std::is_same_v<Plain, int> || std::is_same_v<Plain, TextFormat>) {
        return static_cast<Plain>(static_cast<int>(value.number()));
    } else if constexpr (std::is_same_v<Plain, double>) {
        return value.number();
    } else if constexpr (std::is_same_v<Plain, DateTime>) {
        return value.date();
    } else {
        return value.text();
    }
}

template <typename R, typename F>
Value wrap(F&& run) {
    if constexpr (std::is_void_v<R>) {
        run();
        return {};
    } else {
        return Value(run());
    }
}

// ---- Columns and codes ----

using enum ColumnType;

/// An answer that isn't a refusal, where it says more than it is.
inline StatusCode code(Value value, std::string meaning) {
    return {std::move(value), std::move(meaning), false};
}
/// The caller didn't get what she asked for.
inline StatusCode refusal(Value value, std::string meaning, CodeLabel label = label::refused) {
    return {std::move(value), std::move(meaning), true, label};
}
inline StatusCode notLoggedIn() {
    return refusal(-10, "Nobody is logged in.", label::loginLost);
}
inline StatusCode failed() {
    return refusal(-99, "It failed; nothing was changed.", label::failed);
}

// ---- Rows ----

/// What a pointer to a member function says.
template <typename Method>
struct Signature;

template <typename C, typename R, typename... A>
struct Signature<R (C::*)(A...)> {
    using Class = C;
    using Result = R;
    using Names = std::array<NamedArgument, sizeof...(A)>;
    static constexpr std::array<ArgumentType, sizeof...(A)> types{typeOf<A>()...};

    /// One instantiation for each signature, not for each function.
    template <typename Method>
    static Value invoke(Method method, void* object, const std::vector<Value>& values) {
        const auto run = [&]<std::size_t... I>(std::index_sequence<I...>) {
            return wrap<R>(
                [&]() -> R { return (static_cast<C*>(object)->*method)(unwrap<A>(values[I])...); });
        };
        return run(std::index_sequence_for<A...>());
    }
};

template <typename C, typename R, typename... A>
struct Signature<R (C::*)(A...) const> : Signature<R (C::*)(A...)> {};

/// For `Row::codes`.
void setCodes(Operation& operation, std::vector<StatusCode> codes);

/// A row of the class `C`, and of no other.
template <typename C>
struct Row {
    Operation operation;

    /// Says what the columns of the grid are that the operation gives, in order.
    Row lists(std::vector<Column> columns) && {
        operation.result = "grid";
        operation.columns = std::move(columns);
        return std::move(*this);
    }
    /// Names every code that the operation answers. A number may stand for a text that reads so.
    Row codes(std::vector<StatusCode> codes) && {
        setCodes(operation, std::move(codes));
        return std::move(*this);
    }
    Row testsPassword(PasswordTest test) && {
        operation.passwordTest = std::move(test);
        return std::move(*this);
    }
};

template <typename Method>
Row<typename Signature<Method>::Class> row(Effect effect, std::string name, Method method,
                                           typename Signature<Method>::Names named, std::string summary,
                                           Right right) {
    using Shape = Signature<Method>;
    Operation made{std::move(name),    effect,          {}, resultName<typename Shape::Result>(),
                   std::move(summary), std::move(right)};
    for (std::size_t i = 0; i < named.size(); ++i) {
        made.arguments.push_back(
            {std::move(named[i].name), Shape::types[i], std::move(named[i].defaultValue), named[i].withheld});
    }
    made.invoke = [method](void* object, const std::vector<Value>& values) {
        return Shape::invoke(method, object, values);
    };
    return {std::move(made)};
}

/// An operation that leaves nothing behind (see `Effect`).
template <typename Method>
auto reads(std::string name, Method method, typename Signature<Method>::Names named, std::string summary,
           Right right) {
    return row(Effect::Reads, std::move(name), method, std::move(named), std::move(summary),
               std::move(right));
}

/// One that notes where the caller works.
template <typename Method>
auto enters(std::string name, Method method, typename Signature<Method>::Names named, std::string summary,
            Right right) {
    return row(Effect::Enters, std::move(name), method, std::move(named), std::move(summary),
               std::move(right));
}

/// One that changes anything else.
template <typename Method>
auto writes(std::string name, Method method, typename Signature<Method>::Names named, std::string summary,
            Right right) {
    return row(Effect::Writes, std::move(name), method, std::move(named), std::move(summary),
               std::move(right));
}

/// The rows of several subjects as one list.
template <typename R>
std::vector<R> joined(std::initializer_list<std::vector<R>> lists) {
    std::vector<R> all;
    for (const auto& list : lists) all.insert(all.end(), list.begin(), list.end());
    return all;
}

// ---- Properties ----

/// A property of the class `C`, and of no other.
template <typename C>
struct PropertyRow {
    Property property;
};

/// A read-only property.
template <typename C, typename R>
PropertyRow<C> property(std::string name, R (C::*getter)() const, std::string summary) {
    const auto get = [getter](const void* object) {
        return Value((static_cast<const C*>(object)->*getter)());
    };
    return {{std::move(name), typeOf<R>(), std::move(summary), anyLogin(), get, {}}};
}

/// A property that can be set as well.
template <typename C, typename R, typename A>
PropertyRow<C> property(std::string name, R (C::*getter)() const, void (C::*setter)(A), std::string summary) {
    auto made = property(std::move(name), getter, std::move(summary));
    made.property.set = [setter](void* object, const Value& value) {
        (static_cast<C*>(object)->*setter)(unwrap<A>(value));
    };
    return made;
}

/// The property, out of reach of the network.
template <typename C>
PropertyRow<C> secret(PropertyRow<C> made) {
    made.property.right = nobody();
    return made;
}

/// The properties of a base class as those of the class `C`. Where the base lies in an object is the compiler's to know.
template <typename C, typename B>
requires std::derived_from<C, B> std::vector<PropertyRow<C>> inherited(std::vector<PropertyRow<B>> rows) {
    std::vector<PropertyRow<C>> ours;
    for (auto& [property] : rows) {
        property.get = [get = std::move(property.get)](const void* object) {
            return get(static_cast<const B*>(static_cast<const C*>(object)));
        };
        if (property.set) {
            property.set = [set = std::move(property.set)](void* object, const Value& value) {
                set(static_cast<B*>(static_cast<C*>(object)), value);
            };
        }
        ours.push_back({std::move(property)});
    }
    return ours;
}

// ---- Classes ----

/// The row that every class with a connection has.
template <typename C>
Operation connectRow() {
    Operation connect{"connect",
                      Effect::Reads,
                      {{"conn", ArgumentType::Text, std::nullopt, false}},
                      "empty",
                      "Sets the database that the object works on, by its connection text.",
                      nobody()};
    connect.invoke = [](void* object, const std::vector<Value>& values) {
        static_cast<C*>(object)->connect(db::ConnectionSource(values[0].text()));
        return Value();
    };
    return connect;
}

/// An object of the class `C`; one that assembles pages gets the modules that stand in them.
template <typename C>
std::shared_ptr<void> create(HostContext& host) {
    if constexpr (std::is_constructible_v<C, HostContext&, PageModules*>) {
        struct WithModules {
            explicit WithModules(HostContext& host) : object(host, &modules) {}
            SiteModules modules;
            C object;
        };
        const auto whole = std::make_shared<WithModules>(host);
        return {whole, &whole->object};
    } else {
        return std::make_shared<C>(host);
    }
}

/// The entry of the class `C`, of its own rows alone. One that takes a connection gets the operation
/// `connect` besides.
template <typename C>
ClassEntry describe(std::string name, std::string summary, std::vector<Row<C>> rows,
                    std::vector<PropertyRow<C>> properties = {}) {
    ClassEntry entry{std::move(name), std::move(summary), {}, {}, {}, {}};
    entry.create = create<C>;
    if constexpr (requires(C & object, db::ConnectionSource link) { object.connect(link); }) {
        entry.connect = [](void* object, const db::ConnectionSource& link) {
            static_cast<C*>(object)->connect(link);
        };
        entry.operations.push_back(connectRow<C>());
    }
    for (auto& row : rows) entry.operations.push_back(std::move(row.operation));
    for (auto& row : properties) entry.properties.push_back(std::move(row.property));
    return entry;
}

}  // namespace torvex::operations
