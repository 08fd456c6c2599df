#!/usr/bin/env bash
# Plays the packaged Windows game under wine on a virtual screen, as a player would: real keys
# in, texts read back off the screen (OCR). One PASS/FAIL line a check, screenshots of each
# state in the output folder for a person to look at. Exits non-zero on any failure.
#
#   tools/windows/play-test.sh [OUTPUT_FOLDER]      (build-windows/play by default)
#
# Needs the zip of tools/windows/package.sh and the packages xvfb openbox xdotool x11-utils
# imagemagick wine wine64 mingw-w64 unzip tesseract-ocr tesseract-ocr-fra.
set -uo pipefail
cd "$(dirname "$0")/../.."
version=$(sed -n 's/^project(Mirvalde VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
name=mirvalde-$version-windows-x64
zip=$PWD/build-windows/$name.zip
out=$(realpath -m "${1:-build-windows/play}")
[ -f "$zip" ] || { echo "no $zip: run tools/windows/package.sh first" >&2; exit 1; }
mkdir -p "$out" && rm -f "$out"/*.png
SECONDS=0

tmp=$(mktemp -d)
export WINEPREFIX=$tmp/wine WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
# One thread each for the tools that look: the game must keep its pace on two cores. UTF-8 for
# the accented letters typed and read.
export OMP_THREAD_LIMIT=1 MAGICK_THREAD_LIMIT=1 LC_ALL=C.UTF-8
pids=()
cleanup() {
    wineserver -k 2>/dev/null
    for pid in "${pids[@]}"; do kill "$pid" 2>/dev/null; done
    wait 2>/dev/null
    cp "$tmp"/play-*.log "$out/" 2>/dev/null
    rm -rf "$tmp"
}
trap cleanup EXIT
trap 'exit 130' INT TERM
# Runs a command every 0.2 s until it succeeds, for SECONDS at most.
poll() { local n=$(($1 * 5)); until "${@:2}"; do ((--n > 0)) || return 1; sleep 0.2; done; }
# The prefix is made while the rest gets ready; no display yet, so no window of wine's own.
(DISPLAY='' wineboot -i >/dev/null 2>&1 && wineserver -w) &
booting=$!
unzip -q "$zip" -d "$tmp" && game=$tmp/$name
mkdir "$tmp/tools" "$tmp/frames"
x86_64-w64-mingw32-gcc-posix -O2 -mwindows -o "$tmp/tools/msinfo.exe" \
    tools/windows/play/sysinfo-probe.c || exit 1
# A free display, whichever: others may be running tests of their own.
Xvfb -displayfd 3 -screen 0 1280x800x24 -nolisten tcp 3>"$tmp/display" 2>/dev/null & pids+=($!)
poll 5 test -s "$tmp/display"
export DISPLAY=:$(cat "$tmp/display")
openbox >/dev/null 2>&1 & pids+=($!)
wait "$booting" || { echo "wineboot failed" >&2; exit 1; }

declare -A tally=([PASS]=0 [FAIL]=0 [SKIP]=0)
report() { echo "$1  ${*:2}"; tally[$1]=$((tally[$1] + 1)); }
check() { if [ "$1" = 0 ]; then report PASS "${@:2}"; else report FAIL "${@:2}"; fi; }

visible() { xdotool search --onlyvisible --name "$1" 2>/dev/null; }
count() { visible "$1" | wc -l; }
# The id of a shown window whose title matches, other than EXCEPT, once there is one.
wait_window() { poll "${2:-20}" shown "$1" "${3:-none}"; } # TITLE [SECONDS] [EXCEPT]
shown() { visible "$1" | grep -vx -m1 "$2"; }
# X Y W H of a window's inside on the screen, once it has stopped moving: a window is
# mapped first and placed a moment later.
place() {
    local was=''
    for _ in $(seq 10); do
        eval "$(xwininfo -id "$1" | sed -n 's/ *Absolute upper-left \([XY]\): *\(-*[0-9]*\)/\1=\2/p;
            s/ *Width: */W=/p; s/ *Height: */H=/p')"
        [ "$was" = "$X $Y $W $H" ] && return
        was="$X $Y $W $H" && sleep 0.2
    done
}
activate() { timeout 5 xdotool windowactivate --sync "$1" >/dev/null 2>&1; sleep 0.2; }
shot() { import -window root "$out/$1.png"; }
# Always from the whole screen: grabbing a window that closes meanwhile would hang.
grab() { import -window root -crop "$3x$4+$1+$2" -depth 8 "${5:-png:-}"; }
# The text in a part of the screen; SCALE enlarges small print first.
ocr() { # X Y W H LANG [SCALE]
    grab "$1" "$2" "$3" "$4" |
        if [ -n "${6:-}" ]; then convert png:- -resize "$6%" png:-; else cat; fi |
        tesseract stdin stdout -l "$5" --psm 6 2>/dev/null | tr '\n' ' '
}
registry() { wine reg query "$@" 2>/dev/null | iconv -f CP850 -t UTF-8 | tr -d '\r' | grep .; }
start_game() { # LOG [WINEDEBUG]
    (cd "$game" && WINEDEBUG=${2:-$WINEDEBUG} exec wine mirvalde.exe >"$tmp/$1" 2>&1) &
    game_pid=$! && disown
}
ended() { poll 10 eval '! kill -0 "$game_pid" 2>/dev/null'; }

