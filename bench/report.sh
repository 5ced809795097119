#!/bin/sh
# Builds the benchmarks, runs them all and prints the figures as Markdown; they need a machine with
# nothing else to do, and about four minutes.
#
#   bench/report.sh            prints
#   bench/report.sh --update   also puts the figures into docs/performance.md
#
# Exit status 1 if a target was missed, 2 if something is missing.
set -eu
cd "$(dirname "$0")/.."

case "${1-}" in
  "" | --update) ;;
  *) echo "usage: bench/report.sh [--update]" >&2; exit 2 ;;
esac
for program in cmake ninja units; do
  if ! command -v "$program" >/dev/null; then
    echo "$program is missing; on Debian: apt-get install cmake ninja-build g++ libboost-math-dev" \
      "libbenchmark-dev libmuparser-dev libudunits2-dev nlohmann-json3-dev units" >&2
    exit 2
  fi
done

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
build=build/bench
{
  cmake --preset bench
  cmake --build --preset bench
} >"$work/build" 2>&1 || { cat "$work/build" >&2; exit 2; }

status=0
# Status 1 is a missed target, which is part of the report. What is above that is no report.
run() {
  "$@" || { result=$?; [ "$result" -eq 1 ] || exit 2; status=1; }
}

# The rows that a title of a table starts, up to the next empty line.
print_table() {
  awk -v title="| $2" 'index($0, title) == 1 { on = 1 } /^$/ { on = 0 } on' "$1"
  echo
}

run "$build/bench/growth_bench" >"$work/growth" 2>"$work/growth.err"
run "$build/bench/compare_bench" "$build/cli/quantiverse" >"$work/compare"
run "$build/bench/body_bench" >"$work/body"
run "$build/bench/worksheet_bench" "$build/addin/quantiverse.so" >"$work/worksheet"
"$build/bench/lines_bench" --benchmark_format=json 2>/dev/null >"$work/lines"
if grep '"error_message"' "$work/lines" >&2; then status=1; fi

{
  echo "### Targets"
  echo
  print_table "$work/compare" "Beside others"
  print_table "$work/growth" "Time per line"
  print_table "$work/growth" "Peak memory"
  print_table "$work/body" "An evaluation of a body"
  print_table "$work/worksheet" "Worksheet calls"
  echo "### Figures"
  echo
  print_table "$work/compare" "Conversions, all"
  print_table "$work/compare" "Conversions, \`ft"
  print_table "$work/compare" "One conversion"
  print_table "$work/worksheet" "Conversions a second"
  print_table "$work/body" "A body of ten operations"
  print_table "$work/body" "A text of"
  print_table "$work/body" "Tridiagonal system"
  echo "| Line, term or operation | nanoseconds | million per second | allocations |"
  echo "|---|---:|---:|---:|"
  awk '
    function finish() {
      if (name != "") printf "| %s | %.1f | %.2f | %s |\n", name, 1e9 / rate, rate / 1e6, count
      name = count = ""
    }
    { value = $2; gsub(/[",]/, "", value) }
    $1 == "\"name\":" { finish(); name = value }
    $1 == "\"items_per_second\":" { rate = value }
    $1 == "\"allocs_per_op\":" { count = value + 0 }
    END { finish() }' "$work/lines"
  echo
} >"$work/report"
cat "$work/report"

if [ "${1-}" = --update ]; then
  awk -v report="$work/report" '
    /<!-- end of bench\/report.sh -->/ { skip = 0 }
    !skip
    /<!-- bench\/report.sh -->/ {
      skip = 1
      print ""
      while ((getline line < report) > 0) print line
      print ""
    }' docs/performance.md >"$work/page"
  cat "$work/page" >docs/performance.md
fi
exit "$status"
