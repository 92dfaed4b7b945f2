#!/usr/bin/env bash
# The language server in a real editor: builds fplc-lsp and runs the headless
# Neovim test on the example definition (tests/lsp/neovim/run.sh).
set -euo pipefail
cd "$(dirname "$0")/../.."

packages="cmake make g++ libtinyxml2-dev libcli11-dev nlohmann-json3-dev neovim"
missing=""
for p in $packages; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed' ||
    missing="$missing $p"
done
if [ -n "$missing" ]; then
  if [ "$(id -u)" = 0 ]; then
    apt-get update
    DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends $missing
  else
    echo "Missing Debian packages:$missing (run as root to install them)" >&2
    exit 1
  fi
fi

build=build-ci-lsp
cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo -DFPLC_TESTS=OFF -DFPLC_WERROR=ON
timeout 1200 cmake --build "$build" -j "$(nproc 2>/dev/null || echo 2)" --target fplc-lsp
# Bounded in memory as well as in time (run.sh stops Neovim after 90 s).
(ulimit -v 4000000; sh tests/lsp/neovim/run.sh "$PWD/$build/fplc-lsp" "$(command -v nvim)" "$PWD")
