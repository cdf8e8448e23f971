#!/usr/bin/env bash
# Runs the example on boards whose pours are known in closed form, on the sample board and on made-up ones, and checks
# what it refuses. Usage: check_example.sh COPPER_POUR JUDGE
set -euo pipefail

pour=$1
judge=$2
data=$(cd "$(dirname "$0")/../data" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0

fail()
{
    echo "FAIL: $*"
    failures=$((failures + 1))
}

board() # items...
{
    echo "(kicad_pcb (version 4)
(layers (0 Top signal) (1 Inner.1 power) (31 Bottom signal) (44 Edge.Cuts user))
$*
)"
}

edge() # x, y, x2, y2
{
    echo "(gr_line (start $1 $2) (end $3 $4) (angle 90) (layer Edge.Cuts) (width 0.1))"
}

pad() # type, shape, at, size, layers, rest; the footprint is turned by $angle
{
    echo "(module m (layer Top) (at 50 50 $angle) (pad 1 $1 $2 (at $3) (size $4) (layers $5) ${6-}))"
}

square="$(edge 0 0 100 0) $(edge 100 100 100 0) $(edge 0 100 0 0) $(edge 100 100 0 100)"

# Area of the pour against a formula in square millimetres, to a square micrometre; `p` is pi and the clearance 0.5.
area() # what, layer, formula, items...
{
    local said
    board "${@:4}" >"$work/board.kicad_pcb"
    if ! said=$("$pour" "$work/board.kicad_pcb" --layer "$2" --clearance 0.5 -o "$work/out.svg" 2>"$work/said"); then
        fail "$1: $(tr '\r' '\n' <"$work/said" | tail -n 1)"
        return
    fi
    awk -v said="$said" -v what="$1" 'BEGIN { p = atan2(0, -1); e = '"$3"'
        split(said, line, "\n"); n = split(line[3], word, " "); d = word[n - 1] - e
        if (d < -1e-4 || d > 1e-4) { printf "FAIL: %s: %s, expected %.4f\n", what, word[n - 1], e; exit 1 } }' ||
        failures=$((failures + 1))
}

via='(via (at 20 20) (size 2) (drill 1) (layers Top Bottom) (net 0))'
track='(segment (start 10 50) (end 30 50) (width 1) (layer Top) (net 0))'
inner='(via blind (at 20 80) (size 2) (drill 1) (layers Top Inner.1) (net 0))'
area "bare board" Top '1e4' "$square"
area "via, track" F.Cu '1e4 - p*1.5^2 - 40 - p' "$square $via $track"
area "via on the other side" Bottom '1e4 - p*1.5^2' "$square $via $track $inner"
area "blind via" In1.Cu '1e4 - 2*p*1.5^2' "$square $via $track $inner"
area "track along a half circle" Top '1e4 - p*(21^2 - 19^2)/2 - p' \
    "$square (arc (start 30 50) (mid 50 70) (end 70 50) (width 1) (layer Top) (net 0))"
area "a straight track that goes on as an arc" Top '1e4 - 14*2 - p*1^2 - p/4*(19.35^2 - 17.35^2)' \
    "$square (segment (start 6 13.65) (end 20 13.65) (width 1) (layer Top) (net 0))
    (arc (start 20 13.65) (mid 32.975409 19.024591) (end 38.35 32) (width 1) (layer Top) (net 0))"
for angle in 0 30 90 217; do
    area "pads at $angle" Top '1e4 - (4*3 - 4*.25*(1 - p/4)) - p*2^2 - (p*1.5^2 + 2*3) - (5*3 - 4*(1 - p/4))' "$square
        $(pad smd rect "0 0 $angle" "3 2" Top) $(pad thru_hole circle "10 0" "3 3" "*.Cu" "(drill 1)")
        $(pad smd oval "0 20 12" "4 2" "Top Bottom") $(pad smd roundrect "-20 0 33" "4 2" Top "(roundrect_rratio .25)")
        $(pad smd rect "20 20" "9 9" Bottom)"
done
angle=90
area "a pad half over the edge" Top '1e4 - p*2^2/2' "$square $(pad thru_hole circle "50 0" "3 3" "*.Cu" "")"
area "the offset of a drill turns with the pad" Top '1e4 - p*2^2/2' \
    "$square $(pad thru_hole circle "40 0 180" "3 3" "*.Cu" "(drill 1 (offset 0 10))")"
area "old arcs, a cut-out, a slot" Top '1e4 - 4*100*(1 - p/4) - p*25 - p*4 - 40' \
    "$(edge 10 0 90 0) $(edge 100 90 100 10) $(edge 0 90 0 10) $(edge 10 100 90 100)
    (gr_arc (start 10 10) (end 0 10) (angle 90) (layer Edge.Cuts)) (gr_arc (start 90 10) (end 100 10) (angle -90) (layer Edge.Cuts))
    (gr_arc (start 90 90) (end 100 90) (angle 90) (layer Edge.Cuts)) (gr_arc (start 10 90) (end 10 100) (angle 90) (layer Edge.Cuts))
    (gr_circle (center 50 50) (end 55 50) (layer Edge.Cuts)) $(edge 20 20 30 20) $(edge 20 24 30 24)
    (gr_arc (start 20 20) (mid 18 22) (end 20 24) (layer Edge.Cuts)) (gr_arc (start 30 20) (mid 32 22) (end 30 24) (layer Edge.Cuts))"

