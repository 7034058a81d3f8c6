-- What the demo shows: logins of visitors, guarded media, feeds. Set torvex_frames to 1 for frames mode.

update TORVEX_SETUP set value = '1'
where loginId = 0 and parameter in ('torvex_extranet', 'torvex_feeds', 'torvex_doc_security', 'torvex_img_security',
  'torvex_hyperlink_check');
