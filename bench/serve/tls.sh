#!/bin/bash
# The part "tls" of bench/serve.sh: the kept page over https with HTTP/1.1 on connections that stay open, and connections that are
# opened for one request for two bytes: with a handshake of their own, and with one that resumes what the client had before.
. bench/serve/secure.sh
serve_secure http1

# talk ADDRESS [OPTION]...: what a client says of its connection; its standard input is sent.
talk() {
    local address=${1#https://}
    shift
    openssl s_client -connect "$address" "$@" 2>/dev/null || true
}
# What one without wishes gets, as "New, TLSv1.3, Cipher is TLS_AES_256_GCM_SHA384,Server Temp Key: X25519, 253 bits".
agreed() { talk "$1" </dev/null | sed -n '/^New, /p; /^Server Temp Key/p' | sort | paste -sd, -; }
request=$'GET /hi.txt HTTP/1.1\r\nHost: 127.0.0.1\r\nConnection: close\r\n\r\n'
# The tickets come with the answer.
resumes() {
    (printf '%s' "$request"; sleep 0.5) | talk "$1" -sess_out "$folder/ticket" >/dev/null
    talk "$1" -sess_in "$folder/ticket" </dev/null | grep -q '^Reused, TLSv1.3'
}
echo "ours: $(agreed "$secure"); nginx: $(agreed "$nginx_secure")"
[ "$(agreed "$secure")" = "$(agreed "$nginx_secure")" ]
for address in "$secure" "$nginx_secure"; do
    resumes "$address" || { echo "$address resumes nothing" >&2; exit 1; }
done

# with_new_sessions URL: four clients that never resume; it prints what with_wrk does.
with_new_sessions() {
    local host=${1#https://} clients=() begin i
    begin=$(date +%s%N)
    for i in 1 2 3 4; do
        openssl s_time -connect "${host%%/*}" -new -time "$seconds" -www "/${host#*/}" >"$folder/client.$i" 2>&1 &
        clients+=($!)
    done
    wait "${clients[@]}"
    cat "$folder"/client.? | awk -v ns=$(($(date +%s%N) - begin)) '
        / real seconds/ {count += $1; read += $1 * $7; if (!$7) bad = "nothing was answered"}
        END {printf "%d %.0f - - %s\n", count, count / ns * 1e9, bad}'
}

for _ in $(seq "$rounds"); do
    measure kept "$server" with_wrk 32 "$secure$page"
    measure nginx-kept "$nginx" with_wrk 32 "$nginx_secure/page.html"
    measure new "$server" with_new_sessions "$secure/hi.txt"
    measure nginx-new "$nginx" with_new_sessions "$nginx_secure/hi.txt"
    # wrk resumes with every connection that it opens after its first ones.
    measure resumed "$server" with_wrk 32 "$secure/hi.txt" "Connection: close"
    measure nginx-resumed "$nginx" with_wrk 32 "$nginx_secure/hi.txt" "Connection: close"
done
beside_nginx "kept page over https" kept nginx-kept 0.95
beside_nginx "full handshakes, one request" new nginx-new 0.95
beside_nginx "resumed handshakes, one request" resumed nginx-resumed 0.95
