# Sourced by ./run and ./test: says what is wrong in one line, and installs what is missing.

give_up() {
    echo "${0##*/}: $*" >&2
    exit 1
}

is_installed() {
    [ "$(dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

# Debian's packages of these names; nothing happens when all are there.
need_packages() {
    local missing=() package as_root=() log
    command -v dpkg-query >/dev/null || give_up "this is no Debian; install by hand: $*"
    for package in "$@"; do
        is_installed "$package" || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null && sudo -n true 2>/dev/null ||
            give_up "these packages are missing and there is neither root nor sudo without a password: ${missing[*]}"
        as_root=(sudo -n)
    fi
    echo "Installing ${missing[*]}"
    log=$(mktemp)
    if ! { "${as_root[@]}" apt-get update -qq &&
        "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}"; } \
        </dev/null >"$log" 2>&1; then
        local why
        why=$(grep -m 1 '^E:' "$log" || tail -n 1 "$log")
        rm -f "$log"
        give_up "the packages could not be installed (is there a network?): $why"
    fi
    rm -f "$log"
}

build_packages=(g++ cmake ninja-build qt6-base-dev qt6-serialport-dev qt6-svg-dev libcli11-dev nlohmann-json3-dev fonts-noto-core)
test_packages=(libgtest-dev libgmock-dev clang-format-14 python3 appstream cmark-gfm desktop-file-utils)
fuzz_packages=(clang-14 libclang-rt-14-dev)
