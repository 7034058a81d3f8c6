-- What a picture shows, for those who don't see it: null was never asked, an empty text is decoration.
alter table TORVEX_IMAGES add column img_alt {text};
alter table TORVEX_DOCUMENTS add column doc_alt {text};
