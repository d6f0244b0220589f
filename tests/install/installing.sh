# Sourced by the tests of this folder: installs the tree of CMAKE BUILD-FOLDER into a scratch folder, "$place/prefix".
cmake=$1 build=$2 version=$3
place=$(mktemp -d)
trap 'rm -rf "$place"' EXIT
prefix=$place/prefix
failures=0
fail() {
    echo "FAILED: $*"
    failures=$((failures + 1))
}
expect() { # what it is about, expected, seen
    [ "$2" = "$3" ] || fail "$1: expected \"$2\", saw \"$3\""
}
"$cmake" --install "$build" --prefix "$prefix" >"$place/log" 2>&1 || {
    cat "$place/log"
    exit 1
}
