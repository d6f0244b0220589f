#!/usr/bin/env bash
# Holds what is installed to what it promises: installed_test.sh CMAKE BUILD-FOLDER VERSION
set -u
here=$(dirname "${BASH_SOURCE[0]}")
. "$here/installing.sh"
share=$prefix/share

one_version() {
    local program
    for program in nrv718 nrv718-preset nrv718-rack; do
        expect "$program --version" "$program $version" "$("$prefix/bin/$program" --version)"
        grep -q "^\.TH .* \"NRV-718 $version\"$" "$share/man/man1/$program.1" || fail "the version of the page $program.1"
    done
    grep -q "<release version=\"$version\" date=\"20[0-9-]*\"/>" "$share"/metainfo/*.xml || fail "the version of the metainfo"
    grep -rl '@[A-Za-z_]*@' "$prefix/bin/nrv718" "$share/man" "$share/metainfo" | sed 's/^/FAILED: a value is missing in /' | grep . &&
        failures=$((failures + 1))
}

# Each option of a program's help is on its page.
pages() {
    local program option options orders
    for program in nrv718 nrv718-preset nrv718-rack; do
        options=$("$prefix/bin/$program" --help | grep -o -e '--[a-z-]*' | sort -u)
        [ -n "$options" ] || fail "$program --help tells of no option"
        for option in $options; do
            sed 's/\\-/-/g' "$share/man/man1/$program.1" | grep -q -e "$option" || fail "the page $program.1 does not tell of $option"
        done
    done
    orders=$(sed -n 's/^| `\([a-z]*\).*/\1/p' "$here/../../docs/virtual_rack.md")
    [ -n "$orders" ] || fail "the page of the virtual rack tells of no order"
    for order in $orders; do
        grep -q "\"\?$order\b" "$share/man/man1/nrv718-rack.1" || fail "the page nrv718-rack.1 does not tell of the order $order"
    done
}

desktop() {
    desktop-file-validate "$share"/applications/nrv718.desktop || fail "the desktop entry"
    appstreamcli validate --no-net "$share"/metainfo/*.xml >"$place/log" || fail "the metainfo: $(cat "$place/log")"
    cmp -s "$here/../../resources/pictures/nrv718.svg" "$share/icons/hicolor/scalable/apps/nrv718.svg" || fail "the drawing of the icon"
    local size icon
    for size in 16 22 24 32 48 64 128 256 512; do
        icon=$share/icons/hicolor/${size}x${size}/apps/nrv718.png
        # A PNG tells its width and height from byte 16 on.
        expect "the icon of $size" "$size $size" "$(od -An -j16 -N8 --endian=big -tu4 "$icon" | xargs)"
    done
}

# Every picture and every heading that the guide leads to is there.
guide() {
    local page=$share/doc/nrv718/html/index.html link
    [ -s "$page" ] || { fail "no guide"; return; }
    [ "$(grep -c '<img ' "$page")" -gt 0 ] || fail "the guide has no pictures"
    for link in $(grep -o 'src="[^"]*"\|href="[^":]*"' "$page" | cut -d'"' -f2); do
        case $link in
        \#*) grep -q "id=\"${link#\#}\"" "$page" || fail "the guide leads to $link, and it is not there" ;;
        *) [ -s "${page%/*}/$link" ] || fail "the guide leads to $link, and it is not there" ;;
        esac
    done
}

one_version
pages
desktop
guide
exit $((failures > 0))
