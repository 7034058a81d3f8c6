#include "operations/register/Register.h"

#include <algorithm>

#include "operations/register/Classes.h"
#include "platform/Errors.h"
#include "platform/text/Text.h"

namespace torvex::operations {

namespace {

template <typename Row>
const Row* findByName(const std::vector<Row>& rows, std::string_view name) {
    const auto found = std::find_if(rows.begin(), rows.end(),
                                    [name](const Row& row) { return text::equals(row.name, name); });
    return found == rows.end() ? nullptr : &*found;
}

}  // namespace

std::string_view typeName(ColumnType type) {
    switch (type) {
        case ColumnType::Text:
            return "text";
        case ColumnType::Number:
            return "number";
        case ColumnType::Boolean:
            return "boolean";
        case ColumnType::Date:
            return "date";
    }
    return "";
}

std::string_view effectName(Effect effect) {
    switch (effect) {
        case Effect::Reads:
            return "reads";
        case Effect::Enters:
            return "enters";
        case Effect::Writes:
            return "writes";
    }
    return "";
}

const Operation* ClassEntry::findOperation(std::string_view wanted) const {
    return findByName(operations, wanted);
}

const Property* ClassEntry::findProperty(std::string_view wanted) const {
    return findByName(properties, wanted);
}

bool Operation::isFilledByGate(const Argument& argument) const {
    return right.advId != 0 && effect == Effect::Writes && text::equals(argument.name, "advId");
}

const ClassEntry* Register::findClass(std::string_view name) const {
    return findByName(classes_, name);
}

const ClassEntry& Register::find(std::string_view name) const {
    if (const auto* entry = findClass(name)) return *entry;
    std::string known;
    for (const auto& entry : classes_) known += (known.empty() ? "" : ", ") + entry.name;
    throw Error("there is no class \"" + std::string(name) + "\"; the classes are " + known);
}

Register makeRegister() {
    return Register({serverOperations(), managerOperations(), htmlTemplateOperations(), templateOperations(),
                     baseTemplateOperations(), styleSheetOperations(), applicationOperations(),
                     setupOperations(), searchOperations(), imageOperations(), msgBoardOperations(),
                     newsflashOperations(), dynamicMenuOperations(), forumOperations(), deskOperations(),
                     registersOperations()});
}

}  // namespace torvex::operations
