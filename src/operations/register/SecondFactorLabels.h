#pragma once

#include "operations/register/Register.h"

/// What refusals say about second factors: install/rows/08_words_second_factor.sql.
namespace torvex::operations::label {

inline constexpr CodeLabel codeNeeded{5831, "code-needed"};
inline constexpr CodeLabel codeWrong{5832, "wrong-code"};
inline constexpr CodeLabel proveAgain{5833, "prove-again"};
inline constexpr CodeLabel hasFactor{5834, "has-second-factor"};
inline constexpr CodeLabel hasNoFactor{5835, "no-second-factor"};
inline constexpr CodeLabel factorDemanded{5836, "second-factor-demanded"};
inline constexpr CodeLabel notBegun{5837, "not-begun"};
inline constexpr CodeLabel proofWrong{5838, "wrong-proof"};
inline constexpr CodeLabel factorOfSa{5839, "sa-stays"};

}  // namespace torvex::operations::label
