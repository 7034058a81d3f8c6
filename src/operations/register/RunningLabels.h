#pragma once

#include "operations/register/Register.h"

/// What refusals say to people: see install/rows/08_words_running.sql.
namespace torvex::operations::label {

inline constexpr CodeLabel wrongOldPassword{6600, "wrong-password"};
inline constexpr CodeLabel newPasswordMissing{6601, "password-missing"};
inline constexpr CodeLabel newPasswordCommon{5890, "password-common"};  // 08_words_passwords.sql
inline constexpr CodeLabel interfaceCodeBad{6602, "no-such-code"};
inline constexpr CodeLabel interfaceCodeTaken{6603, "code-taken"};
inline constexpr CodeLabel interfaceNameMissing{6604, "name-missing"};
inline constexpr CodeLabel interfaceNameTaken{6605, "name-taken"};
inline constexpr CodeLabel interfaceGone{6606, "gone"};
inline constexpr CodeLabel wordsUnread{6607, "unreadable"};
inline constexpr CodeLabel noSuchWord{6608, "no-such-word"};
inline constexpr CodeLabel serverGone{6609, "gone"};
inline constexpr CodeLabel serverNameTaken{6610, "name-taken"};
inline constexpr CodeLabel serverNameBad{6611, "name-missing"};
inline constexpr CodeLabel groupGone{6612, "gone"};
inline constexpr CodeLabel groupNameTaken{6613, "name-taken"};
inline constexpr CodeLabel groupNameMissing{6614, "name-missing"};
inline constexpr CodeLabel userGone{6615, "gone"};
inline constexpr CodeLabel usernameTaken{6616, "name-taken"};
inline constexpr CodeLabel userOrGroupGone{6617, "gone"};

}  // namespace torvex::operations::label
