#!/usr/bin/env python3
"""Writes the package model of the KVA3-40E in the 256-ball caBGA.

    python3 examples/make_package_model.py [OUTPUT]

OUTPUT defaults to kva3_master_6bg256c_bg.pkg beside this script. The model
lists every ball of the 16 x 16 grid (rows A to T without I, O, Q and S,
columns 1 to 16) in row order, A1, A2, ... T16, and gives:

- [Inductance Matrix] and [Capacitance Matrix] as Banded_matrix with
  [Bandwidth] 17: a ball couples to its right-hand neighbour (the next ball
  of the list), to the ball below it (16 on) and to the two diagonal balls
  below it (15 and 17 on); the other terms of the band are 0.
- [Resistance Matrix] as a Sparse_matrix of self terms only.

The self terms grow with the ball's distance from the package centre, as the
traces from the die to the outer balls are longer: L_pin 2.0 to 4.5 nH,
C_pin 0.35 to 0.80 pF, R_pin 60 to 240 milliohms. Mutual inductances are a
coupling factor times the geometric mean of the two self inductances;
mutual capacitances (Maxwell form, so negative) likewise. The output is the
same on every run.
"""

import math
import os
import sys

ROWS = "ABCDEFGHJKLMNPRT"  # 16 row letters: no I, O, Q, S
COLUMNS = 16
BANDWIDTH = COLUMNS + 1
PER_LINE = 6  # entries per line, so that rows keep within 120 characters

# Coupling factors by the neighbour's offset in the list.
L_COUPLING = {1: 0.12, COLUMNS - 1: 0.05, COLUMNS: 0.10, COLUMNS + 1: 0.05}
C_COUPLING = {1: 0.10, COLUMNS - 1: 0.03, COLUMNS: 0.08, COLUMNS + 1: 0.03}


def balls():
    return [(r, c) for r in range(len(ROWS)) for c in range(COLUMNS)]


def name(ball):
    return f"{ROWS[ball[0]]}{ball[1] + 1}"


def reach(ball):
    """0 at the package centre, 1 at a corner ball."""
    middle = (COLUMNS - 1) / 2
    far = math.hypot(middle, middle)
    return math.hypot(ball[0] - middle, ball[1] - middle) / far


def self_terms(ball):
    f = reach(ball)
    return (0.060 + 0.180 * f, 2.0 + 2.5 * f, 0.35 + 0.45 * f)  # ohm, nH, pF


def neighbours(a, b):
    """The two balls touch on the grid (side or corner)."""
    return max(abs(a[0] - b[0]), abs(a[1] - b[1])) == 1


def band_row(grid, i, selves, coupling, unit, sign):
    values = []
    for k in range(BANDWIDTH + 1):
        j = i + k
        if j >= len(grid):
            break
        if k == 0:
            values.append(f"{selves[i]:.3f}{unit}")
        elif k in coupling and neighbours(grid[i], grid[j]):
            mutual = coupling[k] * math.sqrt(selves[i] * selves[j])
            values.append(f"{sign * mutual:.3f}{unit}")
        else:
            values.append("0")
    return values


def matrix_lines(keyword, grid, selves, coupling, unit, sign):
    lines = [f"[{keyword}]  Banded_matrix", f"[Bandwidth]  {BANDWIDTH}"]
    for i, ball in enumerate(grid):
        lines.append(f"[Row]  {name(ball)}")
        values = band_row(grid, i, selves, coupling, unit, sign)
        for at in range(0, len(values), PER_LINE):
            lines.append(" ".join(f"{v:>9}" for v in values[at:at + PER_LINE]).rstrip())
    return lines


def model_text(file_name):
    grid = balls()
    terms = [self_terms(b) for b in grid]
    r_self = [t[0] for t in terms]
    l_self = [t[1] for t in terms]
    c_self = [t[2] for t in terms]
    lines = [
        "[IBIS Ver]      5.0",
        f"[File Name]     {file_name}",
        "[File Rev]      2.0",
        "[Date]          November 24, 2026",
        "[Source]        Corvane Technology, package characterisation.",
        "[Notes]         Package model of the KVA3-40E in the 256-ball caBGA package,",
        "                speed grade 6: every ball, with its coupling to the balls",
        "                around it. Written by examples/make_package_model.py.",
        "[Disclaimer]    For simulation only.",
        "[Copyright]     Copyright 2026 Corvane Technology.",
        "|",
        "[Define Package Model]  KVA3_40E_CABGA256",
        "[Manufacturer]          Corvane Technology",
        "[OEM]                   Corvane Technology",
        "[Description]           256-ball caBGA, 14 x 14 mm, 0.8 mm pitch",
        f"[Number Of Pins]        {len(grid)}",
        "[Pin Numbers]",
    ]
    lines += [name(b) for b in grid]
    lines += ["[Model Data]", "|", "| R: self terms only, in ohms.", "[Resistance Matrix]  Sparse_matrix"]
    for ball, r in zip(grid, r_self):
        lines += [f"[Row]  {name(ball)}", f"{name(ball)}  {r:.3f}"]
    lines += ["|", "| L in henries: each ball and its neighbours to the right and below."]
    lines += matrix_lines("Inductance Matrix", grid, l_self, L_COUPLING, "nH", 1)
    lines += ["|", "| C in farads, Maxwell form: mutual terms are negative."]
    lines += matrix_lines("Capacitance Matrix", grid, c_self, C_COUPLING, "pF", -1)
    lines += ["[End Model Data]", "[End Package Model]", "|", "[End]"]
    return "\n".join(lines) + "\n"


def main():
    here = os.path.dirname(os.path.abspath(__file__))
    out = sys.argv[1] if len(sys.argv) > 1 else os.path.join(here, "kva3_master_6bg256c_bg.pkg")
    text = model_text(os.path.basename(out))
    with open(out, "w", newline="\n") as f:
        f.write(text)


if __name__ == "__main__":
    main()
