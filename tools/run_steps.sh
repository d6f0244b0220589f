# Sourced by ./run, and by its test: the steps between the built tree and the program on its virtual rack.
# give_up comes from tools/prepare.sh.

# Keeps the folder for this process and the program that it starts; a second ./run must not work in it.
hold_folder() {
    mkdir -p "$1/preset"
    exec 9>"$1/run.lock"
    flock -n 9 || give_up "another ./run is at work in $1"
}

# What the program wants to find: Speakers.cfg, and COM 1 as the port that its connection dialog opens with.
prepare_folder() {
    local folder=$1 speakers=$2
    [ -s "$folder/Speakers.cfg" ] || cp "$speakers" "$folder/Speakers.cfg"
    printf '\001\000' | dd of="$folder/init.cfg" conv=notrunc status=none
    truncate -s '>14' "$folder/init.cfg"
    # A rack that was killed left its link behind, and by now it may lead to another process's terminal.
    if [[ -L "$folder/com1" && "$(readlink "$folder/com1")" == /dev/pts/* ]]; then
        rm "$folder/com1"
    fi
}

# Starts the rack, with more options if told, and waits for its own word. It ends with this shell, however that ends.
start_rack() {
    local folder=$1 program=$2
    shift 2
    rm -f "$folder/rack.log"
    setpriv --pdeathsig TERM "$program" --ids 0,1,2,5,9 --presets --link "$folder/com1" "$@" \
        >"$folder/rack.log" 2>&1 9>&- &
    rack=$!
    trap stop_rack EXIT
    for _ in $(seq 100); do
        grep -qs '^nrv718-rack: ready on' "$folder/rack.log" && return
        kill -0 "$rack" 2>/dev/null || give_up "the virtual rack did not start: $(tail -n 1 "$folder/rack.log")"
        sleep 0.1
    done
    give_up "the virtual rack made no line; see $folder/rack.log"
}

stop_rack() {
    kill "$rack" 2>/dev/null || true
    wait "$rack" 2>/dev/null || true
}

# True when there is a display and it answers to the program's own toolkit; says so when it does not.
display_answers() {
    local tour=$1
    [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ] || return 1
    (ulimit -c 0; timeout 10 "$tour" --try-display || exit 1) >/dev/null 2>&1 && return
    echo "The display ${WAYLAND_DISPLAY:-$DISPLAY} does not answer, so the program goes through a tour without one."
    return 1
}

work_at_the_display() {
    local folder=$1 program=$2
    cat <<'TEXT'
The virtual rack answers on COM 1 with devices of the IDs 0, 1, 2, 5 and 9.
In the dialog "Select":
  to find the device of ID 0: ">>"
  to find all of them: "RS485", then "with more device", then ">>"
In the list that follows, a double click on a row opens the window of its device.
TEXT
    cd "$folder"
    "$program"
}

go_through_the_tour() {
    local folder=$1 tour=$2
    mkdir -p "$folder/pictures"
    cd "$folder"
    echo "The tour, step by step, with the number of the last picture taken:"
    # The platform without a screen warns of what it cannot do.
    QT_QPA_PLATFORM=offscreen QT_LOGGING_RULES='default.warning=false' XDG_RUNTIME_DIR="${XDG_RUNTIME_DIR:-$folder}" \
        "$tour" pictures
}