# Plays the guessing game to its tenth number found: each answer read off the screen halves
# the range left. The answer's label stands at its designed place (twips / 15) under the menu.
find_ten() {
    local id found=0 low=1 high=100 guess text scale tries=0 t0=$SECONDS
    id=$(wait_window '^Mirvalde$') && place "$id" && activate "$id" || return 1
    local x=$((X + 2880 / 15)) y=$((Y + menu + 960 / 15)) w=$((5775 / 15)) h=$((555 / 15))
    while ((found < 10 && tries < 100)); do
        guess=$(((low + high) / 2)) tries=$((tries + 1))
        xdotool type --delay 20 "$guess" && xdotool key Return
        # Read again while the answer is the one before; enlarged, in case the digits mislead.
        for scale in '' '' 300 300; do
            text=$(ocr $x $y $w $h eng $scale)
            [[ $text == "$guess est"* ]] && break
        done
        [ -n "$first_answer" ] || { first_answer="$guess: $text" && shot 03-answer; }
        case $text in
            "$guess est trop petit"*) low=$((guess + 1)) ;;
            "$guess est trop grand"*) high=$((guess - 1)) ;;
            # "Encore ?" clicks a moment after its key, and has the focus meanwhile.
            *bonne*) found=$((found + 1)) low=1 high=100 && xdotool key alt+e && sleep 0.3 ;;
            # The tenth number found closes the window before its answer is shown.
            *) ((found == 9)) && wait_window '^Tavrines$' 5 >/dev/null && found=10 && break
               echo "      unreadable answer to $guess: '$text'" && return 1 ;;
        esac
    done
    echo "      $found numbers found in $tries proposals, $((SECONDS - t0))s"
    wait_window '^Tavrines$' 5 >/dev/null
}
first_answer='' menu=0

echo "== first start, with no settings (display $DISPLAY)"
printf 'Astuce du banc d%sessai : 4217 pommes vertes.\r\n' "'" >"$game/TIPOFDAY.TXT"
start_game play-1.log "-all,+winmm"
text='' && id=$(wait_window '^Astuce du jour$' 60) && place "$id" &&
    text=$(ocr $X $Y $W $H fra 200)
shot 01-tip
[[ $(count '^Mirvalde$') == 0 && $text == *"4217 pommes vertes"* ]]
check $? "1 the tip of the day comes first, read from TIPOFDAY.TXT: '${text:0:70}'"
# Ticked off, the tips must stay away at the next start.
activate "$id" && xdotool key alt+a && sleep 0.3 && xdotool key Return

