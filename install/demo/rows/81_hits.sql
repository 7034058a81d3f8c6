-- What was read in the thirty days before the demo was made, so that statistics have something to show. A page has
-- its usual readers a day, and a site its week: the garden lives by its Saturdays and Sundays, the institute by its
-- working days. The rest is chance, which is the same for everybody.

insert into TORVEX_LOGGING (site, lang, nodeId, yyyymmdd, yyyy, mm, dd, hits, uniquehits)
with
  days (distance, day, weekday) as (values
    {{days}}),
  weeks (site, weekday, share) as (values
    ('bg', 1, 62), ('bg', 2, 74), ('bg', 3, 85), ('bg', 4, 83), ('bg', 5, 104), ('bg', 6, 139), ('bg', 7, 153),
    ('ri', 1, 122), ('ri', 2, 131), ('ri', 3, 126), ('ri', 4, 118), ('ri', 5, 97), ('ri', 6, 56), ('ri', 7, 50)),
  readers (pageId, usual) as (values
    (1, 184), (4, 96), (5, 58), (7, 71), (8, 64), (9, 33), (10, 42), (11, 88), (12, 57), (16, 29), (17, 21), (21, 5),
    (22, 6), (23, 12), (41, 17), (42, 8), (44, 26), (45, 9), (46, 15), (312, 24), (314, 7),
    (101, 131), (104, 77), (105, 44), (107, 52), (108, 49), (109, 22), (110, 31), (111, 63), (112, 38), (116, 18),
    (121, 4), (122, 5), (141, 11), (142, 5), (144, 17), (145, 6), (313, 16), (315, 4), (316, 11),
    (201, 46), (203, 31), (204, 22), (206, 37), (207, 19), (208, 28), (211, 3), (240, 14), (318, 17),
    (301, 29), (303, 18), (304, 12), (306, 21), (308, 13), (311, 2), (317, 9), (319, 8)),
  views (site, lang, nodeId, day, hits, chance) as (
    select a.site, a.lang, a.nodeId, d.day,
      r.usual * w.share * (80 + (r.pageId * 37 + d.distance * 53 + r.pageId * d.distance * 11) % 41) / 10000,
      (r.pageId * 13 + d.distance * 29) % 17
    from TORVEX_PAGES_DESIGN a
    inner join readers r on r.pageId = a.pageId
    inner join weeks w on w.site = a.site
    inner join days d on d.weekday = w.weekday)
select site, lang, nodeId, day, substr(day, 1, 4), substr(day, 5, 2), substr(day, 7, 2), hits,
  (hits * (58 + chance) + 99) / 100
from views where hits > 0;
