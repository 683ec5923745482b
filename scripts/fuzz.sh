#!/usr/bin/env bash
# Runs the libFuzzer targets of fuzz/ (built by the "fuzz" preset: clang, ASan + UBSan).
#
#   scripts/fuzz.sh ci [SECONDS]              every target for SECONDS (default 15) from a
#                                             temporary copy of its seeds; non-zero on any finding
#   scripts/fuzz.sh run TARGET [-runs=N|SECONDS]
#                                             one target (e.g. fuzz_mps) for longer, keeping its
#                                             corpus in fuzz-corpus/TARGET (or $ZELQ_FUZZ_CORPUS)
#   scripts/fuzz.sh list                      the targets
#
# Targets are found by name: fuzz/fuzz_*.cc. The build directory is build/fuzz (or
# $ZELQ_FUZZ_BUILD). A target's own options are in fuzz/TARGET.options; extra libFuzzer
# options may follow in $ZELQ_FUZZ_OPTS.
set -euo pipefail
cd "$(dirname "$0")/.."
root=$(pwd)
build="${ZELQ_FUZZ_BUILD:-$root/build/fuzz}"
jobs="${ZELQ_FUZZ_JOBS:-2}"

usage() {
  sed -n '2,13p' "$0" | sed 's/^# \{0,1\}//'
  exit 2
}

targets() {
  local f
  for f in "$root"/fuzz/fuzz_*.cc; do
    [ -e "$f" ] || continue
    basename "$f" .cc
  done
}

build_targets() {
  bash scripts/install-deps.sh
  mkdir -p "$build"
  # One build at a time in a directory (two runs may start together).
  (
    flock 9
    if [ ! -f "$build/CMakeCache.txt" ]; then
      cmake --preset fuzz -B "$build" >/dev/null
    fi
    # Only the engine and the fuzzer programs: the rest of the tree is not needed here.
    ninja -C "$build" -j "$jobs" "$@"
  ) 9>"$build/.fuzz-build.lock"
}

export ASAN_OPTIONS="${ASAN_OPTIONS:-detect_leaks=1:abort_on_error=0}"
export UBSAN_OPTIONS="${UBSAN_OPTIONS:-print_stacktrace=1:halt_on_error=1}"
export LSAN_OPTIONS="${LSAN_OPTIONS:-suppressions=$root/tests/lsan.supp}"

# Options every run uses: a per-input time bound, a memory bound, leak detection.
common_opts=(-timeout=10 -rss_limit_mb=2560 -detect_leaks=1 -print_final_stats=1)

