#!/bin/bash
# Runs a command with a private PostgreSQL server: with_postgres.sh COMMAND...
# The server listens on a socket in a temporary folder only, keeps nothing, and is gone at the end. The command
# finds it by TORVEX_TEST_POSTGRES.
set -euo pipefail

if [ $# -eq 0 ]; then
    echo "usage: $0 COMMAND..." >&2
    exit 2
fi

# The newest server that is installed; Debian keeps its programs off the path.
programs=$(find /usr/lib/postgresql -maxdepth 2 -name bin 2>/dev/null | sort -V | tail -n 1)
if [ ! -x "$programs/initdb" ]; then
    initdb=$(command -v initdb || true)
    programs=${initdb%/initdb}
fi
if [ -z "$programs" ]; then
    echo "$0: no PostgreSQL server is installed (Debian: postgresql)" >&2
    exit 1
fi

# In memory where there is room for it: making a database for every test is a matter of small files.
parent=/tmp
if [ -w /dev/shm ] && [ "$(df --output=avail --block-size=1M /dev/shm | tail -n 1)" -gt 1024 ]; then
    parent=/dev/shm
fi
folder=$(mktemp -d "$parent/torvex-postgres-XXXXXX")
export TMPDIR=${TMPDIR:-$parent}  # the embedded stores of the tests, likewise
server=
stop() {
    status=$?
    trap - EXIT
    if [ -n "$server" ]; then
        kill -INT "$server" 2>/dev/null || true
        wait "$server" 2>/dev/null || true
    fi
    rm -rf "$folder"
    exit "$status"
}
trap stop EXIT
trap 'exit 129' HUP
trap 'exit 130' INT
trap 'exit 143' TERM

# The server refuses to run as root.
as_server=()
if [ "$(id -u)" -eq 0 ]; then
    chown postgres "$folder"
    chmod 755 "$folder"
    as_server=(setpriv --reuid=postgres --regid=postgres --init-groups)
fi

cd "$folder"
"${as_server[@]}" "$programs/initdb" --pgdata="$folder/data" --username=torvex --auth=trust \
    --locale=C.UTF-8 --encoding=UTF8 --no-sync >"$folder/initdb.log" 2>&1 ||
    { cat "$folder/initdb.log" >&2; exit 1; }
"${as_server[@]}" "$programs/postgres" -D "$folder/data" -k "$folder" -c listen_addresses= \
    -c fsync=off -c synchronous_commit=off -c full_page_writes=off -c autovacuum=off -c max_connections=200 \
    >"$folder/server.log" 2>&1 </dev/null &
server=$!
cd "$OLDPWD"

for _ in $(seq 100); do
    "$programs/pg_isready" --quiet --host="$folder" && break
    kill -0 "$server" 2>/dev/null || break
    sleep 0.1
done
"$programs/pg_isready" --quiet --host="$folder" || { cat "$folder/server.log" >&2; exit 1; }

export TORVEX_TEST_POSTGRES="host=$folder user=torvex dbname=postgres"
# In the background, so that a signal to this script is handled at once and not behind the command.
"$@" <&0 &
command=$!
# TERM for all three: a command in the background ignores the keyboard's signal.
trap 'kill -TERM $command 2>/dev/null; exit 129' HUP
trap 'kill -TERM $command 2>/dev/null; exit 130' INT
trap 'kill -TERM $command 2>/dev/null; exit 143' TERM
wait "$command"
