#include "search/catalogue/Renewal.h"

#include <array>
#include <utility>

#include "platform/ApplicationWriting.h"
#include "platform/text/Text.h"

namespace torvex::catalogue {

namespace {

constexpr std::string_view askedKey = "tvx_catalogue_task";
constexpr std::string_view progressKey = "tvx_catalogue_progress";

constexpr std::array<std::pair<Task, std::string_view>, 4> taskNames{
    {{Task::None, ""}, {Task::Compare, "compare"}, {Task::Anew, "anew"}, {Task::Stop, "stop"}}};

enum Column : std::size_t { taskColumn, totalColumn, doneColumn, comparedColumn, failureColumn, columns };

std::size_t countOf(const Value& value) {
    return static_cast<std::size_t>(value.toNumber());
}

}  // namespace

std::string_view taskName(Task task) {
    for (const auto& [known, name] : taskNames)
        if (known == task) return name;
    return {};
}

std::optional<Task> taskOf(std::string_view name) {
    for (const auto& [task, known] : taskNames)
        if (!known.empty() && text::equals(name, known)) return task;
    return std::nullopt;
}

bool Renewal::ask(Task task) {
    const ApplicationWriting writing(application_);
    if (!application_.get(progressKey).isGrid()) return false;
    application_.set(askedKey, taskName(task));
    return true;
}

Task Renewal::asked() const {
    return taskOf(application_.text(askedKey)).value_or(Task::None);
}

std::optional<Progress> Renewal::progress() const {
    const Value told = application_.get(progressKey);
    if (!told.isGrid()) return std::nullopt;
    const ResultGrid& grid = told.grid();
    Progress progress{.task = taskOf(grid.at(taskColumn, 0).toText()).value_or(Task::None),
                      .total = countOf(grid.at(totalColumn, 0)),
                      .done = countOf(grid.at(doneColumn, 0)),
                      .failure = grid.at(failureColumn, 0).toText()};
    if (const Value& compared = grid.at(comparedColumn, 0); compared.isDate())
        progress.compared = compared.date();
    return progress;
}

void Renewal::tell(const Progress& progress) {
    auto grid = std::make_shared<ResultGrid>(columns);
    grid->add({taskName(progress.task), static_cast<double>(progress.total),
               static_cast<double>(progress.done), progress.compared ? Value(*progress.compared) : Value(),
               progress.failure});
    application_.set(progressKey, Value(Value::Grid(std::move(grid))));
}

void Renewal::take(Task task) {
    const ApplicationWriting writing(application_);
    if (asked() == task) application_.set(askedKey, Value());
}

void Renewal::end() {
    const ApplicationWriting writing(application_);
    application_.set(askedKey, Value());
    application_.set(progressKey, Value());
}

}  // namespace torvex::catalogue
