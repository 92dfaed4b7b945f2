#!/usr/bin/env bash
# The timetable page in a real browser: builds fplc, writes the example's graphs
# and loads index.html in headless Chromium (Debian's package), checking the
# drawn train paths and taking a screenshot.
set -euo pipefail
cd "$(dirname "$0")/../.."

packages="chromium fonts-dejavu-core"
missing=""
for p in $packages; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing="$missing $p"
done
if [ -n "$missing" ]; then
  if [ "$(id -u)" != 0 ]; then
    echo "graph-browser: missing Debian packages:$missing (apt-get install$missing)" >&2
    exit 1
  fi
  apt-get update
  DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends $missing
fi

make deps
# Warnings are the business of the other CI builds; this one only needs fplc.
cmake -S . -B build-ci-graph -DCMAKE_BUILD_TYPE=Debug -DFPLC_TESTS=OFF
timeout 900 cmake --build build-ci-graph -j 2 --target fplc
# No ulimit -v: Chromium reserves far more address space than it uses.
timeout 300 tests/graph/browser_test.sh build-ci-graph/fplc "$(command -v chromium)" \
  "$PWD/build-ci-graph/graph-browser"
