-- A page of a long list is chosen by what the index holds alone: whether an item shows, and its place.

drop index idx_torvex_msgb_items_design_msgb_id_msgb_archivedate;
create index idx_torvex_msgb_items_design_msgb_id_msgb_itemdate on TORVEX_MSGB_ITEMS_DESIGN (msgB_Id, msgB_itemDate, msgB_itemId, msgB_itemOnline, msgB_deleted, msgB_archiveDate, msgB_onlineDate);
create index idx_torvex_msgb_items_design_msgb_id_msgb_itemid on TORVEX_MSGB_ITEMS_DESIGN (msgB_Id, msgB_itemId, msgB_itemOnline, msgB_deleted, msgB_archiveDate, msgB_onlineDate);

drop index idx_torvex_msgb_items_live_msgb_id_msgb_archivedate;
create index idx_torvex_msgb_items_live_msgb_id_msgb_itemdate on TORVEX_MSGB_ITEMS_LIVE (msgB_Id, msgB_itemDate, msgB_itemId, msgB_itemOnline, msgB_archiveDate, msgB_onlineDate);
create index idx_torvex_msgb_items_live_msgb_id_msgb_itemid on TORVEX_MSGB_ITEMS_LIVE (msgB_Id, msgB_itemId, msgB_itemOnline, msgB_archiveDate, msgB_onlineDate);
