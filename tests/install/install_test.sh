#!/usr/bin/env bash
# Installs the game into a temporary prefix, as a package would, and starts it from there:
# the installed command finds its sounds and tips, writes nothing beside itself, and the
# desktop entry and the metainfo are valid.
set -euo pipefail
build=${1:?usage: install_test.sh BUILD_DIR}
work=$(mktemp -d)
trap 'kill "${game:-}" 2>/dev/null || true; rm -rf "$work"' EXIT
prefix=$work/prefix

cmake --install "$build" --prefix "$prefix" >/dev/null
for file in bin/mirvalde lib/mirvalde/mirvalde lib/mirvalde/gagner.wav lib/mirvalde/perdu.wav \
    lib/mirvalde/TIPOFDAY.TXT share/applications/org.example.Mirvalde.desktop \
    share/metainfo/org.example.Mirvalde.metainfo.xml share/man/man6/mirvalde.6.gz \
    share/icons/hicolor/scalable/apps/org.example.Mirvalde.svg; do
    [ -e "$prefix/$file" ] || { echo "not installed: $file"; exit 1; }
done
desktop-file-validate "$prefix/share/applications/org.example.Mirvalde.desktop"
appstreamcli validate --no-net --pedantic "$prefix/share/metainfo/org.example.Mirvalde.metainfo.xml"

before=$(cd "$prefix" && find . | sort)
mkdir -m 700 "$work/runtime"
QT_QPA_PLATFORM=offscreen XDG_RUNTIME_DIR=$work/runtime XDG_CONFIG_HOME=$work/config \
    "$prefix/bin/mirvalde" >"$work/log" 2>&1 &
game=$!
# The game holds its lock once it runs, and shows its windows; it must still run a moment later.
for _ in $(seq 100); do [ -s "$work/runtime/mirvalde.lock" ] && break; sleep 0.1; done
sleep 1
kill -0 "$game" || { echo "the installed game stopped:"; cat "$work/log"; exit 1; }
[ "$(head -n 1 "$work/runtime/mirvalde.lock")" = "$game" ] || { echo "no lock held by the game"; exit 1; }
after=$(cd "$prefix" && find . | sort)
[ "$before" = "$after" ] || { echo "the game wrote beside itself:"; diff <(echo "$before") <(echo "$after"); exit 1; }
echo "installed game ran from $prefix"
