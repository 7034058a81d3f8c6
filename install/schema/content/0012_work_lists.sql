-- Lists of what waits for authors: few pages out of very many.
create index idx_torvex_pages_design_editstatus_nodeid on TORVEX_PAGES_DESIGN (editStatus, nodeId);
create index idx_torvex_pages_design_deletestatus_nodeid on TORVEX_PAGES_DESIGN (deleteStatus, nodeId);
create index idx_torvex_pages_design_approvestatus_nodeid on TORVEX_PAGES_DESIGN (approveStatus, nodeId);
create index idx_torvex_pages_design_editor_editstatus on TORVEX_PAGES_DESIGN (editor, editStatus);
create index idx_torvex_pages_design_lockedby on TORVEX_PAGES_DESIGN (lockedBy);
create index idx_torvex_pages_design_editingdate_pageid on TORVEX_PAGES_DESIGN (editingDate, pageId);
create index idx_torvex_pages_live_onlinefrom on TORVEX_PAGES_LIVE (onlineFrom);
create index idx_torvex_pages_live_onlineto on TORVEX_PAGES_LIVE (onlineTo);
