#!/usr/bin/env bash
# Huge and hostile inputs through fplc, each under a memory limit (4 GiB of address
# space) and a time limit (60 s); fails when one ends in a crash, an abort or the limit.
set -euo pipefail
cd "$(dirname "$0")/../.."
make build BUILD_DIR=build-ci-adversarial BUILD_TYPE=Release CMAKE_FLAGS="-DFPLC_TESTS=OFF"
timeout 1200 tests/adversarial/run.sh build-ci-adversarial/fplc 4096 60