# Removes input files of fuzzer processes that are gone (a crashing process leaves its own).
clean_stale_inputs() {
  local f pid
  for f in /dev/shm/zelq_fuzz_* /tmp/zelq_fuzz_*; do
    [ -e "$f" ] || continue
    pid=${f#*zelq_fuzz_}
    pid=${pid%%_*}
    [[ "$pid" =~ ^[0-9]+$ ]] || continue
    kill -0 "$pid" 2>/dev/null || rm -f "$f"
  done
}

# Options of one target: its dictionary (fuzz/TARGET.dict) and the libFuzzer flags listed in
# fuzz/TARGET.options, one per line ('#' starts a comment). $ZELQ_FUZZ_OPTS comes later on
# the command line, so it overrides them.
target_opts() {
  local t=$1
  if [ -f "$root/fuzz/$t.dict" ]; then echo "-dict=$root/fuzz/$t.dict"; fi
  if [ -f "$root/fuzz/$t.options" ]; then sed -e 's/#.*//' -e '/^[[:space:]]*$/d' "$root/fuzz/$t.options"; fi
}

run_ci() {
  local seconds=${1:-15}
  [[ "$seconds" =~ ^[0-9]+$ ]] || usage
  mapfile -t names < <(targets)
  build_targets "${names[@]}"
  local work failed=() t
  work=$(mktemp -d "${TMPDIR:-/tmp}/zelq-fuzz-ci.XXXXXX")
  echo "fuzz ci: ${#names[@]} targets, ${seconds}s each, work directory $work"
  for t in "${names[@]}"; do
    mkdir -p "$work/$t/corpus" "$work/$t/artifacts"
    if [ -d "$root/fuzz/seeds/$t" ]; then cp -r "$root/fuzz/seeds/$t/." "$work/$t/corpus/"; fi
    local inputs=("$work/$t/corpus")
    if [ -d "$root/fuzz/regress/$t" ]; then inputs+=("$root/fuzz/regress/$t"); fi
    local rc=0
    # shellcheck disable=SC2046,SC2086
    "$build/fuzz/$t" "${common_opts[@]}" $(target_opts "$t") -max_total_time="$seconds" \
      -artifact_prefix="$work/$t/artifacts/" ${ZELQ_FUZZ_OPTS:-} "${inputs[@]}" \
      >"$work/$t/log" 2>&1 || rc=$?
    local execs
    execs=$(grep -a 'stat::number_of_executed_units' "$work/$t/log" | awk '{print $2}' | tail -1)
    if [ "$rc" -ne 0 ] || [ -n "$(ls -A "$work/$t/artifacts")" ]; then
      failed+=("$t")
      echo "FAIL $t (exit $rc, ${execs:-?} executions); log: $work/$t/log"
      grep -a -m1 -E 'ERROR|fuzz invariant failed|runtime error' "$work/$t/log" || true
      for f in "$work/$t/artifacts"/*; do
        [ -e "$f" ] && echo "  input: $f"
      done
    else
      echo "ok   $t (${execs:-?} executions)"
    fi
  done
  clean_stale_inputs
  if [ ${#failed[@]} -gt 0 ]; then
    echo "fuzz ci: findings in ${failed[*]} (inputs and logs kept in $work;" \
      "add each input to fuzz/regress/<target>/ once fixed)"
    return 1
  fi
  rm -rf "$work"
  echo "fuzz ci: no findings"
}

run_one() {
  local t=${1:-}
  [ -n "$t" ] || usage
  shift
  if ! grep -qx -- "$t" <<<"$(targets)"; then
    echo "unknown target '$t'; targets: $(targets | tr '\n' ' ')" >&2
    exit 2
  fi
  local limit=()
  case "${1:-}" in
    "") limit=(-max_total_time=600) ;;
    -runs=*) limit=("$1") ;;
    *[!0-9]*) usage ;;
    *) limit=(-max_total_time="$1") ;;
  esac
  build_targets "$t"
  local corpus="${ZELQ_FUZZ_CORPUS:-$root/fuzz-corpus/$t}"
  local artifacts="$root/fuzz-corpus/artifacts/$t"
  mkdir -p "$corpus" "$artifacts"
  if [ -z "$(ls -A "$corpus")" ] && [ -d "$root/fuzz/seeds/$t" ]; then
    cp -r "$root/fuzz/seeds/$t/." "$corpus/"
  fi
  local inputs=("$corpus")
  if [ -d "$root/fuzz/regress/$t" ]; then inputs+=("$root/fuzz/regress/$t"); fi
  local log="$artifacts/last.log" rc start end
  start=$(date +%s)
  set +e
  # shellcheck disable=SC2046,SC2086
  "$build/fuzz/$t" "${common_opts[@]}" $(target_opts "$t") "${limit[@]}" \
    -artifact_prefix="$artifacts/" ${ZELQ_FUZZ_OPTS:-} "${inputs[@]}" 2>&1 | tee "$log" |
    grep -a --line-buffered -E '^#[0-9]+.*(pulse|DONE)|ERROR|fuzz invariant|runtime error|Test unit'
  rc=${PIPESTATUS[0]}
  set -e
  end=$(date +%s)
  clean_stale_inputs
  local execs
  execs=$(grep -a 'stat::number_of_executed_units' "$log" | awk '{print $2}' | tail -1)
  local secs=$((end - start))
  echo "$t: ${execs:-?} executions in ${secs}s" \
    "($(( ${execs:-0} / (secs > 0 ? secs : 1) )) exec/s), corpus $(ls "$corpus" | wc -l) files" \
    "in $corpus; log $log"
  if [ "$rc" -eq 72 ]; then  # libFuzzer's code for an interrupted run
    echo "$t: interrupted"
    return 130
  fi
  if [ "$rc" -ne 0 ]; then
    echo "$t: finding (exit $rc); the input is named in the log above (under $artifacts)"
    return 1
  fi
}

case "${1:-}" in
  ci) shift; run_ci "$@" ;;
  run) shift; run_one "$@" ;;
  list) targets ;;
  *) usage ;;
esac
