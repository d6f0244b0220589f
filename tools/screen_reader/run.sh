#!/usr/bin/env bash
# Starts the built program under a virtual display with a real accessibility bus, and lets walk.py read out and work
# every tab of a device on the virtual rack:  tools/screen_reader/run.sh BUILD FOLDER
# Needs Debian's xvfb, openbox, dbus, at-spi2-core and python3-pyatspi.
set -eu
build=$(realpath "$1")
folder=$(realpath "$2")
here=$(realpath "$(dirname "${BASH_SOURCE[0]}")")
if [ -z "${SCREEN_READER_BUS:-}" ]; then
    SCREEN_READER_BUS=1 exec dbus-run-session -- "$here/run.sh" "$build" "$folder"
fi
export QT_QPA_PLATFORM=xcb XDG_RUNTIME_DIR="$folder/runtime" QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1
mkdir -p "$folder/preset"
mkdir -p -m 700 "$XDG_RUNTIME_DIR"
trap 'kill $(jobs -p) 2>/dev/null || true' EXIT
exec 8>"$folder/display"
Xvfb -displayfd 8 -screen 0 1600x1000x24 2>/dev/null &
until [ -s "$folder/display" ]; do sleep 0.1; done
DISPLAY=:$(cat "$folder/display")
export DISPLAY
openbox &
/usr/libexec/at-spi-bus-launcher --launch-immediately 2>/dev/null &
. "$here/../run_steps.sh"
prepare_folder "$folder" "$build/resources/Speakers.cfg"
"$build/simulator/nrv718-rack" --ids 0,1,2,5,9 --presets --link "$folder/com1" >"$folder/rack.log" 2>&1 &
sleep 1
(cd "$folder" && exec "$build/src/ui/nrv718" >"$folder/program.log" 2>&1) &
/usr/bin/python3 "$here/walk.py"
