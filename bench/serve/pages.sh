#!/bin/bash
# The part "pages" of bench/serve.sh: the home page as it is kept (whole, compressed, and when the browser knows it already), and
# made anew for every request by a second server that keeps none; nginx with a cache of its own stands before that one, too, which
# is how others do it. And a static file of some kilobytes.
. bench/serve/common.sh

init_demo
[ -z "$plain" ] || plain_demo
serve_both

page=$(home_page)
copy_for_nginx "$site$page"
nginx_port=$((port + 20))
mkdir -p "$folder/nginx/kept"
serve_nginx "
    proxy_cache_path $folder/nginx/kept keys_zone=kept:10m;
    server { listen 127.0.0.1:$nginx_port reuseport; root $folder/www; }
    server {
        listen 127.0.0.1:$((nginx_port + 1)) reuseport;
        location / {
            proxy_pass http://127.0.0.1:$anew_port;
            proxy_cache kept;
            proxy_cache_valid 200 60s;
            proxy_ignore_headers Cache-Control Set-Cookie Vary;
        }
    }"

tag_of() { curl -s -I "$1" | tr -d '\r' | sed -n 's/^ETag: //p'; }
kept=$site$page
nginx_page=http://127.0.0.1:$nginx_port/page.html
nginx_static=http://127.0.0.1:$nginx_port$static
keep_page "$kept"
same_bytes "$kept" "$nginx_page"
same_bytes "$site$static" "$nginx_static"
known=$(tag_of "$kept")
nginx_known=$(tag_of "$nginx_page")
for _ in $(seq "$rounds"); do
    measure kept "$keeping" with_wrk 32 "$kept"
    measure nginx-page "$nginx" with_wrk 32 "$nginx_page"
    measure gzip "$keeping" with_wrk 32 "$kept" "Accept-Encoding: gzip"
    measure nginx-gzip "$nginx" with_wrk 32 "$nginx_page" "Accept-Encoding: gzip"
    measure known "$keeping" with_wrk 32 "$kept" "If-None-Match: $known"
    measure nginx-known "$nginx" with_wrk 32 "$nginx_page" "If-None-Match: $nginx_known"
    measure cached "$nginx" with_wrk 32 "http://127.0.0.1:$((nginx_port + 1))$page"
    measure made "$anew" with_wrk 32 "http://127.0.0.1:$anew_port$page"
    measure file "$keeping" with_wrk 32 "$site$static"
    measure nginx-file "$nginx" with_wrk 32 "$nginx_static"
done

beside_nginx "kept page" kept nginx-page 1.0 1.3
beside_nginx "kept page, compressed" gzip nginx-gzip
beside_nginx "kept page, known" known nginx-known - "12 us"
beside_nginx "page made anew" made nginx-page 0.25 7
beside_nginx "static file" file nginx-file 1.0
beside_nginx "kept page, nginx's own" kept cached
