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

# Builds a preset. Shows its progress to whoever sits before it, and nothing but errors to a log.
build_preset() {
    [ -f "build/$1/build.ninja" ] || cmake --preset "$1" || return
    if [ -t 1 ]; then
        cmake --build --preset "$1"
    else
        cmake --build --preset "$1" -- --quiet | { grep -v '^ninja: no work to do' || true; }
    fi
}
