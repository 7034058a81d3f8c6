#include "modules/shared/MonthNames.h"

#include <vector>

#include "platform/Errors.h"
#include "platform/db/ScopeMemory.h"
#include "platform/text/Text.h"
#include "records/Labels.h"
#include "records/Vocabulary.h"

namespace torvex {

namespace {

constexpr int monthsOfYear = 12;
constexpr std::string_view monthsQuestion = "names of months";

std::vector<double> monthLabels() {
    std::vector<double> labels;
    for (int month = 1; month <= monthsOfYear; ++month) labels.push_back(label::january + month - 1);
    return labels;
}

}  // namespace

std::string MonthNames::of(std::string_view month) {
    const double number = text::toNumber(month);
    if (names_.empty()) read();
    const auto found = names_.find(label::january + number - 1);
    return found == names_.end() ? std::string() : found->second;
}

/// Several lists of a page ask for them.
void MonthNames::read() {
    const std::string lines = db::remembered(connection_, monthsQuestion, lang_, [&] {
        std::string all;
        const auto names =
            asLevel("getVocab !", [&] { return vocabularyTexts(connection_, lang_, monthLabels()); });
        for (const auto& [label, name] : names) all.append(name).append(1, '\n');
        return all;
    });
    std::size_t begin = 0;
    for (const double label : monthLabels()) {
        const std::size_t end = lines.find('\n', begin);
        names_[label] = lines.substr(begin, end - begin);
        begin = end + 1;
    }
}

}  // namespace torvex
