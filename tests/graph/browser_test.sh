#!/usr/bin/env bash
# Loads the example's timetable page in headless Chromium: after its script has
# run, every line's graph holds one train path per train drawn on it, the table
# agrees, and a screenshot is taken.
#   browser_test.sh FPLC CHROMIUM WORKDIR
set -euo pipefail
fplc=$1 chromium=$2 work=$3
source_dir=$(cd "$(dirname "$0")/../.." && pwd)
rm -rf "$work" && mkdir -p "$work"

browser() {  # browser URL ARGS...: a fresh profile each time, no network
  local url=$1
  shift
  rm -rf "$work/profile"
  timeout 90 "$chromium" --headless --no-sandbox --disable-gpu --disable-quic --no-first-run \
    --disable-background-networking --disable-component-update --disable-sync \
    --user-data-dir="$work/profile" "$@" "$url" 2>"$work/chromium.log"
}

fail() {
  echo "browser_test: $*" >&2
  exit 1
}

# Per line "name count" of the train paths in a DOM dump.
paths_per_line() {
  awk '/<svg / { match($0, /data-strecke="[^"]*"/); line = substr($0, RSTART + 14, RLENGTH - 15) }
       /<path class="zug"/ && !/display: none/ { n[line]++ }
       END { for (l in n) print l, n[l] }' "$1" | sort
}

check_page() {  # check_page NAME FPLC-ARGS...
  local name=$1
  shift
  "$fplc" --quiet --check --root "$source_dir/examples/installation" --graph "$work/$name" "$@" \
    "$source_dir/examples/installation/fahrplaene/beispiel.fpl"
  browser "file://$work/$name/index.html" --dump-dom >"$work/$name.dom.html"
  grep -q '<body data-bereit="ja">' "$work/$name.dom.html" || fail "$name: the page's script did not run"
  # The page's script counts the table rows it shows; every shown train has its path.
  local shown
  shown=$(sed -n 's/.*<span id="anzahl">\([0-9]*\) von [0-9]* Zügen<.*/\1/p' "$work/$name.dom.html")
  [ -n "$shown" ] || fail "$name: no train count on the page"
  local lines
  lines=$(paths_per_line "$work/$name.dom.html")
  [ -n "$lines" ] || fail "$name: no train paths"
  echo "$name: $shown trains in the table; paths per line: $lines"
  while read -r line count; do
    [ "$count" = "$shown" ] || fail "$name: line $line has $count train paths, the table $shown trains"
    # The same number of paths as the line's own SVG file holds.
    local in_file
    in_file=$(grep -c '<path class="zug"' "$work/$name/strecke-$line.svg")
    [ "$count" = "$in_file" ] || fail "$name: line $line: $count paths on the page, $in_file in its file"
  done <<<"$lines"
}

# Every train of the example runs from Dornfeld to Bergheide or back: 49 trains
# of the definition and one copy that the automatic successors split off.
check_page alle
[ "$(paths_per_line "$work/alle.dom.html")" = "KBS_412 50" ] || fail "expected 50 paths on KBS_412"
# On Saturdays only the weekend series run: 8 + 8 trains.
check_page samstag --graph-day Sa
[ "$(paths_per_line "$work/samstag.dom.html")" = "KBS_412 16" ] || fail "expected 16 paths on Saturday"

browser "file://$work/alle/index.html" --hide-scrollbars --window-size=1100,1400 \
  --screenshot="$work/graph.png" >/dev/null
[ -s "$work/graph.png" ] || fail "no screenshot"
[ "$(head -c 8 "$work/graph.png" | od -An -tx1 | tr -d ' \n')" = 89504e470d0a1a0a ] ||
  fail "the screenshot is no PNG"
echo "browser_test: ok, screenshot $work/graph.png"
