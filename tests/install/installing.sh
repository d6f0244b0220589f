# Sourced by the tests of this folder: installs the tree of CMAKE BUILD-FOLDER into a scratch folder, "$place/prefix".
cmake=$1 build=$2 version=$3
. "$(dirname "${BASH_SOURCE[0]}")/../support/checks.sh"
prefix=$place/prefix
"$cmake" --install "$build" --prefix "$prefix" >"$place/log" 2>&1 || {
    cat "$place/log"
    exit 1
}
