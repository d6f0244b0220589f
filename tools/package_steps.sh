#!/usr/bin/env bash
# An ordinary user's first minutes with what the packages installed; tools/package_test.sh runs it in its clean Debian.
# Needs Xvfb, openbox, xdotool and gio.
set -eu
fail() {
    echo "package_steps.sh: $* (in front: $(xdotool getactivewindow getwindowname 2>&1))" >&2
    tail -n 3 "$HOME/rack.log" >&2
    exit 1
}
wait_until() { # seconds, command
    local tries=$(($1 * 10))
    shift
    for _ in $(seq "$tries"); do
        "$@" && return
        sleep 0.1
    done
    return 1
}
shown() { xdotool search --onlyvisible --name "^$1\$" >/dev/null 2>&1; }
in_front() { [ "$(xdotool getactivewindow getwindowname 2>/dev/null)" = "$1" ]; }
heard() { grep -q "$1" "$HOME/rack.log"; }
program_ids() { pgrep -u "$(id -u)" -x nrv718; }
no_program() { ! program_ids >/dev/null; }

folder=$HOME/.local/share/nrv718
export DISPLAY=:71 XDG_RUNTIME_DIR=$HOME/runtime
mkdir -m 700 "$XDG_RUNTIME_DIR"
trap 'kill $(jobs -p) 2>/dev/null || true' EXIT
Xvfb "$DISPLAY" -screen 0 1280x900x24 -nolisten tcp >/dev/null 2>&1 &
wait_until 20 xdotool getdisplaygeometry >/dev/null 2>&1 || fail "no display"
openbox >/dev/null 2>&1 &
wait_until 20 xdotool getwindowfocus >/dev/null 2>&1 || fail "no window manager"

[ ! -e "$folder" ] || fail "the folder is there before the first start"
gio launch /usr/share/applications/nrv718.desktop >"$HOME/program.log" 2>&1 || fail "the desktop entry does not start"
wait_until 20 test -s "$folder/Speakers.cfg" || fail "the first start makes no folder"
[ -d "$folder/preset" ] || fail "the first start makes no folder for presets"
cmp -s "$folder/Speakers.cfg" /usr/share/nrv718/Speakers.cfg || fail "Speakers.cfg is not the supplied one"
[ "$(readlink "/proc/$(program_ids)/cwd")" = "$folder" ] || fail "the program does not work in the user's folder"

nrv718-rack --ids 0 --trace --link "$folder/com1" >"$HOME/rack.log" 2>&1 &
rack=$!
wait_until 10 heard '^nrv718-rack: ready on' || fail "the rack does not start"

# The dialog: past the two kinds of line to the list of ports, its first port, ">>".
wait_until 30 in_front Select || fail "the connection dialog does not come up"
sleep 1
xdotool key --delay 200 Tab Tab Down Return
wait_until 30 in_front "NRV-718 Multi Device Remote Control" || fail "the main window does not come up"
# The row of the device has the keyboard.
wait_until 30 heard 'bytes of preset' || fail "the device is not found"
sleep 2
xdotool key Return
wait_until 30 heard 'name of the active preset' || fail "the window of the device does not open"
sleep 2
xdotool key ctrl+9
wait_until 10 heard 'Levels?' || fail "the gains do not come up"
xdotool key --delay 200 Tab Up Up
wait_until 10 heard '^-> ID 0  Gain of In A: code 62 (0.4 dB)$' || fail "the gain does not arrive"

xdotool key ctrl+q
wait_until 10 in_front Exit || fail "the program does not ask before it ends"
xdotool key alt+y
wait_until 10 no_program || fail "the program does not end"

nrv718-preset line read --port "$folder/com1" --id 0 "$HOME/live.n91" >/dev/null
told=$(nrv718-preset show "$HOME/live.n91" --channel "In A" | head -n 1)
[ "$told" = "In A: mute off, phase 0, delay 20 ms, gain 0.4 dB" ] || fail "the preset tool reads \"$told\""
kill "$rack"
wait "$rack" || fail "the rack does not end well"
[ ! -L "$folder/com1" ] || fail "the rack leaves its link behind"
[ ! -s "$HOME/program.log" ] || fail "the program says on its streams: $(head -n 1 "$HOME/program.log")"
