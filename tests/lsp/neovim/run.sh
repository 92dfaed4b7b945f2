#!/bin/sh
# The end-to-end test with a real editor: Neovim, headless, starts fplc-lsp on
# the example definition (in a copy of the example installation) and checks a
# diagnostic, a jump to a definition and a hover.
# Usage: run.sh FPLC_LSP NVIM SOURCE_DIR
set -eu
lsp=$1
nvim=$2
source_dir=$3

work=$(mktemp -d "${TMPDIR:-/tmp}/fplc-lsp-neovim-XXXXXX")
trap 'rm -rf "$work"' EXIT INT TERM
cp -R "$source_dir/examples/installation" "$work/installation"

FPLC_LSP="$lsp" \
FPLC_DEFINITION="$work/installation/fahrplaene/beispiel.fpl" \
HOME="$work" XDG_CONFIG_HOME="$work/config" XDG_DATA_HOME="$work/data" \
XDG_STATE_HOME="$work/state" XDG_CACHE_HOME="$work/cache" \
  timeout 90 "$nvim" --headless -u NONE -i NONE --noplugin -n \
    -c "luafile $source_dir/tests/lsp/neovim/e2e.lua" </dev/null
