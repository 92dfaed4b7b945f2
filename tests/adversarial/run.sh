#!/usr/bin/env bash
# The huge and hostile inputs, each run through fplc under a memory limit and a
# time limit. Prints a table (input, outcome, time, peak memory) in Markdown and
# fails when an input ends in anything but a message or a normal result: a
# signal, an abort, the time limit or an exit status other than 0 and 1.
#
# Usage: tests/adversarial/run.sh FPLC [MEMORY_MB] [SECONDS]
#   defaults: 4096 MB of address space and 60 s per input.
set -uo pipefail
fplc="$(realpath "$1")"
memory_mb="${2:-4096}"
seconds="${3:-60}"
here="$(cd "$(dirname "$0")" && pwd)"
work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT

# A minimal installation: the root marker is all fplc needs to accept --root.
mkdir -p "$work/core/configTemplate"
cp "$here/../../examples/installation/core/configTemplate/basesettings.xml" "$work/core/configTemplate/"
mkfifo "$work/fifo"
ln -s /dev/zero "$work/zero"
ln -s /proc/self/mem "$work/mem"

header='Quorvel FplDef 1'
definition() { printf '%s\n' "$header" > "$work/$1.fpl"; cat >> "$work/$1.fpl"; }

# 1. A loop of 2^32 numbers.
definition loop_2_32 <<'X'
M (SCHLEIFE 0 4294967295 1) WENDE
X
# 2. An include whose reading fails with an I/O error.
definition dat_io_error <<< 'DAT "/mem"'
# 3. Devices and FIFOs without a writer.
definition dat_dev_zero <<< 'DAT "/zero"'
definition dat_fifo <<< 'DAT "/fifo"'
definition aa_fifo <<< 'AA N "/fifo" { }'
definition bib_fifo <<< 'BIB 1 "/fifo"'
# 4. 63 files, each including the next one twice.
for i in $(seq 1 62); do
  printf '%s\nDAT "/inc%d.fpl"\nDAT "/inc%d.fpl"\n' "$header" $((i + 1)) $((i + 1)) > "$work/inc$i.fpl"
done
printf '%s\nSET Gattung A\n' "$header" > "$work/inc63.fpl"
definition include_doubling <<< 'DAT "/inc1.fpl"'
# 5. M over 100,000 numbers after 100,000 trains.
{
  printf 'BTR XA Adorf\nBTR XB Bdorf\nZL R {\n  XA . G1 H - 0:00\n  XB . G1 H 0:10 -\n}\nSET Zuglauf R\n'
  for k in $(seq 0 9); do printf 'TZ %d %d 1 0:00 0:01\n' $((k * 10000 + 1)) $((k * 10000 + 10000)); done
  printf 'M (SCHLEIFE 1 100000 1) WENDE\n'
} | definition m_100000_trains
# 6. Layouts with many operating points and signals that name no point.
layout() {
  {
    printf '<aussenanlage>\n'
    for i in $(seq 1 "$1"); do printf '<betriebsstelle name="P%d" id="%d"/>\n' "$i" "$i"; done
    for i in $(seq 1 "$1"); do printf '<signal hauptsignaltyp="1"/>\n'; done
    printf '</aussenanlage>\n'
  } > "$work/$2.stwa"
  definition "$2" <<< "AA N \"/$2.stwa\" { }"
}
layout 50000 layout_50000
layout 500000 layout_500000
# 7. A line of 50 MB of "-".
{ printf '%s\n' "$header"; head -c 52428800 /dev/zero | tr '\0' '-'; printf '\n'; } > "$work/dash_line_50mb.fpl"

cases="loop_2_32 dat_io_error dat_dev_zero dat_fifo aa_fifo bib_fifo include_doubling
m_100000_trains layout_50000 layout_500000 dash_line_50mb"

failed=0
printf '| Input | Outcome | Time (s) | Peak memory (MB) |\n|---|---|---:|---:|\n'
for name in $cases; do
  /usr/bin/time -f '%e %M' -o "$work/$name.time" \
    timeout --signal=KILL "$seconds" prlimit --as=$((memory_mb * 1024 * 1024)) \
    "$fplc" --root "$work" --check --no-validate "$work/$name.fpl" > /dev/null 2> "$work/$name.err"
  status=$?
  read -r elapsed peak_kb < <(tail -n 1 "$work/$name.time")
  message="$(grep -E ': (Fehler|Warnung): |^fplc: ' "$work/$name.err" | head -n 1 | sed "s|$work|…|g" | cut -c 1-110)"
  case $status in
    0) outcome="ok" ;;
    1) outcome="exit 1: ${message}" ;;
    *) outcome="FAILED (status $status) ${message}"; failed=1 ;;
  esac
  printf '| %s | %s | %s | %d |\n' "$name" "$outcome" "$elapsed" $((peak_kb / 1024))
done
exit $failed
