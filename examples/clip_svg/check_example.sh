#!/usr/bin/env bash
# Runs the example on the samples whose areas are known in closed form, reads its own pictures back, and checks what it
# refuses. Usage: check_example.sh CLIP_SVG
set -euo pipefail

clip=$1
data=$(cd "$(dirname "$0")/../data" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0

fail()
{
    echo "FAIL: $*"
    failures=$((failures + 1))
}

same() # what, area, expected
{
    awk -v a="$2" -v e="$3" 'BEGIN { d = a - e; if (d < 0) d = -d; exit !(d <= 1e-12 * e) }' ||
        fail "$1: area $2, expected $3"
}

area_of() # a, b, operation, output
{
    "$clip" "$1" "$2" --op "$3" -o "$4" | awk '{ print $NF }'
}

svg() # path elements
{
    echo "<svg xmlns=\"http://www.w3.org/2000/svg\">$*</svg>"
}

svg '<path d="M-500-500H900V900H-500z"/>' >"$work/all.svg"
# shellcheck disable=SC2034 # read by name: ${!operation}
while IFS=$'\t' read -r a b difference intersection xor; do
    [[ "$a" == \#* ]] && continue
    # shellcheck disable=SC2034
    union=$(awk -v i="$intersection" -v x="$xor" 'BEGIN { printf "%.17g", i + x }')
    for operation in difference intersection xor union; do
        out=$work/$a-$b-$operation.svg
        same "$a $b $operation" "$(area_of "$data/$a.svg" "$data/$b.svg" $operation "$out")" "${!operation}"
        svg "$(grep 'id="result"' "$out")" >"$work/again.svg"
        same "$a $b $operation, read back" \
            "$(area_of "$work/again.svg" "$work/all.svg" intersection "$work/out.svg")" "${!operation}"
    done
done <"$data/expected.tsv"

# Spellings of one shape: a 4 by 4 square with a 2 by 2 hole that has a 1 by 1 island, and a square beside it.
svg '<path id="a" d="M0,0H4V4H0ZM1 1l2 0 0 2-2 0zm.5.5h1v1h-1z m9 0 1e0 0 0 +1 -1 0"/>' >"$work/spelled.svg"
same "spellings" "$(area_of "$work/spelled.svg" "$work/all.svg" intersection "$work/out.svg")" 14
# A half disc: flags without separators, a radius that grows until it reaches; and a full disc of two small arcs.
svg '<path d="M0 0a.5 .5 0 012 0z"/>' >"$work/half.svg"
same "half disc" "$(area_of "$work/half.svg" "$work/all.svg" intersection "$work/out.svg")" 1.5707963267948966
# Each of several polygons is cut by each of several others.
svg '<path d="M0 0h4v1h-4zM0 2h4v1h-4z"/>' >"$work/rows.svg"
svg '<path d="M.5-1h1v5h-1z"/><path d="M2.5-1h1v5h-1z"/>' >"$work/columns.svg"
same "many, difference" "$(area_of "$work/rows.svg" "$work/columns.svg" difference "$work/out.svg")" 4
same "many, intersection" "$(area_of "$work/rows.svg" "$work/columns.svg" intersection "$work/out.svg")" 4
same "many, xor" "$(area_of "$work/rows.svg" "$work/columns.svg" xor "$work/out.svg")" 10
same "many, union" "$(area_of "$work/rows.svg" "$work/columns.svg" union "$work/out.svg")" 14

refused() # text of the message, path element
{
    local status=0
    svg "$2" >"$work/bad.svg"
    "$clip" "$work/bad.svg" "$work/all.svg" --op difference -o "$work/out.svg" >"$work/said" 2>&1 || status=$?
    [[ $status -eq 2 ]] || fail "status $status for $2"
    grep -qF "$1" "$work/said" || fail "'$(cat "$work/said")' doesn't say '$1'"
}

refused "bad.svg: path 1 'egg': command A at character 6: elliptical" '<path id="egg" d="M0 0 A 2 1 0 0 1 4 0 Z"/>'
refused "path 2: command c at character 5: Bezier" '<path d="M0 0h1v1z"/><path d="M0 0c1 1 2 2 3 0z"/>'
refused "command Q" '<path d="M0 0Q1 1 2 0"/>'
refused "command S" '<path d="M0 0S1 1 2 0"/>'
refused "command t" '<path d="M0 0t1 1"/>'
refused "g 'moved': transform" '<g id="moved" transform="scale(2)"><path d="M0 0h1v1z"/></g>'
refused "command L at character 6: malformed" '<path d="M0 0 L 1 nan"/>'
refused "malformed number" '<path d="M0 0 L 1 1e999"/>'
refused "missing number" '<path d="M0 0 L 1"/>'
refused "malformed flag" '<path d="M0 0 A 1 1 0 2 0 1 1"/>'
refused "begins with M" '<path d="L 1 1"/>'
refused "command X" '<path d="M0 0 X"/>'
refused "command 5" '<path d="M0 0 h1v1z 5"/>'
refused "no <path>" '<path d="M0 0 L 1 1"/>'
status=0
"$clip" "$data/disc.svg" "$data/bite.svg" --op sum -o "$work/out.svg" 2>"$work/said" || status=$?
[[ $status -eq 2 ]] || fail "sum: status $status"
grep -q "no such operation: 'sum'" "$work/said" || fail "an unknown operation isn't named"

[[ $failures -eq 0 ]] && echo "the example is as it should be"
exit $((failures > 0))
