#!/bin/sh
# qorin run --log against `program | tee log`: the same program (dd copying
# 256 MiB of 80-byte lines from a file in the page cache, in 64 KiB blocks
# or one line per write call), the screen sent to /dev/null, each pair
# measured back to back, REPETITIONS times. Prints each time and the ratio
# tee/qorin (above 1: qorin is faster).
#
# Usage: bench/run_vs_tee.sh build/linux/bin/qorin [REPETITIONS] [WORKDIR]
set -eu
qorin=$(realpath "$1")
repetitions=${2:-5}
work=${3:-$(mktemp -d)}
data=$work/lines.txt
log=$work/run.log
line=$(printf '%079d' 0)
# 256 MiB: 3,355,443 lines of 80 bytes.
lines=3355443
yes "$line" | head -n $lines >"$data"
cat "$data" >/dev/null

seconds() {
  start=$(date +%s.%N)
  "$@" >/dev/null
  end=$(date +%s.%N)
  echo "$end - $start" | bc -l
}

for block in 65536 80; do
  for i in $(seq "$repetitions"); do
    rm -f "$log"
    tee_time=$(seconds sh -c "dd if='$data' bs=$block status=none | tee '$log'")
    rm -f "$log"
    qorin_time=$(seconds "$qorin" run --log "$log" -- dd if="$data" bs=$block status=none)
    test "$(wc -c <"$log")" -eq $((82 * lines)) || echo "log size $(wc -c <"$log")" >&2
    printf 'block %5d  tee %6.3f s  qorin %6.3f s  ratio %.2f\n' "$block" "$tee_time" "$qorin_time" \
      "$(echo "$tee_time / $qorin_time" | bc -l)"
  done
done
rm -f "$data" "$log"
