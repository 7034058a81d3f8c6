#include "modules/shared/MonthNames.h"

#include <vector>

#include "platform/Errors.h"
#include "platform/text/Text.h"
#include "records/Labels.h"
#include "records/Vocabulary.h"

namespace torvex {

namespace {

constexpr int monthsOfYear = 12;

std::vector<double> monthLabels() {
    std::vector<double> labels;
    for (int month = 1; month <= monthsOfYear; ++month) labels.push_back(label::beforeMonths + month);
    return labels;
}

}  // namespace

std::string MonthNames::of(std::string_view month) {
    const double number = text::toNumber(month);
    if (names_.empty())
        names_ = asLevel("getVocab !", [&] { return vocabularyTexts(connection_, lang_, monthLabels()); });
    const auto found = names_.find(label::beforeMonths + number);
    return found == names_.end() ? std::string() : found->second;
}

}  // namespace torvex
