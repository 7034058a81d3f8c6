#include "desk/RecordFields.h"

#include "platform/text/Text.h"

namespace torvex {

std::string recordText(std::string_view given, std::size_t longest) {
    return std::string(text::first(text::trim(given), longest));
}

std::string recordName(std::string_view given) {
    return recordText(given, longestRecordName);
}

std::string recordDescription(std::string_view given) {
    return recordText(given, longestRecordDescription);
}

}  // namespace torvex
