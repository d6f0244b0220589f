#!/usr/bin/env bash
# Which lines and branches of the core its tests come by: tools/coverage.sh [FILE], with the page for each file in
# build/coverage/page. Needs gcovr.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
. tools/prepare.sh

need_packages gcovr "${build_packages[@]}" "${test_packages[@]}"
cmake --preset coverage >/dev/null
cmake --build --preset coverage
find build/coverage -name '*.gcda' -delete
(cd build/coverage && tests/nrv718_core_tests --gtest_brief=1)
mkdir -p build/coverage/page
# What only throws out of a library call is no branch of ours.
gcovr --root . --filter 'src/' --exclude 'src/ui/' --exclude-throw-branches --exclude-unreachable-branches \
    --html-details build/coverage/page/index.html --branches --print-summary --txt "${1:-/dev/stdout}" build/coverage
