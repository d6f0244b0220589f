#!/usr/bin/env bash
# run.sh FUZZER CORPUS SECONDS [OPTION...]: runs every input of the corpus, and for the rest of the time new ones made from them.
# What breaks is left in the folder that it is started in.
set -eu
fuzzer=$1 corpus=$2 seconds=$3
shift 3
new=$(mktemp -d)
trap 'rm -rf "$new"' EXIT
# The default keeps 256 MB of freed memory, which takes half of the time, and thirty callers of each allocation.
export ASAN_OPTIONS="quarantine_size_mb=16:malloc_context_size=5${ASAN_OPTIONS:+:$ASAN_OPTIONS}"
"$fuzzer" -max_total_time="$seconds" -timeout=25 -len_control=0 -entropic=0 -verbosity=0 -print_final_stats=1 "$@" "$new" "$corpus"
