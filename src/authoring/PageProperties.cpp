#include "authoring/PageProperties.h"

#include <string>

#include "authoring/HeldNumber.h"
#include "platform/Errors.h"
#include "platform/ShortInteger.h"
#include "platform/text/Text.h"

namespace torvex {

namespace {

[[noreturn]] void refuse(std::string_view name, const std::string& given) {
    throw Error(std::string(name) + " must be a whole number from -32768 to 32767, not " + given);
}

int heldText(std::string_view name, const std::string& given) {
    constexpr std::size_t shownCharacters = 40;
    if (!text::isNumeric(given)) refuse(name, "\"" + std::string(text::first(given, shownCharacters)) + "\"");
    return heldNumber(name, text::toNumber(given));
}

}  // namespace

int heldNumber(std::string_view name, double number) {
    const auto held = shortInteger(number);
    if (!held) refuse(name, text::fromNumber(number));
    return *held;
}

void PageProperties::setPgOrderId(double value) {
    page_.orderId = heldNumber("pgOrderId", value);
}

void PageProperties::setPgBreadcrumb(const std::string& value) {
    page_.breadcrumb = heldText("pgBreadcrumb", value);
}

void PageProperties::setPgDynMenu(const std::string& value) {
    page_.dynMenu = heldText("pgDynMenu", value);
}

}  // namespace torvex
