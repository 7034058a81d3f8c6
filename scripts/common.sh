# What run.sh and test.sh share. To be sourced from the repository's root.

say() { echo "== $*"; }

# The packages of the named groups that aren't installed.
missing_packages() {
    local wanted=() group package command
    while read -r group package command; do
        [[ " $* " == *" $group "* ]] || continue
        if [ -n "$command" ] && command -v "$command" >/dev/null; then continue; fi
        wanted+=("$package")
    done < <(grep -v '^#' scripts/packages.txt)
    [ ${#wanted[@]} -eq 0 ] && return
    local installed
    installed=$(dpkg-query -W -f='${db:Status-Abbrev}${Package}\n' "${wanted[@]}" 2>/dev/null | sed -n 's/^ii //p' || true)
    for package in "${wanted[@]}"; do
        grep -qx "$package" <<<"$installed" || echo "$package"
    done
}

# Installs what is missing of the named groups from the distribution's packages.
install_packages() {
    local missing
    mapfile -t missing < <(missing_packages "$@")
    [ ${#missing[@]} -eq 0 ] && return
    local root=()
    if [ "$(id -u)" -ne 0 ]; then
        if ! command -v sudo >/dev/null; then
            echo "These packages are missing: ${missing[*]}" >&2
            echo "Install them as root with: apt-get install ${missing[*]}" >&2
            exit 1
        fi
        root=(sudo)
    fi
    say "installing ${missing[*]}"
    "${root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get update -q </dev/null
    "${root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends "${missing[@]}" \
        </dev/null
}

# What the interface of authors is made of. Its own words and calls come from the rows and the register.
interface_sources() {
    find ui docs/operations.json install/rows -type f -not -path 'ui/node_modules/*' -not -path 'ui/dist/*' \
        -not -name '*.gen.*' -print0 | sort -z | xargs -0 sha256sum | sha256sum
}

make_interface() {
    (cd ui && npm ci --ignore-scripts --no-audit --no-fund && npm run build)
}

# build_interface: makes ui/dist, which the program then carries, unless its sources are as they were for the last one.
# Shows nothing unless it fails.
build_interface() {
    [ -f ui/package.json ] || return 0
    local sources
    sources=$(interface_sources)
    if [ -f ui/dist/.vite/manifest.json ] && [ "$(cat build/interface.sources 2>/dev/null)" = "$sources" ]; then return; fi
    mkdir -p build
    rm -f build/interface.sources
    make_interface >build/interface.log 2>&1 || { cat build/interface.log >&2; return 1; }
    echo "$sources" >build/interface.sources
}

# configure PRESET [OPTION...]: shows nothing unless it fails.
configure() {
    local log=build/$1.configure.log
    mkdir -p build
    cmake --preset "$@" >"$log" 2>&1 || { cat "$log" >&2; return 1; }
}

# build PRESET TARGET...: shows its progress to whoever sits before it, and nothing but errors to a log.
build() {
    local preset=$1
    shift
    if [ -t 1 ]; then
        cmake --build --preset "$preset" --target "$@"
    else
        cmake --build --preset "$preset" --target "$@" -- --quiet | { grep -v '^ninja: no work to do' || true; }
    fi
}
