#!/usr/bin/env bash
# A run of the benchmarks counts as whole only with every budget measured.
#
#   tests/scripts/budgetsTest.sh <top of the sources>
set -uo pipefail

check=$1/scripts/lib/budgets.sh
room=$(mktemp -d)
trap 'rm -rf "$room"' EXIT
failures=0

cat >"$room/list" <<'LIST'
# A comment, a blank line, two budgets.

start to painted window, catalog at hand | <= 2.50 x
list of 10,000 chats | <= 8.00 ms, <= 2.00 x
LIST
start='start to painted window, catalog at hand (peer: bare Qt window)   41.4 ms       peer     23.6    1.76 x   <= 2.50 x             within, 70.2 %'
list='list of 10,000 chats (peer: parse of the index)    10.5 ms       peer     5.20    2.02 x   <= 8.00 ms, <= 2.00 x over, 131 %'

# expect <what is missing> <line of the output>...
expect() {
  local expected=$1 missing status wanted=0
  shift
  printf '%s\n' "$@" >"$room/output"
  missing=$("$check" "$room/list" "$room/output")
  status=$?
  [ -z "$expected" ] || wanted=1
  if [ "$missing" != "$expected" ] || [ "$status" -ne "$wanted" ]; then
    printf 'status %s, missing "%s" instead of "%s" in:\n' "$status" "$missing" "$expected"
    printf '  %s\n' "$@"
    failures=$((failures + 1))
  fi
}

missing_start='start to painted window, catalog at hand | <= 2.50 x'
missing_list='list of 10,000 chats | <= 8.00 ms, <= 2.00 x'
expect '' "$start" "$list"
expect '' "$list" 'something else' "$start"
expect "$missing_list" "$start"
expect "$missing_start"$'\n'"$missing_list" ''
# Another figure whose name begins alike.
expect "$missing_list" "$start" "${list/chats/chats filtered}"
# Without a ratio, without a peer, without a verdict, against another budget.
expect "$missing_start" "${start/   1.76 x/        -}" "$list"
expect "$missing_start" "${start/ (peer: bare Qt window)/}" "$list"
expect "$missing_start" "${start/within, 70.2 %/}" "$list"
expect "$missing_start" "${start/<= 2.50 x/<= 2.60 x}" "$list"
expect "$missing_list" "$start" "${list/, <= 2.00 x/           }"
# Without a list nothing is known to be whole.
for list_of_none in "$room/none" "$room/comment"; do
  [ "$list_of_none" = "$room/none" ] || printf '# A comment alone.\n' >"$list_of_none"
  if "$check" "$list_of_none" "$room/output" >/dev/null 2>&1; then
    printf 'whole without a budget: %s\n' "$list_of_none"
    failures=$((failures + 1))
  fi
done

[ "$failures" -eq 0 ]
