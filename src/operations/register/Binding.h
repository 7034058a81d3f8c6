#pragma once

#include <array>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "operations/register/Conversion.h"
#include "operations/register/Register.h"
#include "platform/db/ConnectionSource.h"
#include "platform/files/FileSystem.h"

/// Makes rows of the register from member functions. A row names what C++ doesn't know (the given names, the
/// defaults, what it does, the right); types come from the function itself, and a row with the wrong number
/// of arguments doesn't compile. Only for the sources that hold rows.
namespace torvex::operations {

// ---- Rights ----

inline Right nobody() {
    return Right{Right::Kind::Nobody, {}, 0, {}, {}, {}};
}
inline Right visitor() {
    return Right{Right::Kind::Visitor, {}, 0, {}, {}, {}};
}
inline Right anyLogin() {
    return Right{Right::Kind::AnyLogin, {}, 0, {}, {}, {}};
}
/// To do `action` to the page, or to all pages of the list, that the argument `page` names.
inline Right editRight(std::string action, std::string page) {
    return {Right::Kind::EditRight, std::move(action), 0, std::move(page), {}, {}};
}
/// The same where a page is given; without one, to do it in the whole tree of the site and language.
inline Right editRight(std::string action, std::string page, std::string site, std::string lang) {
    return {Right::Kind::EditRight, std::move(action), 0, std::move(page), std::move(site), std::move(lang)};
}
/// To do `action` somewhere in the site and language that the arguments name.
inline Right editRightIn(std::string action, std::string site, std::string lang) {
    return {Right::Kind::EditRight, std::move(action), 0, {}, std::move(site), std::move(lang)};
}
inline Right viewAccess(int advId, std::string site = {}, std::string lang = {}) {
    return {Right::Kind::AdvancedRight, "view", advId, {}, std::move(site), std::move(lang)};
}
inline Right editAccess(int advId, std::string site = {}, std::string lang = {}) {
    return {Right::Kind::AdvancedRight, "edit", advId, {}, std::move(site), std::move(lang)};
}
inline Right onlySa() {
    return Right{Right::Kind::OnlySa, {}, 0, {}, {}, {}};
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

// ---- Rows ----

/// One instantiation for each signature, not for each function.
template <typename C, typename R, typename Method, typename... A>
std::function<Value(void*, const std::vector<Value>&)> invoker(Method method) {
    return [method](void* object, const std::vector<Value>& values) {
        const auto run = [&]<std::size_t... I>(std::index_sequence<I...>) {
            return wrap<R>(
                [&]() -> R { return (static_cast<C*>(object)->*method)(unwrap<A>(values[I])...); });
        };
        return run(std::index_sequence_for<A...>());
    };
}

template <typename R, typename... A>
Operation row(std::string name, std::array<NamedArgument, sizeof...(A)>& named, std::string summary,
              Right right) {
    static constexpr std::array<ArgumentType, sizeof...(A)> types{typeOf<A>()...};
    Operation made{std::move(name), {}, resultName<R>(), std::move(summary), std::move(right), {}, {}};
    for (std::size_t i = 0; i < sizeof...(A); ++i) {
        made.arguments.push_back(
            {std::move(named[i].name), types[i], std::move(named[i].defaultValue), named[i].withheld});
    }
    return made;
}

template <typename C, typename R, typename... A>
Operation operation(std::string name, R (C::*method)(A...), std::array<NamedArgument, sizeof...(A)> named,
                    std::string summary, Right right) {
    auto made = row<R, A...>(std::move(name), named, std::move(summary), std::move(right));
    made.invoke = invoker<C, R, decltype(method), A...>(method);
    return made;
}

template <typename C, typename R, typename... A>
Operation operation(std::string name, R (C::*method)(A...) const,
                    std::array<NamedArgument, sizeof...(A)> named, std::string summary, Right right) {
    auto made = row<R, A...>(std::move(name), named, std::move(summary), std::move(right));
    made.invoke = invoker<C, R, decltype(method), A...>(method);
    return made;
}

/// A read-only property.
template <typename C, typename R>
Property property(std::string name, R (C::*getter)() const, std::string summary) {
    const auto get = [getter](const void* object) {
        return Value((static_cast<const C*>(object)->*getter)());
    };
    return {std::move(name), typeOf<R>(), std::move(summary), anyLogin(), get, {}};
}

/// The property, out of reach of the network.
inline Property secret(Property made) {
    made.right = nobody();
    return made;
}

/// A property that can be set as well.
template <typename C, typename R, typename A>
Property property(std::string name, R (C::*getter)() const, void (C::*setter)(A), std::string summary) {
    auto made = property(std::move(name), getter, std::move(summary));
    made.set = [setter](void* object, const Value& value) {
        (static_cast<C*>(object)->*setter)(unwrap<A>(value));
    };
    return made;
}

// ---- Classes ----

/// The entry of the class `C`. One that takes a connection gets the operation `connect` besides.
template <typename C>
ClassEntry describe(std::string name, std::string summary, std::vector<Operation> operations,
                    std::vector<Property> properties = {}) {
    ClassEntry entry{std::move(name),       std::move(summary),   {}, {},
                     std::move(operations), std::move(properties)};
    entry.create = [](HostContext& host) -> std::shared_ptr<void> { return std::make_shared<C>(host); };
    if constexpr (requires(C & object, db::ConnectionSource link) { object.connect(link); }) {
        entry.connect = [](void* object, const db::ConnectionSource& link) {
            static_cast<C*>(object)->connect(link);
        };
        Operation connect{"connect", {{"conn", ArgumentType::Text, std::nullopt, false}},
                          "empty",   "Sets the database that the object works on, by its connection text.",
                          nobody(),  {},
                          {}};
        connect.invoke = [](void* object, const std::vector<Value>& values) {
            static_cast<C*>(object)->connect(db::ConnectionSource(values[0].text()));
            return Value();
        };
        entry.operations.insert(entry.operations.begin(), std::move(connect));
    }
    return entry;
}

}  // namespace torvex::operations
