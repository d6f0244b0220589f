#!/bin/sh
# Makes a page for a browser: make_page.sh CMARK-GFM MARKDOWN HTML
set -e
here=$(dirname -- "$0")
new=$3.new
mkdir -p -- "$(dirname -- "$3")"
"$1" -e table "$2" >"$new.body"
{
    cat -- "$here/page_head.html"
    awk -f "$here/page.awk" "$new.body"
    printf '</body>\n</html>\n'
} >"$new"
rm -- "$new.body"
mv -- "$new" "$3"
