#!/usr/bin/env bash
# Grows and shrinks shapes whose areas are known in closed form, and checks what the example refuses.
# Usage: check_example.sh INFLATE_SVG
set -euo pipefail

inflate=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0

fail()
{
    echo "FAIL: $*"
    failures=$((failures + 1))
}

# The result of growing a path by a distance: its rings, holes and area, the area as a formula of d, the width of a
# segment's band. Usage: grown RINGS HOLES FORMULA DISTANCE PATH
grown()
{
    echo "<svg xmlns=\"http://www.w3.org/2000/svg\"><path d=\"$5\"/></svg>" >"$work/in.svg"
    "$inflate" "$work/in.svg" --by "$4" -o "$work/out.svg" >"$work/said" || fail "status $? for $5 by $4"
    awk -v pi=3.141592653589793 -v by="$4" -v rings="$1" -v holes="$2" '
        $1 == "after" { d = by / cos(pi / 32); e = $6 - ('"$3"'); found = $2 == rings && $3 == holes && e * e <= 1e-10 * $6 * $6 }
        END { exit !found }' "$work/said" || fail "$5 by $4: $(tail -n 1 "$work/said")"
    grep -q 'id="result"' "$work/out.svg" || fail "no picture of $5 by $4"
}

square='M0 0H1000V1000H0z'
grown 1 0 '(1000 + 2 * d) ^ 2 - (4 - pi) * d * d' +100 "$square"
grown 1 0 '(1000 + 2 * d) ^ 2' -100 "$square"
grown 0 0 0 -600 "$square"
grown 1 0 1e6 0 "$square"
grown 1 1 'pi * (2100 ^ 2 - 900 ^ 2)' 1e2 'M-2000 0a2000 2000 0 014000 0 2000 2000 0 01-4000 0M-1000 0a1000 1000 0 012000 0 1000 1000 0 01-2000 0'
grown 1 0 '(2000 + d) * (1000 + 2 * d) + d * (1000 + 2 * d) - (4 - pi) * d * d' 10 'M0 0H1000V1000H0zM1000 0H2000V1000H1000z'

refused() # status, text of the message, arguments
{
    local status=0
    "$inflate" "${@:3}" >"$work/said" 2>&1 || status=$?
    [[ $status -eq $1 ]] || fail "status $status, not $1: ${*:3}"
    grep -qF -- "$2" "$work/said" || fail "'$(cat "$work/said")' doesn't say '$2'"
}

refused 2 "usage:" "$work/in.svg" -o "$work/out.svg"
refused 2 "usage:" --by 1 -o "$work/out.svg"
refused 2 "-o: the value is missing" "$work/in.svg" --by 1 -o
for distance in 1mm nan inf 1e999 -- +-1; do
    refused 2 "--by: '$distance' is no distance" "$work/in.svg" --by $distance -o "$work/out.svg"
done
refused 2 "none.svg" "$work/none.svg" --by 1 -o "$work/out.svg"
refused 1 "can't be written" "$work/in.svg" --by 1 -o "$work/none/out.svg"

[[ $failures -eq 0 ]] && echo "the example is as it should be"
exit $((failures > 0))
