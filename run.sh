#!/bin/bash
# Builds Torvex, makes the demo installation and serves it.
set -euo pipefail

usage() {
    echo "usage: $0 [--port N] [--install DIR]"
    echo
    echo "Installs the packages that are missing, builds the program, makes an installation with the demo sites in"
    echo "DIR (./demo-site) unless there is one, and serves it at http://127.0.0.1:N/ (8080) until Ctrl-C."
}

port=8080
here=$PWD
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")"
install=$PWD/demo-site
while [ $# -gt 0 ]; do
    case "$1" in
        --port | --install) [ $# -ge 2 ] || { usage >&2; exit 2; } ;;
        -h | --help) usage; exit 0 ;;
        *) usage >&2; exit 2 ;;
    esac
    case "$1" in
        --port) port=$2 ;;
        --install) install=$(cd "$here" && realpath -m "$2") ;;
    esac
    shift 2
done
if ! [[ $port =~ ^[0-9]{1,5}$ ]]; then
    echo "$0: --port needs a number" >&2
    exit 2
fi

. scripts/common.sh
install_packages build
build_interface
[ -x build/release/torvex ] || say "building the program; the first time takes a few minutes"
# The tests need more packages, and longer.
[ -f build/release/build.ninja ] || configure release -DTORVEX_TESTS=OFF
build release torvex

if [ ! -e "$install/torvex.toml" ]; then
    say "making the demo installation in $install"
    build/release/torvex init "$install" --demo
fi
say "serving $install at http://127.0.0.1:$port/ (Ctrl-C ends it)"
say "authors work at http://127.0.0.1:$port/torvex/"
exec build/release/torvex serve --install "$install" --listen "127.0.0.1:$port"
