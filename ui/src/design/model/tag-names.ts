/** Every tag and block that the server fills in templates. A test compares it with what the server's sources ask for. No DOM. */

import { L, type Label } from "../../labels";

export interface TagName {
  readonly name: string;
  readonly form: "tag" | "block" | "both";
  readonly help: Label;
  /** The kind of template that has it; of what stands in both, in another form, the form. */
  readonly only?: "base" | "content";
  /** Numbered ones stand beside one without a number, or a number has to be there. */
  readonly number?: "may" | "must";
  /** What stands before the number. */
  readonly joint?: "_" | "";
}

type Rest = Pick<TagName, "only" | "number" | "joint">;

const some = (form: TagName["form"], help: Label, names: string, rest: Rest = {}): TagName[] =>
  names.split(" ").map((name) => ({ name, form, help, ...rest }));
const tags = (help: Label, names: string, rest?: Rest) => some("tag", help, names, rest);
const blocks = (help: Label, names: string, rest?: Rest) => some("block", help, names, rest);
const both = (help: Label, names: string, rest?: Rest) => some("both", help, names, rest);

const base = { only: "base" } as const;
const content = { only: "content" } as const;
const days = (names: string) =>
  names
    .split(" ")
    .flatMap((name) => ["day", "month", "year", "iso"].map((part) => `${name}_${part}`))
    .join(" ");

/** Of any page. */
const ofPages: readonly TagName[] = [
  ...both(L.tagBody, "torvex_body", { number: "must" }),
  ...tags(L.tagHead, "torvex_head", base),
  ...tags(L.tagBodyTag, "torvex_bodyTag", base),
  ...tags(L.tagContent, "torvex_content", { ...base, number: "may" }),
  ...blocks(L.tagContent, "torvex_content", { ...content, number: "may" }),
  ...blocks(L.tagHead, "torvex_head", content),
  ...blocks(L.tagBodyTag, "torvex_bodyTag", content),
  ...tags(L.tagDynMenu, "torvex_dynMenu"),
  ...tags(L.tagNewsflash, "torvex_newsflash", { number: "must" }),
  ...blocks(L.tagNavigation, "torvex_navigation"),
  ...both(L.tagNeighbour, "torvex_previous torvex_next torvex_up"),
  ...tags(L.tagBreadcrumb, "torvex_breadcrumb"),
  ...tags(L.tagLoginURL, "torvex_loginURL"),
  ...blocks(L.tagLoggedIn, "torvex_userLoggedIn"),
  ...blocks(L.tagNotLoggedIn, "torvex_noUserLoggedIn"),
  ...blocks(L.tagLoginError, "torvex_loginError"),
  ...tags(L.tagSecondFactor, "torvex_secondFactor"),
  ...tags(L.tagSearchURL, "search_URL"),
  ...blocks(L.tagAdmin, "torvex_admin", content),
  ...blocks(L.tagPublic, "torvex_public", content),
  ...blocks(L.tagAppFrame, "torvex_appFrame", { ...content, number: "may" }),
  ...blocks(L.tagBrowser, "IE NS"),
  ...blocks(L.tagApplication, "torvex_application"),
  ...blocks(L.tagBoardPart, "torvex_application_1 torvex_application_2 torvex_application_3"),
];

const ofNewsflashes: readonly TagName[] = [
  ...blocks(L.tagEach, "nfItem", content),
  ...blocks(L.tagNothing, "nfEmpty", content),
  ...blocks(L.tagItemLayout, "nfDefault nfNoImage nfImageLeft nfImageRight nfImageTop nfImageBottom", content),
  ...blocks(L.tagSpacer, "nfSpacer", content),
  ...tags(L.tagItemImage, "nfImage nfImageColWidth nfImageWidth nfImageHeight", content),
  ...both(L.tagItemTitle, "nfTitle", content),
  ...tags(L.tagItemText, "nfText", content),
  ...tags(L.tagItemDate, "nfDD nfMM nfMMM nfYY nfYYYY", content),
  ...tags(L.tagItemLink, "nfLink", content),
  ...blocks(L.tagItemLink, "nfTitleLink", content),
  ...both(L.tagItemMore, "nfMore", content),
];

const ofMenus: readonly TagName[] = [
  ...blocks(L.tagMenu, "dynMenu", content),
  ...blocks(L.tagNothing, "dynMenu_empty", content),
  ...blocks(L.tagMenuLevel, "dynMenu_levels", content),
  ...blocks(L.tagMenuLevel, "dynMenu_level", { ...content, number: "may", joint: "" }),
  ...blocks(L.tagMenuActive, "dynMenu_itemOn dynMenu_itemOff", content),
  ...blocks(L.tagSpacer, "dynMenu_spacer", content),
  ...tags(
    L.tagMenuItem,
    "dynMenu_Id dynMenu_pageId dynMenu_pageTitle UCase(dynMenu_pageTitle) LCase(dynMenu_pageTitle)",
    content,
  ),
  ...tags(L.tagMenuIndent, "space spacer", content),
];

