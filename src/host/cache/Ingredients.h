#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/files/FileStamp.h"
#include "platform/Request.h"
#include "platform/Value.h"
#include "platform/db/TableStates.h"

namespace torvex {

class ApplicationValues;

/// What an answer was made of: as long as all of it stands, the answer made anew would be the same. Plain data, made by
/// `Recording`.
struct Ingredients {
    /// What the request was asked. Another request that gives the same to each has the same answer.
    RequestQuestions questions;
    std::vector<std::pair<std::string, Value>> application;
    /// And folders; without a stamp those that weren't there.
    std::vector<std::pair<std::string, std::optional<FileStamp>>> files;
    std::string day;                                ///< yyyymmdd; "" when nobody asked for it
    std::vector<std::function<bool()>> conditions;  ///< all true
    db::TableSet tables;
    db::SharedStates states;  ///< of these tables; null when none was read

    bool holdsInApplication(const ApplicationValues& values) const;
    bool holdsInFiles() const;
    bool holdsByConditions() const;
    bool holdsOn(std::string_view today) const;
    /// Null agrees with nothing but an answer that no table was read for.
    bool holdsInContent(const db::SharedStates& now) const;
};

}  // namespace torvex
