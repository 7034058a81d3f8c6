#pragma once

#include "operations/register/Register.h"

/// What refusals say to people: labels of the interface's vocabulary (install/rows/08_words_codes.sql), and names
/// for programs. A sentence may have the places {holder}, {since}, {parent} and {address}, which are filled when it
/// is told.
namespace torvex::operations::label {

inline constexpr CodeLabel refused{5008, "refused"};
inline constexpr CodeLabel loginLost{5001, "login-lost"};
inline constexpr CodeLabel failed{5022, "failed"};

// Pages.
inline constexpr CodeLabel lockedByOther{5100, "locked-by-other"};
inline constexpr CodeLabel approved{5101, "approved"};
inline constexpr CodeLabel stillHeld{5102, "locked-by-other"};
inline constexpr CodeLabel nothingToApprove{5103, "nothing-to-approve"};
inline constexpr CodeLabel approvedNotMarked{5104, "approved"};
inline constexpr CodeLabel isApproved{5105, "approved"};
inline constexpr CodeLabel heldTextKept{5106, "locked-by-other"};
inline constexpr CodeLabel approvedTextKept{5107, "approved"};
inline constexpr CodeLabel goneTextKept{5108, "gone"};
inline constexpr CodeLabel held{5109, "locked-by-other"};
inline constexpr CodeLabel pageGone{5110, "gone"};
inline constexpr CodeLabel sourceGone{5111, "source-gone"};
inline constexpr CodeLabel checkedOut{5112, "locked-by-other"};
inline constexpr CodeLabel notApproved{5113, "not-approved"};
inline constexpr CodeLabel gone{5114, "gone"};
inline constexpr CodeLabel parentNotLive{5115, "parent-not-live"};
inline constexpr CodeLabel pageApproved{5116, "approved"};
inline constexpr CodeLabel neverPublished{5117, "never-published"};
inline constexpr CodeLabel parentGone{5118, "parent-gone"};
inline constexpr CodeLabel noPlace{5119, "no-place"};
inline constexpr CodeLabel websiteGone{5120, "website-gone"};
inline constexpr CodeLabel neighbourTitle{5121, "title-taken"};
inline constexpr CodeLabel noSuchKind{5122, "no-such-kind"};
inline constexpr CodeLabel chooseTemplate{5123, "no-such-template"};
inline constexpr CodeLabel chooseApplication{5124, "no-such-application"};
inline constexpr CodeLabel chooseBaseTemplate{5125, "no-such-base-template"};
inline constexpr CodeLabel chooseStylesheet{5126, "no-such-stylesheet"};
inline constexpr CodeLabel noSuchPage{5127, "no-such-page"};
inline constexpr CodeLabel noSuchDate{5128, "no-such-date"};
inline constexpr CodeLabel templateUnread{5129, "template-unread"};
inline constexpr CodeLabel noSystemFolder{5130, "no-system-folder"};
inline constexpr CodeLabel systemBranch{5131, "system-branch"};
inline constexpr CodeLabel systemApart{5132, "system-pages-apart"};
inline constexpr CodeLabel noFreeTitle{5133, "no-free-title"};
inline constexpr CodeLabel somebodyWorks{5134, "somebody-works-there"};
inline constexpr CodeLabel notIntoItself{5135, "not-into-itself"};

// Logins.
inline constexpr CodeLabel loginGone{5140, "gone"};
inline constexpr CodeLabel nameTaken{5141, "name-taken"};
inline constexpr CodeLabel nameMissing{5142, "name-missing"};
inline constexpr CodeLabel passwordMissing{5143, "password-missing"};
inline constexpr CodeLabel fullNameMissing{5144, "full-name-missing"};
inline constexpr CodeLabel saStays{5145, "sa-stays"};
inline constexpr CodeLabel openElsewhere{5146, "open-elsewhere"};
inline constexpr CodeLabel wrongPassword{5147, "wrong-password"};
inline constexpr CodeLabel otherAddress{5148, "address-refused"};
inline constexpr CodeLabel heldElsewhere{5149, "held-elsewhere"};
inline constexpr CodeLabel noProgram{5150, "no-program"};
inline constexpr CodeLabel badLimits{5151, "bad-limits"};

// What authors ask of each other, and drafts (install/rows/08_words_live.sql).
inline constexpr CodeLabel draftTooLong{5400, "draft-too-long"};
inline constexpr CodeLabel draftsFull{5401, "drafts-full"};
inline constexpr CodeLabel nobodyHasIt{5402, "not-held"};
inline constexpr CodeLabel holderAway{5403, "holder-away"};

// Websites and records.
inline constexpr CodeLabel worksInIt{5160, "somebody-works-there"};
inline constexpr CodeLabel hasPages{5161, "has-pages"};
inline constexpr CodeLabel lastOne{5162, "last-one"};
inline constexpr CodeLabel used{5163, "used"};
inline constexpr CodeLabel usedByPages{5164, "used"};
inline constexpr CodeLabel usedByNewsflashes{5165, "used"};
inline constexpr CodeLabel usedByMenus{5166, "used"};
inline constexpr CodeLabel youWorkInIt{5167, "you-work-in-it"};
inline constexpr CodeLabel isDefault{5168, "is-default"};
inline constexpr CodeLabel othersLoggedIn{5169, "others-logged-in"};
inline constexpr CodeLabel generateFirst{5170, "generate-first"};
inline constexpr CodeLabel categoryNotLive{5171, "category-not-live"};
inline constexpr CodeLabel goneOrOpen{5172, "gone-or-open"};

}  // namespace torvex::operations::label