for layer in F.Cu Back; do
    "$pour" "$data/board.kicad_pcb" --layer $layer -o "$work/out.svg" >"$work/table" 2>"$work/said" || fail "sample board, $layer"
    grep -q ' A ' "$work/out.svg" || fail "no arcs in the picture"
    [[ -s "$work/said" ]] && fail "short work says: $(cat "$work/said")"
    "$judge" 0.3 "$data/board.kicad_pcb" $layer >"$work/said" || fail "sample board, $layer: $(cat "$work/said")"
done
for workers in 1 2 3; do
    "$pour" --shapes 400 --seed 5 --workers $workers -o "$work/$workers.svg" >/dev/null 2>&1 || fail "$workers workers"
    cmp -s "$work/1.svg" "$work/$workers.svg" || fail "the pour of $workers workers is another one"
done

# Points against distances: below the number from which on a subtraction is tiled, and above, with several tiles.
for shapes in "20 1 10" "150 1 8" "600 1 1"; do
    # shellcheck disable=SC2086
    "$judge" 0.2 $shapes >"$work/said" || fail "made-up boards, $shapes: $(grep -v 'wrong 0, seams 0, uncut 0' "$work/said")"
done

refused() # text of the message, text of the file
{
    local status=0
    echo "$2" >"$work/bad.kicad_pcb"
    "$pour" "$work/bad.kicad_pcb" --layer Top -o "$work/out.svg" >"$work/said" 2>&1 || status=$?
    [[ $status -eq 2 ]] || fail "status $status instead of '$1'"
    grep -qF "bad.kicad_pcb: $1" "$work/said" || fail "'$(tr '\r' '\n' <"$work/said")' doesn't say '$1'"
}

refused "line 1: text outside of the board" "hello"
refused "line 1: this list is never closed" "(kicad_pcb (version 4)"
refused "line 3: ')' without a list" "(kicad_pcb
)
)"
refused "line 2: this string is never closed" "(kicad_pcb
(net \"a)"
refused "line 1: lists are nested too deep" "$(printf '(%.0s' {1..5000})"
refused "line 1: schematic: this is no board" "(schematic (version 4))"
refused "line 1: kicad_pcb: the format is older than version 4" "(kicad_pcb (version 3))"
refused "line 1: the board has no layers" "(kicad_pcb (version 4))"
refused "line 3: start: 'x' is no number" "$(board '(segment (start x 1) (end 1 1) (width 1) (layer Top))')"
refused "line 3: start: a number is missing" "$(board '(segment (start 1) (end 1 1) (width 1) (layer Top))')"
refused "line 3: end: 'nan' is no number" "$(board '(segment (start 0 1) (end nan 1) (width 1) (layer Top))')"
refused "line 3: end: '1e300' is beyond 1 m" "$(board '(segment (start 0 1) (end 1e300 1) (width 1) (layer Top))')"
refused "line 3: segment: 'width' is missing" "$(board '(segment (start 0 1) (end 1 1) (layer Top))')"
refused "line 3: width: must be greater than 0" "$(board '(segment (start 0 1) (end 1 1) (width 0) (layer Top))')"
refused "line 3: pad: lies beyond 1 m" \
    "$(board '(module m (layer Top) (at 900 0) (pad 1 smd rect (at 900 0) (size 1 1) (layers Top)))')"
refused "the board has no outline" "$(board "$via")"
refused "line 3: the outline is left open at (100.000000, 100.000000) mm" "$(board "$(edge 100 100 0 0) $(edge 0 0 5 5)")"
refused "line 3: the outline branches at" "$(board "$square $(edge 0 0 9 9) $(edge 9 9 9 0) $(edge 9 0 0 0)")"

# Ctrl-C: a job that is stopped ends soon, with the status of an interrupt and without a picture.
"$pour" --shapes 100000 -o "$work/stopped.svg" >/dev/null 2>"$work/said" &
sleep 1.5
kill -INT $!
asked=$SECONDS
status=0
wait $! || status=$?
[[ $status -eq 130 && ! -e "$work/stopped.svg" ]] || fail "stopped: status $status"
[[ $((SECONDS - asked)) -le 20 ]] || fail "it took $((SECONDS - asked)) s to stop"
grep -q '^ *1\.[0-9] s  ' "$work/said" || fail "no progress: '$(cat "$work/said")'"
tail -n 1 "$work/said" | grep -qx stopped || fail "stopped, but says '$(tail -n 1 "$work/said")'"

[[ $failures -eq 0 ]] && echo "the example is as it should be"
exit $((failures > 0))
