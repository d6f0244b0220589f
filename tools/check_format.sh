#!/usr/bin/env bash
# Fails on a file that is not in the tree's own format (.clang-format), and names it.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
. tools/prepare.sh

list=$(mktemp)
trap 'rm -f "$list"' EXIT
find src simulator tool tests tour bench tools \( -name '*.h' -o -name '*.cpp' \) -print0 >"$list"
[ -s "$list" ] || give_up "no files found"
xargs -0 -n 50 -P 2 clang-format-14 --dry-run -Werror --ferror-limit=1 <"$list" ||
    give_up "not in the tree's format; clang-format-14 -i FILE puts it right"
