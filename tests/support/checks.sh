# Sourced by tests that are scripts: a scratch folder "$place", and what counts "$failures".
place=$(mktemp -d)
trap 'rm -rf "$place"' EXIT
failures=0
fail() {
    echo "FAILED: $*"
    failures=$((failures + 1))
}
expect() { # what it is about, expected, seen
    [ "$2" = "$3" ] || fail "$1: expected \"$2\", saw \"$3\""
}
