#!/usr/bin/env bash
# Runs every libFuzzer program of build-asan/ for a bounded time (FUZZ_SECONDS each, default 60) from
# its committed seeds, two at a time. A failing input is saved as build-asan/fuzz-findings/<target>/
# crash-*, the run fails, and the input belongs in fuzz/regressions/<target>/ together with the fix.
# Builds first when needed (as run-asan-tests.sh does). Prints the executions and inputs of each run.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"
vorn_install_packages "${VORN_PACKAGES[@]}" clang libclang-rt-14-dev
vorn_build_sanitized
vorn_sanitizer_environment 32

FUZZ_SECONDS="${FUZZ_SECONDS:-60}"
findings="$ASAN_BUILD_DIR/fuzz-findings"
work="$ASAN_BUILD_DIR/fuzz-corpus"
rm -rf "$findings"
mkdir -p "$findings" "$work"

# fuzz_one TARGET [extra seed folders...]: new inputs go to a scratch corpus; the committed one stays.
fuzz_one() {
  local target="$1"
  shift
  mkdir -p "$findings/$target" "$work/$target"
  # An input that runs longer than this counts as a hang. A description may make up to 250,000 rows
  # (a lattice of categories that list each other twice makes that many from 4 KB); the largest
  # open natively in about 3 s, but under the sanitizers in up to about 40 s.
  local timeout=20
  [ "$target" = fuzz_genicam_xml ] && timeout=120
  # Slow inputs under the time-out are not failures: libFuzzer would otherwise save them as
  # slow-unit-* (from 10 s on), which looks like a finding.
  local options=(-max_total_time="$FUZZ_SECONDS" -timeout="$timeout" -report_slow_units="$timeout"
    -rss_limit_mb=4096 -print_final_stats=1 -artifact_prefix="$findings/$target/")
  [ -f "$ROOT/fuzz/$target.dict" ] && options+=(-dict="$ROOT/fuzz/$target.dict")
  local corpora=("$work/$target")
  for folder in "$ROOT/fuzz/corpus/$target" "$ROOT/fuzz/regressions/$target" "$@"; do
    [ -d "$folder" ] && corpora+=("$folder")
  done
  local rc=0
  "$ASAN_BUILD_DIR/bin/$target" "${options[@]}" "${corpora[@]}" >"$findings/$target.log" 2>&1 || rc=$?
  echo "$rc" >"$findings/$target.rc"
}

targets=(fuzz_spin_box_text fuzz_models)
[ -x "$ASAN_BUILD_DIR/bin/fuzz_genicam_xml" ] && targets+=(fuzz_genicam_xml)
running=0
for target in "${targets[@]}"; do
  seeds=()
  [ "$target" = fuzz_genicam_xml ] && seeds=("$ROOT/tests/data/genicam" "$ROOT/tests/genicam/data")
  fuzz_one "$target" "${seeds[@]}" &
  running=$((running + 1))
  if [ "$running" -ge 2 ]; then
    wait -n
    running=$((running - 1))
  fi
done
wait

status=0
for target in "${targets[@]}"; do
  log="$findings/$target.log"
  runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | tail -n 1)
  corpus=$(grep -Eo 'DONE +cov: [0-9]+ ft: [0-9]+ corp: [0-9]+' "$log" | tail -n 1 | grep -Eo 'corp: [0-9]+' | grep -Eo '[0-9]+' || true)
  found=$(find "$findings/$target" -type f ! -name 'slow-unit-*' | wc -l)
  rc=$(cat "$findings/$target.rc")
  echo "fuzz: $target: ${runs:-0} inputs tried in ${FUZZ_SECONDS} s, corpus ${corpus:-?} inputs, ${found} failing"
  if [ "$rc" -ne 0 ] || [ "$found" -ne 0 ] || [ -z "$runs" ]; then
    status=1
    tail -n 60 "$log"
    echo "fuzz: $target failed; its input: $(find "$findings/$target" -type f ! -name 'slow-unit-*' | head -n 1)"
    echo "      keep it in fuzz/regressions/$target/ with the fix"
  fi
done
exit "$status"
