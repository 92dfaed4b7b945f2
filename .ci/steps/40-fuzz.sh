#!/usr/bin/env bash
# A short fuzz run of every target in fuzz/ (about 45 s each) under ASan+UBSan.
set -euo pipefail
cd "$(dirname "$0")/../.."

packages="clang libclang-rt-14-dev cmake make libtinyxml2-dev libcli11-dev nlohmann-json3-dev"
missing=""
for p in $packages; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' || missing="$missing $p"
done
if [ -n "$missing" ]; then
  if [ "$(id -u)" = 0 ]; then
    apt-get update && DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends $missing
  else
    echo "Missing Debian packages:$missing" >&2
    exit 1
  fi
fi

cmake -S . -B build-ci-fuzz -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_CXX_COMPILER=clang++ \
  -DFPLC_FUZZ=ON -DFPLC_TESTS=OFF
cmake --build build-ci-fuzz -j "$(nproc 2>/dev/null || echo 2)" --target fuzz_all
timeout 900 fuzz/run.sh build-ci-fuzz "${FPLC_FUZZ_SECONDS:-45}"
