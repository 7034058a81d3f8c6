# shellcheck shell=bash
# What the measuring scripts share; sourced by them. Makes a temporary `folder`, which goes when the script ends, with
# all processes in `processes`.

folder=$(mktemp -d /tmp/torvex-bench-XXXXXX)
processes=()

finish() {
    local process
    for process in "${processes[@]}"; do kill "$process" 2>/dev/null && wait "$process" 2>/dev/null || true; done
    rm -rf "$folder"
}
trap finish EXIT

# need TOOL...: installs those that are missing, which are packages of Debian of the same names, or TOOL:PACKAGE.
need() {
    local tool
    for tool in "$@"; do
        PATH=$PATH:/usr/sbin command -v "${tool%:*}" >/dev/null && continue
        echo "installing ${tool#*:}"
        ${SUDO:-$([ "$(id -u)" -eq 0 ] || echo sudo)} apt-get install -y --no-install-recommends "${tool#*:}" >/dev/null
    done
}

# The release's program as `torvex`, unless that names one already.
build_torvex() {
    [ -z "${torvex:-}" ] || return 0
    [ -f build/release/build.ninja ] || cmake --preset release -DTORVEX_TESTS=OFF >/dev/null
    cmake --build --preset release --target torvex >/dev/null
    torvex=$PWD/build/release/torvex
}

# The demo in `$folder/site`, not served yet, and where it will be: `port` and `site`.
init_demo() {
    port=$((20000 + RANDOM % 10000))
    site=http://127.0.0.1:$port
    "$torvex" init "$folder/site" --demo >/dev/null
}

# set_option INSTALLATION SECTION KEY VALUE: a setting of torvex.toml that isn't there yet; a server reads it as it starts.
set_option() {
    sed -i "s|^\\[$2\\]|&\\n$3 = $4|" "$1/torvex.toml"
    grep -q "^$3 = " "$1/torvex.toml"
}

# The code of the demo's first website.
first_site() {
    "$torvex" sql --install "$folder/site" --json "select site from TORVEX_SITES order by site" |
        sed -n '1s/.*"site":"\([^"]*\)".*/\1/p'
}

# grow_demo PAGES IMAGES: makes the demo in `$folder/site` that large. Its words and links are taken in by `migrate`.
grow_demo() {
    sed "s/:pages/$1/g; s/:images/$2/g" bench/grow.sql | "$torvex" sql --install "$folder/site" >/dev/null
}

# serve PROGRAM INSTALLATION PORT LOG: sets `server` to the process, and comes back when it answers.
serve() {
    "$1" serve --install "$2" --listen "127.0.0.1:$3" 2>"$4" &
    server=$!
    processes+=("$server")
    for _ in $(seq 100); do curl -s -o /dev/null "http://127.0.0.1:$3/error.asp" && return; sleep 0.05; done
    echo "nothing answers at 127.0.0.1:$3" >&2
    return 1
}

serve_demo() { serve "$torvex" "$folder/site" "$port" "$folder/torvex.log"; }

# The address of the demo's home page, from "/".
home_page() {
    local address
    address=$(curl -s -o /dev/null -w '%{redirect_url}' "$site/")
    echo "${address#"$site"}"
}

# ticks PROCESS...: their processor time so far, in clock ticks.
ticks() {
    local total=0 process
    for process in "$@"; do total=$((total + $(awk '{print $14 + $15}' "/proc/$process/stat"))); done
    echo "$total"
}

# Of a process and its children.
ticks_of_all() {
    # shellcheck disable=SC2046
    ticks "$1" $(pgrep -P "$1" || true)
}

# memory NAME: of the server in kB, VmRSS what it has now, VmHWM the most so far.
memory() { awk -v name="$1:" '$1 == name {print $2}' "/proc/$server/status"; }
