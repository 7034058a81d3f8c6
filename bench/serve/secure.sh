# shellcheck shell=bash
# A demo over https and nginx with the same certificate, for the parts that need both; sourced by them. Sets `page`, `secure` and
# `nginx_secure`, the two servers' addresses.
. bench/serve/common.sh
need openssl

# serve_secure http1|http2: what nginx speaks; the server speaks both.
serve_secure() {
    local also=
    [ "$1" = http1 ] || also=$1
    init_demo
    [ -z "$plain" ] || plain_demo
    openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -keyout "$folder/key.pem" -out "$folder/certificate.pem" \
        -days 2 -subj /CN=localhost 2>/dev/null
    serve_demo # the address of the home page is asked for by http, which https takes the place of
    page=$(home_page)
    kill "$server"
    wait "$server" 2>/dev/null || true
    secure=https://127.0.0.1:$((port + 1))
    set_option "$folder/site" tls certificate "\"$folder/certificate.pem\""
    set_option "$folder/site" tls key "\"$folder/key.pem\""
    set_option "$folder/site" tls port $((port + 1))
    serve_demo
    copy_for_nginx "$secure$page"
    printf 'hi' | tee "$folder/www/hi.txt" >"$folder/site/wwwroot/hi.txt"
    local nginx_port=$((port + 20))
    nginx_secure=https://127.0.0.1:$nginx_port
    serve_nginx "
        server {
            listen 127.0.0.1:$nginx_port ssl $also reuseport; root $folder/www;
            ssl_certificate $folder/certificate.pem; ssl_certificate_key $folder/key.pem; ssl_protocols TLSv1.3;
        }"
    keep_page "$secure$page"
    same_bytes "$secure$page" "$nginx_secure/page.html"
    same_bytes "$secure$static" "$nginx_secure$static"
    same_bytes "$secure/hi.txt" "$nginx_secure/hi.txt"
}