const ofBoards: readonly TagName[] = [
  ...tags(L.tagCategory, "msgB_breadcrumb msgB_catId msgB_catTitle msgB_categoryURL"),
  ...blocks(L.tagEach, "msgB_category msgB_item"),
  ...blocks(L.tagNothing, "msgB_empty"),
  ...blocks(L.tagItemLayout, "msgB_default msgB_noImage msgB_imageLeft msgB_imageRight msgB_imageTop msgB_imageBottom"),
  ...blocks(L.tagSpacer, "msgB_spacer msgB_pSpacer"),
  ...tags(L.tagItemImage, "msgB_image msgB_imageColWidth msgB_imageWidth msgB_imageHeight"),
  ...both(L.tagItemTitle, "msgB_itemTitle"),
  ...tags(L.tagItemText, "msgB_itemText"),
  ...tags(L.tagItemDate, "msgB_DD msgB_MM msgB_MMM msgB_YY msgB_YYYY"),
  ...both(L.tagItemLink, "msgB_itemLink"),
  ...both(L.tagItemMore, "msgB_more"),
  ...both(L.tagPaging, "msgB_paging"),
  ...blocks(L.tagPaging, "msgB_pPrevious msgB_pDots msgB_pActive msgB_pLink msgB_pNext"),
  ...tags(L.tagPageNumber, "msgB_pageId msgB_pageURL"),
  ...tags(L.tagRange, "msgB_firstItem msgB_lastItem"),
  ...both(L.tagRange, "msgB_totalItems"),
  ...blocks(L.tagArchive, "msgB_gotoArchive msgB_gotoRecent"),
  ...tags(L.tagArchive, "msgB_archiveURL msgB_recentURL"),
];

const ofSearches: readonly TagName[] = [
  ...blocks(L.tagEach, "search_result"),
  ...blocks(L.tagNothing, "search_empty"),
  ...blocks(L.tagSpacer, "search_spacer search_pSpacer"),
  ...blocks(
    L.tagSearchState,
    "search_asked search_notAsked search_answered search_noWords search_tooMany search_failed",
  ),
  ...tags(L.tagSearchWords, "search_string search_stringURL search_pageId search_suggestionURL"),
  ...both(L.tagSearchWords, "search_suggestion"),
  ...blocks(L.tagRange, "search_resultRange"),
  ...tags(L.tagRange, "search_resultFrom search_resultTo"),
  ...blocks(L.tagPaging, "search_paging search_pPrevious search_pNext"),
  ...tags(L.tagPageNumber, "search_previousPage search_nextPage"),
  ...tags(L.tagResult, "search_link search_filesizeKB search_filesizeMB"),
  ...both(
    L.tagResult,
    "search_title search_keywords search_author search_subject search_comments search_company search_abstract search_filename search_filetype search_filesize",
  ),
  ...blocks(
    L.tagResultWithout,
    "search_noTitle search_noKeywords search_noAuthor search_noSubject search_noComments search_noCompany search_noAbstract search_noFilename",
  ),
  ...tags(L.tagResultMarked, "search_titleMarked search_abstractMarked"),
  ...tags(L.tagRanking, "search_ranking search_ranking5 search_ranking10"),
  ...both(L.tagRanking, "search_rankingGraph"),
];

const ofForums: readonly TagName[] = [
  ...blocks(L.tagEach, "forum_row topic_row reaction_row form_fault"),
  ...blocks(L.tagNothing, "forum_none topic_none reaction_none"),
  ...tags(L.tagForum, "forum_name forum_desc forum_URL forum_homeURL forum_newTopicURL forum_topics forum_tree"),
  ...tags(L.tagForum, "topic_title topic_text topic_author topic_URL topic_reactURL topic_reactions"),
  ...tags(L.tagForum, "reaction_id reaction_title reaction_text reaction_author reaction_URL reaction_reactURL"),
  ...tags(L.tagForum, "answered_title answered_text answered_author"),
  ...tags(L.tagForum, days("forum_last topic topic_last reaction")),
  ...blocks(L.tagForumCase, "forum_moderated forum_posted forum_waiting forum_gone forum_active forum_new"),
  ...blocks(L.tagForumCase, "topic_hasAuthor topic_new answered_hasAuthor"),
  ...blocks(
    L.tagForumCase,
    "reaction_hasAuthor reaction_hasText reaction_withoutText reaction_new reaction_shown form_newTopic form_newReaction form_faults",
  ),
  ...blocks(L.tagForumCase, "form_askAuthor form_authorMust form_authorMay form_askEmail form_emailMust form_emailMay"),
  ...blocks(L.tagPaging, "forum_paging forum_previous forum_next"),
  ...tags(L.tagPageNumber, "forum_page forum_pages forum_previousURL forum_nextURL"),
  ...blocks(L.tagArchive, "forum_archive forum_current"),
  ...tags(L.tagArchive, "forum_archiveURL forum_currentURL"),
  ...tags(L.tagForumForm, "form_action form_backURL form_token form_title form_text form_author form_email"),
  ...tags(L.tagForumForm, "form_titleState form_textState form_authorState form_emailState fault_text fault_field"),
];

export const TAG_NAMES: readonly TagName[] = [
  ...ofPages,
  ...ofNewsflashes,
  ...ofMenus,
  ...ofBoards,
  ...ofSearches,
  ...ofForums,
];
