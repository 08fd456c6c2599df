#!/usr/bin/env bash
# The game on a Wayland desktop, under weston with no screen. Without XWayland it opens its window
# through Qt's Wayland platform, asked for or on its own; with XWayland it goes through X, where
# its windows are placed as designed. The tips are turned off: the window looked for is the main
# window, "Mirvalde".
set -euo pipefail
game=${1:?usage: wayland_test.sh GAME QT_PLUGIN_DIR}
plugins=${2:?usage: wayland_test.sh GAME QT_PLUGIN_DIR}
missing=""
for tool in weston Xwayland xdotool; do command -v "$tool" >/dev/null || missing+=" $tool"; done
[ -e "$plugins/platforms/libqwayland-generic.so" ] || missing+=" qt6-wayland"
if [ -n "$missing" ]; then
    echo "skipped, not installed:$missing"
    exit 77
fi

work=$(mktemp -d)
pids=()
cleanup() {
    for pid in "${pids[@]}"; do kill "$pid" 2>/dev/null || true; done
    wait
    rm -rf "$work"
}
trap cleanup EXIT
mkdir -m 700 "$work/weston"

fail() {
    echo "$1: $2"
    tail -n 20 "$work/$1.log"
    exit 1
}

# Waits up to $1 seconds for a command to succeed.
within() {
    local tries=$(($1 * 10))
    shift
    for _ in $(seq "$tries"); do "$@" && return 0; sleep 0.1; done
    return 1
}

start_weston() { # NAME, then weston's own options
    local name=$1
    shift
    XDG_RUNTIME_DIR=$work/weston weston --backend=headless-backend.so --socket="$name" \
        --no-config --idle-time=0 --log="$work/$name.log" "$@" >"$work/$name.out" 2>&1 &
    pids+=($!)
    within 5 test -S "$work/weston/$name" || fail "$name" "weston did not start"
}

# Starts the game as a player would, in a runtime and a settings folder of its own (one copy
# runs per runtime folder), with its Wayland requests traced and 20 s to live. NAME, then its
# environment. The session bus named leads nowhere: on X, without one, the game would start a bus
# of its own that outlives the test.
start_game() {
    local name=$1
    shift
    mkdir -m 700 "$work/$name"
    mkdir -p "$work/$name/config/mirvalde"
    printf '[Options]\nShow%%20Tips%%20at%%20Startup=0\n' >"$work/$name/config/mirvalde/mirvalde.conf"
    env -u DISPLAY -u QT_QPA_PLATFORM XDG_RUNTIME_DIR="$work/$name" \
        XDG_CONFIG_HOME="$work/$name/config" DBUS_SESSION_BUS_ADDRESS="unix:path=$work/no-bus" \
        WAYLAND_DEBUG=1 "$@" timeout 20 "$game" >"$work/$name.log" 2>&1 &
    game_pid=$!
    pids+=("$game_pid")
}

# A moment after its window came, the game still runs and has not said it found no screen.
stays_up() {
    sleep 2
    kill -0 "$game_pid" 2>/dev/null || fail "$1" "the game stopped"
    ! grep -q "aucun écran" "$work/$1.log" || fail "$1" "the game found no screen"
    kill "$game_pid"
}

# A window of its own on Wayland: a toplevel named after the game, with a picture in it.
made_wayland_window() {
    grep -q 'xdg_toplevel@[0-9]*\.set_title("Mirvalde")' "$work/$1.log" &&
        grep -q 'wl_surface@[0-9]*\.attach(wl_buffer@' "$work/$1.log"
}

start_weston wayland
socket=$work/weston/wayland
for how in wayland-asked wayland-alone; do
    if [ "$how" = wayland-asked ]; then
        start_game "$how" WAYLAND_DISPLAY="$socket" QT_QPA_PLATFORM=wayland
    else
        start_game "$how" WAYLAND_DISPLAY="$socket"
    fi
    within 10 made_wayland_window "$how" || fail "$how" "no window on Wayland"
    stays_up "$how"
done

# A desktop that the game cannot open: the player is told what to install for Wayland.
start_game no-screen WAYLAND_DISPLAY="$work/weston/none"
status=0
wait "$game_pid" || status=$?
[ "$status" = 1 ] || fail no-screen "ended with status $status, not 1"
grep -q "Mirvalde : aucun écran n'est disponible pour ouvrir la fenêtre.*qt6-wayland" \
    "$work/no-screen.log" || fail no-screen "not told there is no screen, or of qt6-wayland"

start_weston xwayland --xwayland
within 5 grep -q 'xserver listening on display' "$work/xwayland.log" || fail xwayland "no XWayland"
display=$(grep -o 'xserver listening on display :[0-9]*' "$work/xwayland.log" | grep -o ':[0-9]*$')
start_game x11 WAYLAND_DISPLAY="$work/weston/xwayland" DISPLAY="$display"
within 15 env DISPLAY="$display" xdotool search --name '^Mirvalde$' >/dev/null ||
    fail x11 "no window named Mirvalde on XWayland"
stays_up x11
# Through X alone: the game never spoke to the Wayland compositor itself.
! grep -q 'wl_display' "$work/x11.log" || fail x11 "the game opened a Wayland connection"
echo "the game opens on Wayland alone and goes through XWayland where it runs"
