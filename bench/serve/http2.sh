#!/bin/bash
# The part "http2" of bench/serve.sh: the kept page, the same compressed, and a static file over HTTP/2, on 16 connections with one
# request under way on each, and with 32.
. bench/serve/secure.sh
need h2load:nghttp2-client
serve_secure http2

for _ in $(seq "$rounds"); do
    for streams in 1 32; do
        measure "kept$streams" "$server" with_h2load 16 "$streams" "$secure$page"
        measure "nginx-kept$streams" "$nginx" with_h2load 16 "$streams" "$nginx_secure/page.html"
        measure "gzip$streams" "$server" with_h2load 16 "$streams" "$secure$page" "Accept-Encoding: gzip"
        measure "nginx-gzip$streams" "$nginx" with_h2load 16 "$streams" "$nginx_secure/page.html" "Accept-Encoding: gzip"
        measure "file$streams" "$server" with_h2load 16 "$streams" "$secure$static"
        measure "nginx-file$streams" "$nginx" with_h2load 16 "$streams" "$nginx_secure$static"
    done
done
for streams in 1 32; do
    beside_nginx "kept page, $streams at once" "kept$streams" "nginx-kept$streams" 0.95
    beside_nginx "the same, compressed" "gzip$streams" "nginx-gzip$streams" 0.95
    beside_nginx "static file, $streams at once" "file$streams" "nginx-file$streams" 0.95
done
