#!/usr/bin/env python3
"""Draws the sample outlines of the example (examples/data/*.svg) and the table of the areas that are known in closed
form (examples/data/expected.tsv). Run it again only to change the samples: its output is kept in the repository.

Coordinates are written with all digits of a double, so that what is read is what was computed."""

from math import acos, cos, pi, sin, sqrt
from pathlib import Path

DATA = Path(__file__).resolve().parent.parent / "examples" / "data"


class Outline:
    """One subpath. `arc` takes the sense as counter-clockwise in the plain reading of the numbers (x right, y up):
    that is the sweep flag of SVG."""

    def __init__(self, x, y):
        self.parts = [f"M {x!r} {y!r}"]

    def line(self, x, y):
        self.parts.append(f"L {x!r} {y!r}")
        return self

    def arc(self, radius, x, y, ccw=True, large=False):
        self.parts.append(f"A {radius!r} {radius!r} 0 {int(large)} {int(ccw)} {x!r} {y!r}")
        return self

    def __str__(self):
        return " ".join(self.parts) + " Z"


def at(cx, cy, radius, angle):
    return cx + radius * cos(angle), cy + radius * sin(angle)


def circle(cx, cy, radius):
    return Outline(cx - radius, cy).arc(radius, cx + radius, cy).arc(radius, cx - radius, cy)


def rectangle(x, y, width, height):
    return Outline(x, y).line(x + width, y).line(x + width, y + height).line(x, y + height)


def stadium(cx, cy, length, radius):
    """Two half discs whose centres are `length` apart, and the band between them."""
    left, right = cx - length / 2, cx + length / 2
    outline = Outline(left, cy - radius).line(right, cy - radius).arc(radius, right, cy + radius)
    return outline.line(left, cy + radius).arc(radius, left, cy - radius)


def rounded_rectangle(x, y, width, height, radius):
    right, top = x + width, y + height
    outline = Outline(x + radius, y).line(right - radius, y).arc(radius, right, y + radius)
    outline.line(right, top - radius).arc(radius, right - radius, top)
    outline.line(x + radius, top).arc(radius, x, top - radius)
    return outline.line(x, y + radius).arc(radius, x + radius, y)


def gear(cx, cy, teeth, root, tip, tip_share):
    """Root and tip arcs on two circles about the centre, joined by flanks that point to the centre. `tip_share` is the
    part of the pitch angle that a tip takes."""
    pitch = 2 * pi / teeth
    outline = Outline(*at(cx, cy, tip, 0.0))
    for tooth in range(teeth):
        begin, end, following = tooth * pitch, (tooth + tip_share) * pitch, (tooth + 1) % teeth * pitch
        outline.arc(tip, *at(cx, cy, tip, end)).line(*at(cx, cy, root, end))
        outline.arc(root, *at(cx, cy, root, following)).line(*at(cx, cy, tip, following))
        assert begin < end
    return outline


def key(cx, cy, bow, shaft, length):
    """A round bow, a shaft with a rounded tip and a bit of three teeth below it."""
    neck = cx + sqrt(bow * bow - shaft * shaft)
    tip, low = cx + length, cy - shaft
    outline = Outline(neck, low)
    for offset, width, depth in ((62.0, 9.0, 16.0), (48.0, 7.0, 10.0), (35.0, 8.0, 19.0)):
        outline.line(tip - offset, low).line(tip - offset, low - depth)
        outline.arc(width / 2, tip - offset + width, low - depth).line(tip - offset + width, low)
    outline.line(tip, low).arc(shaft, tip, cy + shaft).line(neck, cy + shaft)
    return outline.arc(bow, neck, low, ccw=True, large=True)


def picture(name, paths, box):
    body = "\n".join(f'  <path id="{ident}" fill-rule="evenodd" d="{" ".join(map(str, outlines))}"/>'
                     for ident, outlines in paths)
    (DATA / f"{name}.svg").write_text(
        f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="{box}" fill="#456">\n{body}\n</svg>\n')


def lens(first, second, distance):
    """What two discs share: two circular segments on their common chord."""
    a = acos((distance ** 2 + first ** 2 - second ** 2) / (2 * distance * first))
    b = acos((distance ** 2 + second ** 2 - first ** 2) / (2 * distance * second))
    return first ** 2 * (a - sin(a) * cos(a)) + second ** 2 * (b - sin(b) * cos(b))


def table(rows):
    lines = ["# a\tb\tdifference\tintersection\txor"]
    for a, b, area_a, area_b, common in rows:
        lines.append(f"{a}\t{b}\t{area_a - common!r}\t{common!r}\t{area_a + area_b - 2 * common!r}")
    (DATA / "expected.tsv").write_text("\n".join(lines) + "\n")


def main():
    box = "-10 -10 220 160"
    picture("plate", [("plate", [rounded_rectangle(0.0, 0.0, 200.0, 140.0, 16.0), stadium(100.0, 28.0, 96.0, 9.0),
                                 stadium(100.0, 112.0, 96.0, 9.0), circle(20.0, 20.0, 8.0), circle(180.0, 20.0, 8.0),
                                 circle(180.0, 120.0, 8.0), circle(20.0, 120.0, 8.0)])], box)
    picture("key", [("key", [key(45.0, 78.0, 34.0, 8.0, 137.0), circle(33.0, 78.0, 11.0)])], box)

    teeth, root, tip, share, bore = 18, 50.0, 61.0, 0.45, 17.0
    picture("gear", [("gear", [gear(103.0, 68.0, teeth, root, tip, share), circle(103.0, 68.0, bore)])], box)
    wheel = 56.0
    picture("wheel", [("wheel", [circle(103.0, 68.0, wheel)])], box)

    picture("disc", [("disc", [circle(80.0, 70.0, 60.0)])], box)
    picture("bite", [("bite", [circle(146.0, 81.0, 44.0)])], box)

    picture("stadium", [("stadium", [stadium(100.0, 70.0, 110.0, 32.0)])], box)
    picture("bar", [("bar", [rectangle(70.0, 10.0, 24.0, 120.0)])], box)

    def ring(at_tips, at_gaps):
        """A gear is sectors of two radii: half the angle times the square of the radius, for each."""
        return pi * (share * at_tips ** 2 + (1 - share) * at_gaps ** 2)

    table([
        # Two discs: the common area is the lens of two circular segments.
        ("disc", "bite", pi * 60.0 ** 2, pi * 44.0 ** 2, lens(60.0, 44.0, sqrt(66.0 ** 2 + 11.0 ** 2))),
        # A stadium is a disc and a rectangle; a bar that crosses its straight part takes width times twice the radius.
        ("stadium", "bar", pi * 32.0 ** 2 + 110.0 * 64.0, 24.0 * 120.0, 24.0 * 64.0),
        # A gear and a disc about the same centre, between root and tip: sectors of the disc's radius instead of the
        # tip's, less the bore.
        ("gear", "wheel", ring(tip, root) - pi * bore ** 2, pi * wheel ** 2, ring(wheel, root) - pi * bore ** 2),
    ])


if __name__ == "__main__":
    main()
