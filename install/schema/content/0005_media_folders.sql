-- Two authors who add a folder at once must not get the same number.
drop index idx_torvex_images_folders_fld_site_fld_id;
create unique index idx_torvex_images_folders_fld_site_fld_id on TORVEX_IMAGES_FOLDERS (fld_site, fld_id);

drop index idx_torvex_documents_folders_fld_site_fld_id;
create unique index idx_torvex_documents_folders_fld_site_fld_id on TORVEX_DOCUMENTS_FOLDERS (fld_site, fld_id);