id=$(wait_window '^Mirvalde$') && place "$id"
read -r width height < <(awk '/kForm1Client(Width|Height) =/ {printf "%d ", $NF / 15}' \
    src/guess/Form1Design.h)
read -r sw sh < <(xwininfo -root | awk '/Width:/ {w = $2} /Height:/ {print w, $2}')
# Centred with its title bar, which the desktop draws above the window's inside.
menu=$((H - height)) dx=$((X + W / 2 - sw / 2)) dy=$((Y + H / 2 - sh / 2))
shot 02-main
((W == width && menu >= 15 && menu <= 30 && dx * dx <= 400 && dy * dy <= 400))
check $? "2 'Mirvalde' is ${W}x$H: designed ${width}x$height + a menu bar of $menu;" \
    "${dx},${dy} px off the centre of the ${sw}x$sh screen"
# A best score low enough for a game given up at once to beat it.
wine reg add 'HKCU\Software\mirvalde\mirvalde\Meilleur Score' /v Score /d -1 /f >/dev/null 2>&1

t0=$SECONDS
(cd "$game" && timeout 20 wine mirvalde.exe >/dev/null 2>&1)
rc=$? took=$((SECONDS - t0))
sleep 1
((rc == 0 && took <= 8)) && [ "$(count '^Mirvalde$')" = 1 ]
check $? "9 a second copy exits at once (exit $rc after ${took}s) and opens no window"

activate "$id" && xdotool key Return
text='' && box=$(wait_window '^Mirvalde$' 5 "$id") && place "$box" &&
    text=$(ocr $X $Y $W $H fra 300)
shot 04-empty-box
activate "$box" && xdotool key Return && sleep 0.5
[[ -n $box && $text == *"Propose un nombre"* && $(count '^Mirvalde$') == 1 ]]
check $? "4 Enter in the empty box asks for a number: '$text'; OK closes the message"

activate "$id" && xdotool key alt+question a
about=$(wait_window '^À propos de Mirvalde$' 10)
msinfo='HKLM\SOFTWARE\Microsoft\Shared Tools\MSINFO'
wine reg add "$msinfo" /v PATH /d "$(winepath -w "$tmp/tools/msinfo.exe")" /f >/dev/null 2>&1
shot 07-about
activate "$about" && xdotool key alt+i
poll 5 test -f "$tmp/tools/msinfo.ran"
[[ -n $about && -f $tmp/tools/msinfo.ran && $(count '^Mirvalde$') == 0 ]]
check $? "7 the about window stands in for the main one; 'Infos système...' starts MSINFO's" \
    "PATH: $(cat "$tmp/tools/msinfo.ran" 2>/dev/null)"
wine reg delete "$msinfo" /v PATH /f >/dev/null 2>&1
wine reg delete 'HKLM\SOFTWARE\Microsoft\Shared Tools Location' /v MSINFO /f >/dev/null 2>&1
activate "$about" && xdotool key alt+i
text='' && box=$(wait_window '^Mirvalde$' 5) && place "$box" && text=$(ocr $X $Y $W $H fra 300)
shot 07-not-available
activate "$box" && xdotool key Return && sleep 0.3
activate "$about" && xdotool key Escape
[[ $text == *"ne sont pas disponibles actuellement"* ]] && wait_window '^Mirvalde$' 5 >/dev/null
check $? "7 with neither value set, a message says so: '$text'; the main window comes back"

echo "== the guessing game, to its tenth number (${SECONDS}s)"
find_ten
check $? "5 ten numbers found open 'Tavrines'"
[[ $first_answer =~ ^50:\ 50\ est\ (trop\ petit|trop\ grand|la\ bonne\ réponse)\.\ *$ ]]
check $? "3 a proposal typed with real keys is answered: '$first_answer'"
sounds=$(grep -o 'SoundName=.*\\\(gagner\|perdu\)\.wav' "$tmp/play-1.log" | sed 's/.*\\//' |
    sort -u | tr '\n' ' ')
