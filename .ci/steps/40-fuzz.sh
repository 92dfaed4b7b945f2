#!/usr/bin/env bash
# A short fuzz run of every target in fuzz/ (about 45 s each) under ASan+UBSan.
set -euo pipefail
cd "$(dirname "$0")/../.."

packages="clang libclang-rt-14-dev cmake make libtinyxml2-dev libcli11-dev nlohmann-json3-dev"
# The Makefile installs them (apt-get as root) or prints the line to run.
make -s deps PACKAGES="$packages"

cmake -S . -B build-ci-fuzz -DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_CXX_COMPILER=clang++ \
  -DFPLC_FUZZ=ON -DFPLC_TESTS=OFF
cmake --build build-ci-fuzz -j "$(nproc 2>/dev/null || echo 2)" --target fuzz_all
timeout 900 fuzz/run.sh build-ci-fuzz "${FPLC_FUZZ_SECONDS:-45}"
