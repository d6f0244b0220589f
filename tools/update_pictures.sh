#!/usr/bin/env bash
# Takes the pictures that the documents show from those of a tour, and no other: tools/update_pictures.sh [FOLDER]
set -eu
cd "$(dirname "${BASH_SOURCE[0]}")/.."
from=${1:-run-folder/pictures}
rm -f docs/pictures/*.png
for name in $(grep -hoE 'pictures/[a-z0-9-]+\.png' README.md docs/*.md | sort -u); do
    name=$(basename "$name" .png)
    # Where the tour took one of that name twice, the first.
    cp "$(find "$from" -name "[0-9][0-9]-$name.png" | sort | head -n 1)" "docs/pictures/$name.png"
done
