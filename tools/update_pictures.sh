#!/usr/bin/env bash
# Takes the documents' pictures from those of a tour: tools/update_pictures.sh [FOLDER]
set -eu
cd "$(dirname "${BASH_SOURCE[0]}")/.."
from=${1:-run-folder/pictures}
mkdir -p docs/pictures
take() { cp "$(ls "$from"/[0-9][0-9]-"$1".png | head -n 1)" "docs/pictures/$2.png"; }

for name in splash search connection connection-list connection-twenty list window gains overview output input delays names store read \
    copy-output copy-input password; do
    take "$name" "$name"
done
take point-in-hand point
take locked-window locked
take edit-menu edit-menu
take undone undone
