#!/usr/bin/env bash
# Takes a screenshot of the game as a player sees it: a virtual screen with a window
# manager, the game started in a private runtime folder, the main window captured by title.
# Usage: tools/screenshot.sh OUT.png [maximised|blocks|blocks-symbols|blocks-paused|speed-menu|
#                                     tips|tips-missing|about]
#   about: the about window, opened from the main window's menu.
#   blocks: finds ten numbers, starts a falling-blocks game and drops a few trios first;
#   blocks-symbols the same with the colours' symbols on, blocks-paused then pauses it.
#   speed-menu: the falling-blocks window before a game, its speed menu open.
#   tips: the tip of the day at start-up; tips-missing: the same without a tips file.
#   The other states start with the tips turned off.
# Needs: apt-get install -y xvfb openbox x11-utils wmctrl imagemagick dbus-x11 xdotool
#        at-spi2-core python3-gi gir1.2-atspi-2.0
set -euo pipefail
out=$(realpath -m "${1:?usage: tools/screenshot.sh OUT.png [STATE], see above}")
state=${2:-normal}
cd "$(dirname "$0")/.."
[ -x build/game/mirvalde ] || { echo "build the game first (see README)" >&2; exit 1; }

inside() {
    set -euo pipefail
    home=$(mktemp -d)
    trap 'kill $(jobs -p) 2>/dev/null; rm -rf "$home"' EXIT
    mkdir -m 700 "$home/runtime"
    openbox >/dev/null 2>&1 &
    # The accessibility bus must be up before the game starts, for the game to join it.
    /usr/libexec/at-spi-bus-launcher --launch-immediately >/dev/null 2>&1 &
    sleep 1
    game=build/game/mirvalde
    case $state in
        tips) ;;
        tips-missing)  # a copy of the game alone in a folder: no tips beside it
            mkdir "$home/bare" && cp build/game/mirvalde "$home/bare/" && game=$home/bare/mirvalde ;;
        *)
            mkdir -p "$home/mirvalde"
            printf '[Options]\nShow%%20Tips%%20at%%20Startup=0\n' >"$home/mirvalde/mirvalde.conf"
            [ "$state" != blocks-symbols ] || echo 'Symboles=1' >>"$home/mirvalde/mirvalde.conf" ;;
    esac
    QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 XDG_RUNTIME_DIR=$home/runtime XDG_CONFIG_HOME=$home \
        "$game" >/dev/null 2>&1 &
    for _ in $(seq 50); do
        { xwininfo -name Mirvalde || xwininfo -name 'Astuce du jour'; } >/dev/null 2>&1 && break
        sleep 0.1
    done
    if [ "$state" = maximised ]; then
        wmctrl -r Mirvalde -b add,maximized_vert,maximized_horz
    elif [ "$state" = about ]; then
        xdotool search --sync --onlyvisible --name '^Mirvalde$' windowactivate --sync
        xdotool key alt+question a
    elif [ "$state" = speed-menu ]; then
        /usr/bin/python3 tools/find-ten-numbers.py >/dev/null
        xdotool search --sync --onlyvisible --name '^Tavrines$' windowactivate --sync
        xdotool key alt+v
    elif [[ $state == blocks* ]]; then
        /usr/bin/python3 tools/find-ten-numbers.py >/dev/null
        xdotool search --sync --onlyvisible --name '^Tavrines$' windowactivate --sync
        xdotool key F2
        for _ in $(seq 8); do
            xdotool key "$(shuf -n 1 -e Left Right Up Left Right)" space
            sleep 0.6
        done
        [ "$state" != blocks-paused ] || xdotool key p
    fi
    sleep 1
    if [ -n "${WINDOW_ONLY:-}" ]; then
        # The active window alone, with the desktop's frame.
        active=$(xdotool getactivewindow)
        import -frame -window "$active" "$out"
    else
        import -window root "$out"
    fi
}
# xvfb-run goes through sh, which drops exported functions: pass the function as text.
xvfb-run -a -s "-screen 0 1280x800x24" dbus-run-session -- \
    bash -c "$(declare -f inside); out=$(printf %q "$out") state=$state WINDOW_ONLY=${WINDOW_ONLY:-} inside"
echo "screenshot: $out"
