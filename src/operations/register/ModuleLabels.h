#pragma once

#include "operations/register/Binding.h"

/// What refusals say of the modules' records: install/rows/08_words_modules.sql.
namespace torvex::operations::label {

inline constexpr CodeLabel recordGone{6400, "gone"};
inline constexpr CodeLabel noSuchWebsiteHere{6401, "no-such-website"};
inline constexpr CodeLabel titleMissing{6402, "title-missing"};
inline constexpr CodeLabel noSuchChoice{6403, "no-such-choice"};
inline constexpr CodeLabel catalogueNotKept{6030, "not-kept"};  // 08_words_rest.sql
inline constexpr CodeLabel noSystemTemplate{6404, "no-such-template"};
inline constexpr CodeLabel noMailAddress{6405, "no-address"};
inline constexpr CodeLabel numberTaken{6406, "number-taken"};
inline constexpr CodeLabel titleTaken{6407, "title-taken"};
inline constexpr CodeLabel contributionGone{6408, "gone"};
inline constexpr CodeLabel noCategoryPlace{6409, "no-place"};
inline constexpr CodeLabel noSuchCategory{6410, "no-such-category"};
inline constexpr CodeLabel noServer{6411, "no-server"};

}  // namespace torvex::operations::label

namespace torvex::operations {

inline StatusCode recordGone() {
    return refusal(-1, "There is no such record in this website.", label::recordGone);
}
inline StatusCode noWebsite() {
    return refusal(-2, "There is no such website.", label::noSuchWebsiteHere);
}
inline StatusCode nameIsMissing() {
    return refusal(-3, "A name or title is missing.", label::titleMissing);
}

}  // namespace torvex::operations
