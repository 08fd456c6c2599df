#!/usr/bin/env bash
# Runs the game on a virtual screen with a window manager and an accessibility bus, and reads
# it as a screen reader does (atspi_check.py).
set -euo pipefail
game=${1:?usage: atspi_test.sh GAME}
here=$(cd "$(dirname "$0")" && pwd)
session() {
    set -euo pipefail
    home=$(mktemp -d)
    trap 'kill $(jobs -p) 2>/dev/null || true; rm -rf "$home"' EXIT
    mkdir -m 700 "$home/runtime" "$home/mirvalde"
    printf '[Options]\nShow%%20Tips%%20at%%20Startup=0\n' >"$home/mirvalde/mirvalde.conf"
    openbox >/dev/null 2>&1 &
    /usr/libexec/at-spi-bus-launcher --launch-immediately >/dev/null 2>&1 &
    sleep 1
    QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 XDG_RUNTIME_DIR=$home/runtime XDG_CONFIG_HOME=$home \
        QT_QPA_PLATFORM=xcb "$game" >/dev/null 2>&1 &
    /usr/bin/python3 "$here/atspi_check.py"
}
# xvfb-run goes through sh, which drops exported functions: pass the function as text.
xvfb-run -a -s "-screen 0 1280x800x24" dbus-run-session -- \
    bash -c "$(declare -f session); game=$(printf %q "$game") here=$(printf %q "$here") session" \
    2> >(grep -v -e 'dbus-daemon' -e 'SpiRegistry' >&2)
