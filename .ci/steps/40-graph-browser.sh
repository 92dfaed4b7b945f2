#!/usr/bin/env bash
# The timetable page in a real browser: builds fplc, writes the example's graphs
# and loads index.html in headless Chromium (Debian's package), checking the
# drawn train paths and taking a screenshot.
set -euo pipefail
cd "$(dirname "$0")/../.."

packages="chromium fonts-dejavu-core"
# The Makefile installs them (apt-get as root) or prints the line to run.
make -s deps PACKAGES="$packages"

make deps
# Warnings are the business of the other CI builds; this one only needs fplc.
cmake -S . -B build-ci-graph -DCMAKE_BUILD_TYPE=Debug -DFPLC_TESTS=OFF
timeout 900 cmake --build build-ci-graph -j 2 --target fplc
# No ulimit -v: Chromium reserves far more address space than it uses.
timeout 300 tests/graph/browser_test.sh build-ci-graph/fplc "$(command -v chromium)" \
  "$PWD/build-ci-graph/graph-browser"
