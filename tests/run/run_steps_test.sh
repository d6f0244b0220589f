#!/usr/bin/env bash
# Holds the steps of ./run to what they promise: run_steps_test.sh RACK TOUR SPEAKERS-CFG
set -u
rack_program=$1 tour_program=$2 speakers=$3
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
. tools/prepare.sh
. tools/run_steps.sh

. tests/support/checks.sh
bytes() { od -An -v -tx1 "$1" | tr -d ' \n'; }
# A step of its own, as in ./run: an exit ends this shell alone.
in_shell() { (set -e; "$@"); }
wait_until() {
    for _ in $(seq 400); do
        "$@" && return
        sleep 0.05
    done
    return 1
}
gone() { [ ! -e "$1" ] && [ ! -L "$1" ]; }

folder_files() {
    local folder=$place/files
    mkdir -p "$folder"
    : >"$folder/Speakers.cfg"
    in_shell prepare_folder "$folder" "$speakers"
    cmp -s "$folder/Speakers.cfg" "$speakers" || fail "an empty Speakers.cfg is replaced"
    expect "a new init.cfg" 0100000000000000000000000000 "$(bytes "$folder/init.cfg")"
    printf '\003\000abcdefghijkl' >"$folder/init.cfg"
    echo mine >"$folder/Speakers.cfg"
    in_shell prepare_folder "$folder" "$speakers"
    expect "an init.cfg that was there" 01006162636465666768696a6b6c "$(bytes "$folder/init.cfg")"
    expect "a Speakers.cfg of the user's" mine "$(cat "$folder/Speakers.cfg")"

    ln -s /dev/pts/ptmx "$folder/com1"
    in_shell prepare_folder "$folder" "$speakers"
    gone "$folder/com1" || fail "a link to a terminal that was left behind is removed"
    ln -s /dev/null "$folder/com1"
    in_shell prepare_folder "$folder" "$speakers"
    expect "a link to something else" /dev/null "$(readlink "$folder/com1")"
}

one_at_a_time() {
    local folder=$place/held
    (hold_folder "$folder"; : >"$place/holds"; exec sleep 30) &
    local holder=$!
    wait_until test -e "$place/holds" || fail "the folder is held"
    expect "a second run" "run_steps_test.sh: another ./run is at work in $folder" "$(in_shell hold_folder "$folder" 2>&1)"
    kill -KILL "$holder"
    wait "$holder" 2>/dev/null
    in_shell hold_folder "$folder" || fail "the folder is free after its holder was killed"
}

rack_by_its_word() {
    local folder=$place/rack
    mkdir -p "$folder"
    # What a killed run left behind: a log with the word in it, and a link to a terminal.
    echo "nrv718-rack: ready on /dev/pts/0" >"$folder/rack.log"
    printf '#!/bin/sh\nsleep 0.4\necho "nrv718-rack: ready on nothing"\nexec sleep 30\n' >"$place/slow"
    chmod +x "$place/slow"
    local begin=${EPOCHREALTIME/./}
    in_shell start_rack "$folder" "$place/slow"
    [ $((${EPOCHREALTIME/./} - begin)) -ge 400000 ] || fail "the word of an earlier rack is not taken for this one's"
    echo real >"$folder/com1"
    expect "a rack that does not start" \
        "run_steps_test.sh: the virtual rack did not start: nrv718-rack: $folder/com1 is there already and is no link" \
        "$(in_shell start_rack "$folder" "$rack_program" 2>&1)"
    rm "$folder/com1"

    (start_rack "$folder" "$rack_program" --state "$folder/rack.state" && [ -c "$folder/com1" ]) || fail "the rack makes its line"
    gone "$folder/com1" || fail "the rack ends with its shell"
    [ -s "$folder/rack.state" ] || fail "the rack's state is kept"
    (start_rack "$folder" "$rack_program"; : >"$place/up"; exec sleep 30) &
    local shell=$!
    wait_until test -e "$place/up" || fail "the rack is up"
    kill -KILL "$shell"
    wait "$shell" 2>/dev/null
    wait_until gone "$folder/com1" || fail "the rack ends with a shell that was killed"
}

displays() {
    expect "no display" "" "$(unset DISPLAY WAYLAND_DISPLAY; in_shell display_answers "$tour_program" && echo yes)"
    expect "a display that does not answer" \
        "The display :4711 does not answer, so the program goes through a tour without one." \
        "$(unset WAYLAND_DISPLAY QT_QPA_PLATFORM; DISPLAY=:4711 in_shell display_answers "$tour_program")"
    expect "a display that answers" yes "$(DISPLAY=:4711 QT_QPA_PLATFORM=offscreen in_shell display_answers "$tour_program" && echo yes)"
}

folder_files
one_at_a_time
rack_by_its_word
displays
exit $((failures > 0))
