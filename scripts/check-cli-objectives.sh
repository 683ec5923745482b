#!/usr/bin/env bash
# Solves every Netlib and MIPLIB 3 instance of the shared benchmark index twice, with
# `zelq solve` (the object library) and with zelq-regress (the engine's C interface), under the
# same time limit, and compares the objectives the two print.
#
#   scripts/check-cli-objectives.sh [TIME_LIMIT_SECONDS]     (default 60)
#
# BUILD_DIR (default build/release) holds the programs; SETS (default "netlib-lp miplib3")
# names the index sets. Skips cleanly when ../shared/data is absent.
set -euo pipefail
cd "$(dirname "$0")/.."
data=../shared/data
if [[ ! -f $data/INDEX.tsv ]]; then
  echo "check-cli-objectives: $data/INDEX.tsv not found, nothing to compare"
  exit 0
fi
limit=${1:-60}
build=${BUILD_DIR:-build/release}
sets=${SETS:-netlib-lp miplib3}
zelq=$build/tools/zelq
regress=$build/tools/zelq-regress
for bin in "$zelq" "$regress"; do
  [[ -x $bin ]] || { echo "check-cli-objectives: $bin not built" >&2; exit 1; }
done

set_args=()
for s in $sets; do set_args+=(--set "$s"); done
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# zelq-regress lists the instances in index order; the same filter over the index gives the
# file of each of its rows.
"$regress" "$data/INDEX.tsv" "$data" --time-limit "$limit" "${set_args[@]}" \
  | sed '1d;$d' >"$work/regress.tsv" || true
awk -F'\t' -v sets=" $sets " 'NR > 1 && $0 != "" && $1 !~ /^#/ && index(sets, " " $1 " ") {
  print $2 }' "$data/INDEX.tsv" >"$work/files.txt"
if [[ $(wc -l <"$work/regress.tsv") -ne $(wc -l <"$work/files.txt") ]]; then
  echo "check-cli-objectives: zelq-regress listed a different number of instances" >&2
  exit 1
fi

# Same when both print the same text, or numbers within 1e-9 relative.
same_value() {
  awk -v a="$1" -v b="$2" 'BEGIN {
    if (a == b) exit 0
    if (a !~ /^[-+0-9.eE]+$/ || b !~ /^[-+0-9.eE]+$/) exit 1
    d = a - b; if (d < 0) d = -d
    m = a < 0 ? -a : a; if (m < 1) m = 1
    exit !(d <= 1e-9 * m) }'
}

printf '%-12s %-14s %-12s %-18s %-18s %s\n' set name regress zelq-regress "zelq solve" verdict
same=0 differ=0
while IFS=$'\t' read -r set name status objective _ && IFS= read -r file <&3; do
  cli_out=$("$zelq" solve "$data/$file" "TimeLimit=$limit" Logging=0 2>&1 </dev/null) && rc=0 || rc=$?
  if [[ $rc -eq 0 ]]; then
    cli=$(sed -n 's/^Objective: //p' <<<"$cli_out")
  else
    cli="exit-$rc"
  fi
  if same_value "$objective" "$cli"; then verdict=same; same=$((same + 1))
  else verdict=DIFFER; differ=$((differ + 1)); fi
  printf '%-12s %-14s %-12s %-18s %-18s %s\n' "$set" "$name" "$status" "$objective" "$cli" \
    "$verdict"
done <"$work/regress.tsv" 3<"$work/files.txt"
echo "summary: $same same, $differ differ (time limit ${limit} s)"
