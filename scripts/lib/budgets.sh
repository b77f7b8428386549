#!/usr/bin/env bash
# Tells which budgets a run of the benchmarks hasn't measured.
#
#   scripts/lib/budgets.sh <list> <output>
#
# Prints the lines of the list for which the output has no figure with a ratio and that budget; the status
# is 1 if there are any, or if the list has none at all. What such a list looks like tells benchmarks/budgets.
set -euo pipefail

list=$1
output=$2

# True if the output has a line for the name: "<name> (peer: …)  <value> <unit>  peer <peer>  <ratio> x
# <budget>  within, …" or "over, …".
is_measured() {
  local name=$1 budget=$2 line rest
  while IFS= read -r line; do
    [[ $line == "$name (peer: "*")"* ]] || continue
    rest=${line#*peer: *) }
    [[ $rest =~ peer\ +[0-9.]+\ +[0-9.]+\ x\ +(.*[^ ])\ +(within|over), ]] || continue
    [ "${BASH_REMATCH[1]}" = "$budget" ] && return 0
  done <"$output"
  return 1
}

status=0
count=0
while IFS= read -r entry; do
  [[ $entry == *" | "* ]] || continue
  count=$((count + 1))
  is_measured "${entry%% | *}" "${entry##* | }" && continue
  printf '%s\n' "$entry"
  status=1
done < <(grep -v '^#' "$list")
if [ "$count" -eq 0 ]; then
  printf '%s has no budgets\n' "$list"
  status=1
fi
exit "$status"
