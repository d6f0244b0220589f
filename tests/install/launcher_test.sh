#!/usr/bin/env bash
# Holds the launcher to what it promises: launcher_test.sh CMAKE BUILD-FOLDER VERSION
set -u
. "$(dirname "${BASH_SOURCE[0]}")/installing.sh"
launcher=$prefix/bin/nrv718
program=$prefix/libexec/nrv718/nrv718
supplied=$prefix/share/nrv718/Speakers.cfg
export HOME=$place/home
unset XDG_DATA_HOME
mkdir "$HOME"
own=$HOME/.local/share/nrv718

# The real program, until it works in the user's folder.
real_program() {
    QT_QPA_PLATFORM=offscreen "$launcher" 2>/dev/null &
    local process=$!
    for _ in $(seq 400); do
        [ "$(readlink "/proc/$process/exe")" = "$program" ] && break
        sleep 0.05
    done
    sleep 0.5
    expect "what the launcher becomes" "$program" "$(readlink "/proc/$process/exe")"
    expect "the folder of the program" "$own" "$(readlink "/proc/$process/cwd")"
    kill "$process"
    wait "$process" 2>/dev/null
    cmp -s "$own/Speakers.cfg" "$supplied" || fail "the first start brings Speakers.cfg"
    [ -d "$own/preset" ] || fail "the first start makes the folder for presets"
}

# From here on the program tells only where it was started, and with what.
fake_program() {
    printf '#!/bin/sh\necho "in $(pwd) with $#"\n' >"$program"
}

folders() {
    expect "a second start" "in $own with 0" "$("$launcher")"
    expect "another folder" "in $place/a b with 0" "$("$launcher" --folder "$place/a b")"
    cmp -s "$place/a b/Speakers.cfg" "$supplied" || fail "another folder gets Speakers.cfg"
    expect "a folder by its sign" "in $place/c with 0" "$("$launcher" --folder="$place/c")"
    expect "a folder by a way from here" "in $place/-d with 0" "$(cd "$place" && "$launcher" --folder -d)"
    expect "the folder for data" "in $place/data/nrv718 with 0" "$(XDG_DATA_HOME=$place/data "$launcher")"
    expect "a folder for data that is not a whole path" "in $own with 0" "$(XDG_DATA_HOME=data "$launcher")"
    ln -s "$launcher" "$place/link"
    expect "a link to the launcher" "in $own with 0" "$("$place/link")"
}

users_files() {
    echo mine >"$own/Speakers.cfg"
    echo mine >"$own/preset/hall.n91"
    "$launcher" >/dev/null
    expect "a Speakers.cfg of the user's" mine "$(cat "$own/Speakers.cfg")"
    expect "a preset of the user's" mine "$(cat "$own/preset/hall.n91")"
    : >"$own/Speakers.cfg"
    "$launcher" >/dev/null
    cmp -s "$own/Speakers.cfg" "$supplied" || fail "an empty Speakers.cfg is replaced"
    expect "the files of the folder" "Speakers.cfg preset" "$(ls "$own" | xargs)"
}

refusals() {
    : >"$place/file"
    expect "a folder below a file" "nrv718: the folder $place/file/x cannot be made: Not a directory" \
        "$("$launcher" --folder "$place/file/x" 2>&1)"
    expect "a file for a folder" "nrv718: the folder $place/file cannot be made: File exists" "$("$launcher" --folder "$place/file" 2>&1)"
    mkdir -m 755 "$place/shut"
    : >"$place/shut/preset"
    expect "a file for the presets" "nrv718: the folder $place/shut/preset cannot be made: File exists" \
        "$("$launcher" --folder "$place/shut" 2>&1)"
    "$launcher" --folder "$place/file" 2>/dev/null
    expect "the exit of that" 1 $?
    chmod 000 "$place/shut"
    local anyone=()
    if [ "$(id -u)" -eq 0 ]; then
        chmod 755 "$place" "$HOME"
        anyone=(setpriv --reuid=65534 --clear-groups)
    fi
    expect "a folder that is shut" "nrv718: the folder $place/shut cannot be entered" "$("${anyone[@]}" "$launcher" --folder "$place/shut" 2>&1)"
    expect "no home" "nrv718: there is no home folder; name a folder with --folder" "$(env -u HOME "$launcher" 2>&1)"
    expect "an unknown option" 'nrv718: unknown option "--style"; try --help' "$("$launcher" --style 2>&1)"
    "$launcher" --style 2>/dev/null
    expect "the exit of wrong use" 2 $?
    expect "no value" "nrv718: --folder: its value is missing; try --help" "$("$launcher" --folder 2>&1)"
    expect "an empty value" "nrv718: --folder: its value is empty; try --help" "$("$launcher" --folder= 2>&1)"
    rm "$program"
    expect "no program" "nrv718: the program is not where it was installed: $prefix/bin/../libexec/nrv718/nrv718" "$("$launcher" 2>&1)"
}

real_program
fake_program
folders
users_files
refusals
exit $((failures > 0))