[ "$sounds" = "gagner.wav perdu.wav " ]
check $? "8 proposals won and lost play ${sounds}through winmm, and the game goes on"

echo "== the falling blocks (${SECONDS}s)"
tavrines=$(wait_window '^Tavrines$' 5) && place "$tavrines" && activate "$tavrines"
well() { grab $((X + 10)) $((Y + menu + 10)) 98 291 "${1:-png:-}"; }
empty=$(well | md5sum)
# Sampled from outside while the trios land: the squares of a line blink in cyan.
(i=0; while :; do well "rgb:$tmp/frames/$((i++)).rgb"; done) & sampler=$! && pids+=($!)
xdotool key F2
for i in $(seq 0 17); do
    # One column after the other from the left, so that the well fills evenly.
    keys=(Left Left Left Left Left)
    for ((r = 0; r < i % 6; r++)); do keys+=(Right); done
    xdotool key "${keys[@]}" space
    sleep 0.6
    ((i == 10)) && shot 05-tavrines
done
kill $sampler && wait $sampler 2>/dev/null
[ "$(well | md5sum)" != "$empty" ]
check $? "5 F2 starts a game, and the trios dropped land in the well"

xdotool key q
text='' && dialog=$(wait_window '^HIGH SCORE$' 10) && place "$dialog" &&
    text=$(ocr $X $Y $W $H fra 200)
shot 06-name
# The keyboard has no "é": xdotool maps it to a spare key for a moment, long enough for wine
# to read the map only when typed slowly.
activate "$dialog" && xdotool key ctrl+a && xdotool type Zo && xdotool type --delay 1000 é &&
    xdotool type ' Test' && xdotool key Return
back=$(wait_window '^Mirvalde$' 10)
stored=$(registry 'HKCU\Software\mirvalde\mirvalde' /s)
sed 's/^/      /' <<<"$stored"
activate "$back" && xdotool key Escape && ended && quit=yes || quit=no
[[ $text == *Bravo* && -n $back && $stored == *"Nom    REG_SZ    Zoé Test"* &&
    $stored =~ Score\ +REG_SZ\ +[0-9]+ && $quit == yes ]]
check $? "6 Q ends the game; the best score beaten asks the name: '${text:0:60}';" \
    "the name typed is stored; 'Quitter' (Escape) ends the program: $quit"
frames=$(ls -v "$tmp/frames")
blink=$(for f in $frames; do
    od -An -v -tx1 -w3 "$tmp/frames/$f" | grep -qx ' 00 ff ff' && echo "$f" && break
done)
if [ -n "$blink" ] && convert -size 98x291 -depth 8 "rgb:$tmp/frames/$blink" "$out/05-blink.png"
then
    report PASS "5 a line of three blinks in cyan (frame $blink of $(wc -w <<<"$frames"))"
else
    report SKIP "5 no blink caught in $(wc -w <<<"$frames") frames, for a score of" \
        "$(sed -n 's/ *Score *REG_SZ *//p' <<<"$stored")"
fi

echo "== second start: the settings read back (${SECONDS}s)"
start_game play-2.log
first=$(wait_window '^(Astuce du jour|Mirvalde)$' 60) && first=$(xdotool getwindowname "$first")
find_ten
text='' && tavrines=$(wait_window '^Tavrines$' 5) && place "$tavrines" &&
    text=$(ocr $((X + 110)) $((Y + menu + 220)) 130 65 fra 300)
shot 06-best-read-back
activate "$tavrines" && xdotool key ctrl+q && ended && quit=yes || quit=no
[[ $first == Mirvalde && $text == *"Zoé Test"* && $quit == yes ]]
check $? "6 no tip this time ('$first' first); 'Tavrines' shows the best player: '$text';" \
    "Ctrl+Q ends the program: $quit"

echo "screenshots in $out; ${SECONDS}s"
echo "${tally[PASS]} passed, ${tally[FAIL]} failed, ${tally[SKIP]} skipped"
((tally[FAIL] == 0))
