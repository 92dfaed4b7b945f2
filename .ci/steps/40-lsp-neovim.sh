#!/usr/bin/env bash
# The language server in a real editor: builds fplc-lsp and runs the headless
# Neovim test on the example definition (tests/lsp/neovim/run.sh).
set -euo pipefail
cd "$(dirname "$0")/../.."

packages="cmake make g++ libtinyxml2-dev libcli11-dev nlohmann-json3-dev neovim"
# The Makefile installs them (apt-get as root) or prints the line to run.
make -s deps PACKAGES="$packages"

build=build-ci-lsp
cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DFPLC_TESTS=OFF -DFPLC_WERROR=ON
timeout 1200 cmake --build "$build" -j "$(nproc 2>/dev/null || echo 2)" --target fplc-lsp
# Bounded in memory as well as in time (run.sh stops Neovim after 90 s).
(ulimit -v 4000000; sh tests/lsp/neovim/run.sh "$PWD/$build/fplc-lsp" "$(command -v nvim)" "$PWD")
