#!/usr/bin/env bash
# Checks the packages of a folder, installs them in a clean Debian 12, works with them there and removes them:
# tools/package_test.sh FOLDER. Needs root. The clean Debian is made at the first time, and kept in build/clean-debian.
set -euo pipefail
packages=$(realpath "$1")
cd "$(dirname "${BASH_SOURCE[0]}")/.."
. tools/prepare.sh

[ "$(id -u)" -eq 0 ] || exec sudo -n "$PWD/tools/package_test.sh" "$packages" || give_up "it needs root, or sudo without a password"
need_packages appstream debootstrap desktop-file-utils lintian
if [ "${NRV718_INSIDE:-}" != yes ]; then
    # What is mounted and started below goes when this script does.
    NRV718_INSIDE=yes exec unshare --mount --pid --fork --kill-child "$PWD/tools/package_test.sh" "$packages"
fi

clean=$PWD/build/clean-debian
base=$clean/base
root=$clean/root
inside() { chroot "$root" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8 "$@"; }
quietly() { "$@" >"$clean/log" 2>&1 </dev/null || { tail -n 20 "$clean/log"; give_up "failed: $*"; }; }

# A minimal Debian with a display and a user, as they are before our packages come.
make_base() {
    echo "Making a clean Debian 12 (once)"
    rm -rf "$base" "$base.new"
    quietly debootstrap --variant=minbase bookworm "$base.new" ${NRV718_DEBIAN_MIRROR:+"$NRV718_DEBIAN_MIRROR"}
    root=$base.new
    mount_into_root
    quietly inside apt-get install -y --no-install-recommends libglib2.0-bin openbox procps xdotool xvfb
    quietly inside useradd --create-home --shell /bin/bash user
    quietly inside apt-get clean
    umount -l "$root/proc" "$root/dev"
    mv "$base.new" "$base"
    root=$clean/root
}

mount_into_root() {
    mount -t proc proc "$root/proc"
    mount --rbind /dev "$root/dev"
}

# Names, rights, owners, links and contents of all files.
list_files() {
    inside find /usr /etc -printf '%p %y %m %u:%g %l\n' | sort
    inside find /usr /etc -type f -exec sha256sum {} + | sort -k 2
}

checks() {
    local unpacked=$clean/unpacked package
    for package in "$packages"/*.deb; do
        lintian --allow-root --fail-on error,warning --tag-display-limit 0 "$package"
    done
    rm -rf "$unpacked"
    dpkg-deb -x "$packages"/nrv718_*.deb "$unpacked"
    desktop-file-validate "$unpacked"/usr/share/applications/*.desktop
    appstreamcli validate --no-net "$unpacked"/usr/share/metainfo/*.xml
}

# The tarball holds what git keeps, and nothing else.
sources() {
    local tarball=("$packages"/nrv718-*.tar.xz)
    git -c safe.directory="$PWD" rev-parse --git-dir >/dev/null 2>&1 || return 0
    diff <(git -c safe.directory="$PWD" ls-files | sort) <(tar -tf "${tarball[0]}" | grep -v '/$' | sed 's,^[^/]*/,,' | sort) >"$clean/log" ||
        give_up "the tarball is not what git keeps: $(grep -m 1 '^[<>]' "$clean/log")"
}

mkdir -p "$clean"
[ -n "$(ls "$packages"/*.deb 2>/dev/null)" ] || give_up "no packages in $packages"
checks
sources
[ -e "$base" ] || make_base

rm -rf "$root" "$clean/changed" "$clean/work"
mkdir -p "$root" "$clean/changed" "$clean/work"
mount -t overlay overlay -o "lowerdir=$base,upperdir=$clean/changed,workdir=$clean/work" "$root"
mount_into_root

list_files >"$clean/before"
mkdir "$root/packages"
cp "$packages"/*.deb "$root/packages"
echo "Installing"
quietly inside apt-get update
quietly inside sh -c 'apt-get install -y --no-install-recommends /packages/*.deb'
for program in nrv718 nrv718-preset nrv718-rack; do
    inside "$program" --version
done
echo "Working"
cp tools/package_steps.sh "$root/packages"
inside setpriv --reuid=user --regid=user --init-groups env HOME=/home/user USER=user bash -c 'cd && /packages/package_steps.sh' ||
    give_up "the installed programs do not work"
echo "Removing"
quietly inside apt-get purge -y nrv718 nrv718-preset nrv718-rack
quietly inside apt-get autoremove -y --purge
list_files >"$clean/after"
diff "$clean/before" "$clean/after" >"$clean/log" || give_up "left behind: $(grep -m 1 '^[<>]' "$clean/log") (all in $clean/log)"
[ -s "$root/home/user/.local/share/nrv718/Speakers.cfg" ] || give_up "the user's own files are gone"
rm -rf "$clean/unpacked"
echo "The packages come, work and go"
