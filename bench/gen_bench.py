#!/usr/bin/env python3
"""Write the inputs of the pad2ibis benchmark.

Two files go into OUTDIR (default bench/out/):

  kva3_bench_master.ibs  a synthetic master IBIS file of the KVA3 family:
                         naming tables in the notes, component, package
                         blocks, one [Pin] row per model (two for a
                         differential model), [Diff pin] rows, and one long
                         [Model] block per model (about 10 KB each, mostly
                         V/I tables and waveforms)
  bench.pad              a pad report of one design on that family: every
                         signal's settings resolve, through the naming tables
                         of the master, to the key of a model that exists

and beside them:

  expected_models.txt    the model keys that the design uses, one a line
  PACKAGE_FILE           with --package-balls N: the package model file that
                         the master's package has beside it, a model of N x N
                         balls with full inductance and capacitance matrices
                         (every ball coupled to every other) and a sparse
                         resistance matrix of self terms
  bench_info.txt         key=value facts the run script reports and checks

The output is the same byte for byte on every run with the same options.
Standard library only.
"""

import argparse
import math
import os
import random
import sys

SEED = 20261116

FAMILY_PART = "KVA3-95E-6BG1156C"
PACKAGE = "CABGA1156"
COMPONENT = "KVANR3-95E"
MASTER_NAME = "kva3_bench_master.ibs"
# The package model file that a run on the master looks for beside it.
PACKAGE_FILE = "kva3_bench_master_6bg1156c_bg.pkg"
PAD_NAME = "bench.pad"

# Longest line the readers take is 254 characters; stay well below.
MAX_LINE = 200

# ---------------------------------------------------------------------------
# Naming tables of the master file. The heading, the column caption and the
# rows (design value, key code). The order matters: the readers stop at the
# table that completes the family's set, here the differential drive table,
# so every table that the design needs stands ahead of it.
# ---------------------------------------------------------------------------
NAMING_TABLES = [
    ("STANDARD (IO_TYPE)", "io standard", [
        ("LVCMOS", "lvc"), ("LVTTL", "ttl"), ("PCI", "pci"), ("LVDS", "lvd"),
        ("BLVDS", "blv"), ("LVPECL", "pcl"), ("SSTL_I", "ss1"),
        ("SSTL_II", "ss2"), ("SSTLD_I", "sd1"), ("SSTLD_II", "sd2"),
        ("HSTL_I", "hs1"), ("HSTL_II", "hs2"), ("HSTLD_I", "hd1"),
        ("HSTLD_II", "hd2"), ("HYPT", "hyp"),
    ]),
    ("SLEW", "value", [("SLOW", "s"), ("FAST", "f")]),
    ("PULLMODE", "value", [
        ("NONE", "n"), ("PULLUP", "u"), ("PULLDOWN", "d"), ("BUSHOLD", "k"),
        ("PCICLAMP", "p"), ("UP_CLAMP", "c"), ("DOWN_CLAMP", "e"),
        ("SCHMITT", "t"), ("UP_SCHMITT", "v"), ("DOWN_SCHMITT", "w"),
    ]),
    ("DIFFERENTIAL RESISTOR", "ohm", [("OFF", "a"), ("100", "r")]),
    ("VCMT", "value", [("OFF", "a"), ("DDR-2", "d")]),
    ("IMPEDANCE", "ohm", [("OFF", "a"), ("34", "3"), ("40", "4"), ("50", "5"), ("60", "6")]),
    ("DIFF DRIVE", "mA", [("2.0", "2"), ("3.5", "3")]),
]

# The drive table is not in the file: the program knows it for the family.
DRIVE_CODES = {
    "NA": "xxx", "2mA": "020", "4mA": "040", "6mA": "060", "8mA": "080",
    "10mA": "100", "12mA": "120", "16mA": "160", "20mA": "200",
}
DRIVES = ["2mA", "4mA", "6mA", "8mA", "10mA", "12mA", "16mA", "20mA"]

TEMPLATE = "lvc250axxxaaaaaaaaio"

DIFFERENTIAL_CODES = {"lvd", "blv", "pcl", "sd1", "sd2", "hd1", "hd2"}


def table(heading):
    for head, _caption, rows in NAMING_TABLES:
        if head == heading:
            return rows
    raise KeyError(heading)


IO_CODES = dict(table("STANDARD (IO_TYPE)"))
SLEW_CODES = dict(table("SLEW"))
# The pull table's reader knows PULLUP and PULLDOWN under their short names.
PULL_CODES = {{"PULLUP": "UP", "PULLDOWN": "DOWN"}.get(v, v): c for v, c in table("PULLMODE")}
DIFFRES_CODES = dict(table("DIFFERENTIAL RESISTOR"))
VCMT_CODES = dict(table("VCMT"))
IMP_CODES = dict(table("IMPEDANCE"))
DIFFDRIVE_CODES = dict(table("DIFF DRIVE"))

PULL_GROUP = ("PULL", "CLAMP", "PCICLAMP", "SCHMITT_TRIGGER")


# ---------------------------------------------------------------------------
# Model key of a signal: IO type code, supply in hundredths of a volt, slew,
# drive in tenths of a mA, pull, impedance, three unused fields, common mode,
# differential resistor, differential drive, direction. Only settings that
# the tables above know are ever generated; anything else is a bug here.
# ---------------------------------------------------------------------------
def split_io_type(io_type):
    """IO type of the pad report -> (table design value, volts*10 or None)."""
    digits = ""
    for ch in io_type:
        if ch.isdigit():
            digits += ch
        elif digits:
            break
    if not digits:
        return io_type, None
    if io_type in IO_CODES:
        return io_type, int(digits)
    return "".join(ch for ch in io_type if not ch.isdigit()), int(digits)


def model_key(cfg):
    key = list(TEMPLATE)

    def put(pos, code):
        key[pos:pos + len(code)] = list(code)

    base, volts = split_io_type(cfg["io"])
    put(0, IO_CODES[base])
    if volts is not None:
        put(3, "%d0" % volts)
    elif base == "HYPT":
        put(3, "120")

    pull = ""
    open_drain = False
    for name, value in cfg["attrs"]:
        if name == "PULL":
            pull += value
        elif name in ("CLAMP", "PCICLAMP") and value == "ON":
            pull += "_" + name
        elif name == "SCHMITT_TRIGGER" and value == "ON":
            pull += "_SCHMITT"
        elif name == "OPENDRAIN" and value == "ON":
            open_drain = True
        elif name == "DRIVE":
            put(7, DRIVE_CODES[value])
        elif name == "SLEW":
            put(6, SLEW_CODES[value])
        elif name == "IMP":
            put(11, IMP_CODES[value])
        elif name == "VCMT":
            put(15, VCMT_CODES["DDR-2" if value == "DDR_II" else value])
        elif name == "DIFFRESISTOR":
            put(16, DIFFRES_CODES[value])
        elif name == "DIFFDRIVE":
            put(17, DIFFDRIVE_CODES[value])
        elif name == "VREF":
            pass
        else:
            raise ValueError("no naming table for attribute " + name)
    if pull:
        if pull == "KEEPER":
            pull = "BUSHOLD"
        elif pull.startswith("_"):
            pull = pull[1:]
        elif pull.startswith("NONE_"):
            pull = pull[5:]
        put(10, PULL_CODES[pull])

    port = cfg["port"]
    if port == "IN":
        put(18, "in")
    elif open_drain:
        put(18, "od")
    elif port == "OUT":
        put(18, "ou")
    else:
        put(18, "io")
    text = "".join(key)
    assert len(text) == 20, text
    return text


# ---------------------------------------------------------------------------
# The legal settings of the family: one configuration per model of the
# master. A configuration is the IO type as the pad report writes it, the
# port type, and the PIO properties in the order the pull mode needs them.
# ---------------------------------------------------------------------------
def cfg(io, port, *attrs):
    return {"io": io, "port": port, "attrs": list(attrs)}


def family_configurations():
    in_pulls = [
        [("PULL", "NONE")], [("PULL", "UP")], [("PULL", "DOWN")], [("PULL", "KEEPER")],
        [("PULL", "UP"), ("CLAMP", "ON")], [("PULL", "DOWN"), ("CLAMP", "ON")],
        [("PULL", "NONE"), ("SCHMITT_TRIGGER", "ON")],
        [("PULL", "UP"), ("SCHMITT_TRIGGER", "ON")],
        [("PULL", "DOWN"), ("SCHMITT_TRIGGER", "ON")],
    ]
    out_pulls = ["NONE", "UP", "DOWN", "KEEPER"]
    for io in ["LVCMOS12", "LVCMOS15", "LVCMOS18", "LVCMOS25", "LVCMOS33", "LVTTL33"]:
        for pull in in_pulls:
            yield cfg(io, "IN", *pull)
        for port, extra in (("OUT", []), ("BIDI", []), ("BIDI", [("OPENDRAIN", "ON")])):
            for drive in DRIVES:
                for slew in ("SLOW", "FAST"):
                    for pull in out_pulls:
                        yield cfg(io, port, ("DRIVE", drive), ("SLEW", slew), ("PULL", pull), *extra)
            for imp in ("34", "40", "50", "60"):
                for slew in ("SLOW", "FAST"):
                    for pull in out_pulls:
                        yield cfg(io, port, ("IMP", imp), ("SLEW", slew), ("PULL", pull), *extra)
    for pull in ([("PULL", "NONE")], [("PULL", "UP")], [("PULL", "NONE"), ("PCICLAMP", "ON")]):
        yield cfg("PCI33", "IN", *pull)
        for port in ("OUT", "BIDI"):
            for slew in ("SLOW", "FAST"):
                yield cfg("PCI33", port, ("SLEW", slew), *pull)
    for std in ("SSTL", "HSTL"):
        volts = ("15", "18", "25") if std == "SSTL" else ("15", "18")
        for v in volts:
            for cls in ("I", "II"):
                io = "%s%s_%s" % (std, v, cls)
                yield cfg(io, "IN", ("VREF", "VREF1_LOAD"))
                for port in ("OUT", "BIDI"):
                    for slew in ("SLOW", "FAST"):
                        yield cfg(io, port, ("SLEW", slew), ("VREF", "OFF"))
                io = "%s%sD_%s" % (std, v, cls)
                for vcmt in ("OFF", "DDR_II"):
                    for res in ("OFF", "100"):
                        yield cfg(io, "IN", ("VCMT", vcmt), ("DIFFRESISTOR", res))
                    for port in ("OUT", "BIDI"):
                        for slew in ("SLOW", "FAST"):
                            yield cfg(io, port, ("SLEW", slew), ("VCMT", vcmt))
    for io in ("LVDS", "BLVDS25", "LVPECL33"):
        for res in ("OFF", "100"):
            yield cfg(io, "IN", ("DIFFRESISTOR", res))
        for slew in ("SLOW", "FAST"):
            for drive in ("2.0", "3.5"):
                yield cfg(io, "OUT", ("DIFFDRIVE", drive), ("SLEW", slew))
                for res in ("OFF", "100"):
                    yield cfg(io, "BIDI", ("DIFFDRIVE", drive), ("SLEW", slew), ("DIFFRESISTOR", res))
    yield cfg("HYPT", "IN")
    for port in ("OUT", "BIDI"):
        for slew in ("SLOW", "FAST"):
            yield cfg("HYPT", port, ("SLEW", slew))


def master_models(count, rng):
    """count distinct model keys of the family, each with one configuration."""
    by_key = {}
    for c in family_configurations():
        by_key.setdefault(model_key(c), c)
    keys = sorted(by_key)
    if len(keys) < count:
        sys.exit("gen_bench: the family has only %d distinct models, %d asked" % (len(keys), count))
    chosen = sorted(rng.sample(keys, count))
    return [(k, by_key[k]) for k in chosen]


# ---------------------------------------------------------------------------
# Model text. Numbers follow smooth curves scaled by supply and drive; they
# only have to look like a characterised buffer and be long enough.
# ---------------------------------------------------------------------------
VI_POINTS = 25


def supply(key):
    return int(key[3:6]) / 100.0


def linspace(a, b, n):
    return [a + (b - a) * i / (n - 1) for i in range(n)]


def vi_row(v, i):
    i = i + 0.0 if i != 0 else 0.0  # no "-0.0000E+00"
    return "%9.3f   %11.4E  %11.4E  %11.4E" % (v, i, i * 0.78, i * 1.24)


def vi_table(keyword, volts, current):
    lines = [keyword, "| Voltage    I(typ)       I(min)       I(max)"]
    lines += [vi_row(v, current(v)) for v in volts]
    return lines


def wave_table(keyword, vcc, fixture, rising, points, t_end):
    lines = [keyword, "R_fixture = 50", "V_fixture = %.3f" % fixture,
             "V_fixture_min = %.3f" % (fixture * 0.95), "V_fixture_max = %.3f" % (fixture * 1.05),
             "| time        V(typ)     V(min)     V(max)"]
    high = vcc if fixture > 0 else vcc * 50.0 / 70.0
    low = fixture * 20.0 / 70.0 if fixture > 0 else 0.0
    for t in linspace(0.0, t_end, points):
        x = 1.0 / (1.0 + math.exp(-(t - 0.4 * t_end) / (0.08 * t_end)))
        if not rising:
            x = 1.0 - x
        v = low + (high - low) * x
        lines.append("%10.4fn  %9.4f  %9.4f  %9.4f" % (t, v, v * 0.95, v * 1.05))
    return lines


DIRECTION_WORDS = {"in": "input", "ou": "output", "io": "bidirectional", "od": "open drain"}
MODEL_TYPES = {"in": "Input", "ou": "3-state", "io": "I/O", "od": "I/O_open_drain"}


def model_block(key, c, wave_points):
    vcc = supply(key)
    direction = key[18:20]
    drive = key[7:10]
    if drive != "xxx":
        imax = int(drive) / 10.0 * 2.6e-3
    elif key[11] != "a":
        imax = vcc / (2.0 * int(dict((b, a) for a, b in IMP_CODES.items())[key[11]]))
    else:
        imax = 0.024
    words = [c["io"], DIRECTION_WORDS[direction]]
    words += ["%s %s" % (n.lower(), v) for n, v in c["attrs"]]
    lines = ["[Model]        " + key,
             "| " + ", ".join(words),
             "Model_type     " + MODEL_TYPES[direction]]
    if direction != "in":
        lines += ["Polarity       Non-Inverting", "Enable         Active-High"]
    lines += ["Vinl = %.4fV" % (0.3 * vcc), "Vinh = %.4fV" % (0.7 * vcc)]
    if direction != "in":
        lines += ["Vmeas = %.4fV" % (0.5 * vcc), "Cref = 0.0pF", "Rref = 1.0M"]
    lines += ["C_comp         2.10pF           1.80pF           2.40pF", "|",
              "[Temperature Range]   25.0      100.0     0.0",
              "[Voltage Range]       %.2fV     %.2fV     %.2fV" % (vcc, vcc * 0.95, vcc * 1.05)]
    wide = linspace(-vcc, 2.0 * vcc, VI_POINTS)
    knee = 0.35 * vcc
    if direction != "in":
        lines += vi_table("[Pulldown]", wide, lambda v: imax * math.tanh(v / knee))
        if direction != "od":
            lines += vi_table("[Pullup]", wide, lambda v: -imax * math.tanh(v / knee))
    elif key[10] in "udkcevw":
        weak = 1.0e-4 * vcc
        name = "[Pulldown]" if key[10] in "dew" else "[Pullup]"
        sign = 1.0 if name == "[Pulldown]" else -1.0
        lines += vi_table(name, wide, lambda v: sign * weak * math.tanh(v / knee))
    clamp = linspace(-vcc, vcc, VI_POINTS)
    lines += vi_table("[GND Clamp]", clamp, lambda v: -max(0.0, -v - 0.6) / 4.0)
    lines += vi_table("[POWER Clamp]", clamp, lambda v: max(0.0, -v - 0.6) / 4.0)
    if direction != "in":
        t_edge = 0.6 if key[6] == "f" else 1.4
        lines += ["[Ramp]",
                  "dV/dt_r        %.3f/%.2fn      %.3f/%.2fn      %.3f/%.2fn"
                  % (0.6 * vcc, t_edge, 0.58 * vcc, t_edge * 1.35, 0.62 * vcc, t_edge * 0.75),
                  "dV/dt_f        %.3f/%.2fn      %.3f/%.2fn      %.3f/%.2fn"
                  % (0.6 * vcc, t_edge * 0.92, 0.58 * vcc, t_edge * 1.25, 0.62 * vcc, t_edge * 0.7),
                  "R_load = 50"]
        t_end = 4.0 * t_edge
        lines += wave_table("[Rising Waveform]", vcc, 0.0, True, wave_points, t_end)
        lines += wave_table("[Rising Waveform]", vcc, vcc, True, wave_points, t_end)
        lines += wave_table("[Falling Waveform]", vcc, 0.0, False, wave_points, t_end)
        lines += wave_table("[Falling Waveform]", vcc, vcc, False, wave_points, t_end)
    lines += ["|", "| End [Model] " + key, "|" + "*" * 72]
    return lines


def wave_row_bytes():
    return len("%10.4fn  %9.4f  %9.4f  %9.4f" % (0.0, 0.0, 0.0, 0.0)) + 1


# ---------------------------------------------------------------------------
# Balls of a package: JEDEC row names (no I, O, Q, S, X, Z) times columns.
# ---------------------------------------------------------------------------
def ball_rows(count):
    letters = [ch for ch in "ABCDEFGHIJKLMNOPQRSTUVWXYZ" if ch not in "IOQSXZ"]
    rows = list(letters)
    for first in letters:
        for second in letters:
            rows.append(first + second)
    return rows[:count]


def balls(rows, cols):
    return [r + str(c) for r in ball_rows(rows) for c in range(1, cols + 1)]


# ---------------------------------------------------------------------------
# Master file
# ---------------------------------------------------------------------------
HEADING_WORDS = ("SLEW", "PULLMODE", "IMPEDENCE", "IMPEDANCE", "MIPI HARD DPHY MODE",
                 "TERMVCC", "TERMGND", "TERMVTT", "VCMT", "DIFFERENTIAL RESISTOR",
                 "DIFFERENTIAL CURRENT", "DIFFERENTIAL DRIVE CURRENT", "TERMINATION",
                 "MULTI DRIVE", "DIFF DRIVE")


def looks_like_heading(line):
    """Whether the naming table scan would take this line for a table heading."""
    if "=" in line:
        return False
    text = line.strip().upper()
    first = text.replace("(", " ").split(" ")[0] if text else ""
    if first == "STANDARD":
        return True
    return any(word in text for word in HEADING_WORDS)


def master_preamble(n_models):
    head = [
        "[IBIS Ver]      5.0",
        "[File Name]     " + MASTER_NAME,
        "[File Rev]      1.3",
        "[Date]          November 16, 2026",
        "[Source]        Corvane Technology, characterisation laboratory.",
        "                Typical, minimum and maximum columns are the nominal,",
        "                weak and strong process corners.",
        "[Notes]         Master IBIS library of the KVA3 programmable logic family,",
        "                benchmark edition with %d models. It holds one model for" % n_models,
        "                every legal combination of IO settings; design tools copy",
        "                the models a design uses.",
        "                Device:   KVA3 family, all densities and packages",
        "                Device status by part number:",
        "                  KVA3-17E-6BG256C     Production     2026-03",
        "                  KVA3-40E-6BG256C     Production     2026-06",
        "                  KVA3-70E-6BG381C     Preliminary    2026-09",
        "                  %-20s Preliminary    2026-11" % FAMILY_PART,
        "",
        "                Model naming convention",
        "                Every model name has 20 characters:",
        "                  characters 1-3   = io standard code (table below)",
        "                  characters 4-6   = supply in hundredths of a volt",
        "                  character  7     = edge rate code",
        "                  characters 8-10  = drive in tenths of a mA (xxx = none)",
        "                  character  11    = pull code",
        "                  character  12    = output impedance code",
        "                  characters 13-15 = reserved fields, a = not used",
        "                  character  16    = common mode code",
        "                  character  17    = differential resistor code",
        "                  character  18    = differential drive code",
        "                  characters 19-20 = in, ou, io or od (direction)",
        "",
    ]
    for line in head:
        if looks_like_heading(line):
            raise AssertionError("line would open a naming table: " + line)
    lines = list(head)
    for heading, caption, rows in NAMING_TABLES:
        lines += [heading, "|-----------------------------",
                  "| %-16s code" % caption, "|-----------------------------"]
        lines += ["  %-16s %s" % (value, code) for value, code in rows]
        lines += ["|-----------------------------", ""]
    lines += [
        "[Disclaimer]    The models are provided as is, for simulation only. Their",
        "                results do not replace the data sheet.",
        "[Copyright]     Copyright 2026 Corvane Technology. All rights reserved.",
        "|",
        "[Component]     " + COMPONENT,
        "[Manufacturer]  Corvane Technology",
        "[Package]",
        "| variable       typ              min              max",
    ]
    packages = [("CABGA256", 0.210, 3.10, 0.90), ("CSBGA132", 0.180, 2.60, 0.75),
                ("CABGA381", 0.230, 3.40, 1.00), (PACKAGE, 0.290, 4.20, 1.35)]
    for name, r, l, c in packages:
        lines += ["|" + name,
                  "R_pkg          %.3f            %.3f            %.3f" % (r, r * 0.7, r * 1.35),
                  "L_pkg          %.2fnH           %.2fnH           %.2fnH" % (l, l * 0.7, l * 1.4),
                  "C_pkg          %.2fpF           %.2fpF           %.2fpF" % (c, c * 0.78, c * 1.33),
                  "|"]
    return lines


def master_pins(models):
    """[Pin] rows and [Diff pin] rows: one pin per model, a pair per differential one."""
    needed = sum(2 if k[:3] in DIFFERENTIAL_CODES else 1 for k, _ in models)
    cols = 48
    rows = -(-needed // cols)
    pool = balls(rows, cols)
    pin_rows, diff_rows = [], []
    at = 0
    for key, _c in models:
        if key[:3] in DIFFERENTIAL_CODES:
            p, n = pool[at], pool[at + 1]
            at += 2
            pin_rows.append("%-6s %-16s %-22s 0.050    1.20nH   0.35pF" % (p, "IO_%s_p" % p, key))
            pin_rows.append("%-6s %-16s %-22s 0.050    1.20nH   0.35pF" % (n, "IO_%s_n" % p, key))
            diff_rows.append("%-11s %-8s 0.100V  0ns         NA          NA" % (p, n))
        else:
            p = pool[at]
            at += 1
            pin_rows.append("%-6s %-16s %-22s 0.050    1.20nH   0.35pF" % (p, "IO_" + p, key))
    lines = ["[Pin]  signal_name      model_name             R_pin    L_pin    C_pin"]
    lines += pin_rows + ["|"]
    lines += ["[Diff pin]  inv_pin  vdiff   tdelay_typ  tdelay_min  tdelay_max"]
    lines += diff_rows + ["|"]
    return lines


def write_lines(out, lines):
    for line in lines:
        if len(line) > MAX_LINE:
            raise AssertionError("line too long (%d): %s" % (len(line), line[:60]))
        out.write(line)
        out.write("\n")


def write_master(path, models, size_mb):
    head = master_preamble(len(models)) + master_pins(models) + ["|" + "*" * 72]
    head_bytes = sum(len(s) + 1 for s in head)
    # The waveform length is chosen so that the file comes out at the size asked.
    fixed = [model_block(k, c, 0) for k, c in models]
    fixed_bytes = head_bytes + sum(len(s) + 1 for b in fixed for s in b) + len("[End]\n")
    tables = 4 * sum(1 for k, _ in models if k[18:20] != "in")
    target = int(size_mb * 1000 * 1000)
    points = max(2, round((target - fixed_bytes) / (wave_row_bytes() * tables)))
    spans = {}
    with open(path, "w", newline="\n") as out:
        write_lines(out, head)
        for key, c in models:
            start = out.tell()
            write_lines(out, model_block(key, c, points))
            spans[key] = (start, out.tell())
        write_lines(out, ["[End]"])
    return points, spans


# ---------------------------------------------------------------------------
# Pad report
# ---------------------------------------------------------------------------
BANK_VOLTS = [("0", "3.3"), ("1", "3.3"), ("2", "2.5"), ("3", "1.8"),
              ("4", "1.5"), ("5", "1.2"), ("6", "2.5"), ("7", "1.8")]
SIDES = {"0": "PT", "1": "PT", "2": "PR", "3": "PR", "4": "PB", "5": "PB", "6": "PL", "7": "PL"}

BUS_WORDS = {
    "lvc": ["gpio", "led", "ctrl", "sense", "adc_d", "dac_d", "mcu_ad", "irq"],
    "ttl": ["ttl_bus", "legacy_io", "spi", "uart"],
    "pci": ["pci_ad", "pci_cbe"],
    "ss1": ["ddr_a", "ddr_ba"], "ss2": ["ddr_dq", "ddr_dm"],
    "sd1": ["ddr_ck"], "sd2": ["ddr_dqs"],
    "hs1": ["qdr_d", "qdr_sa"], "hs2": ["qdr_q"],
    "hd1": ["qdr_k"], "hd2": ["qdr_cq"],
    "lvd": ["lvds_rx", "lvds_tx"], "blv": ["blvds_bus"], "pcl": ["pecl_clk"],
    "hyp": ["hyp_dq"],
}


def bank_for(key):
    volts = "%.1f" % supply(key)
    return [b for b, v in BANK_VOLTS if v == volts]


def shuffled_attrs(attrs, rng):
    """The PIO properties in a random order, but the pull group keeps its own."""
    order = list(attrs)
    rng.shuffle(order)
    pull_items = [a for a in attrs if a[0] in PULL_GROUP]
    slots = [i for i, a in enumerate(order) if a[0] in PULL_GROUP]
    for i, a in zip(slots, pull_items):
        order[i] = a
    return order


def make_design(models, n_signals, n_design, n_diff, rng):
    diff = [m for m in models if m[0][:3] in DIFFERENTIAL_CODES]
    single = [m for m in models if m[0][:3] not in DIFFERENTIAL_CODES]
    n_diff = min(n_diff, len(diff), n_design)
    used = sorted(rng.sample(diff, n_diff)) + sorted(rng.sample(single, n_design - n_diff))
    # Two signals for each differential model, the rest spread over the others.
    counts = {}
    for key, _c in used[:n_diff]:
        counts[key] = 2
    rest = n_signals - sum(counts.values())
    if rest < n_design - n_diff:
        sys.exit("gen_bench: too few signals for the design models")
    for key, _c in used[n_diff:]:
        counts[key] = 1
    rest -= n_design - n_diff
    for key, _c in rng.choices(used[n_diff:], k=rest):
        counts[key] += 1

    signals = []
    per_code = {}
    for key, c in used:
        # Bus names cycle through the words of the standard: gpio0, led0, ...
        words = BUS_WORDS[key[:3]]
        serial = per_code.get(key[:3], 0)
        per_code[key[:3]] = serial + 1
        bus = "%s%d" % (words[serial % len(words)], serial // len(words))
        banks = bank_for(key)
        for i in range(counts[key]):
            signals.append({
                "name": "%s[%d]" % (bus, i),
                "key": key,
                "buffer": "%s_%s" % (c["io"], c["port"]),
                "attrs": shuffled_attrs(c["attrs"], rng),
                "bank": banks[i % len(banks)],
                "diff": key[:3] in DIFFERENTIAL_CODES,
            })

    # Balls are handed out bank by bank, a pair of neighbours for a pair.
    pool = balls(34, 34)
    needed = sum(2 if s["diff"] else 1 for s in signals)
    if needed > len(pool):
        sys.exit("gen_bench: %d pins do not fit the %d balls of %s" % (needed, len(pool), PACKAGE))
    at = 0
    site_serial = {}
    for bank, _v in BANK_VOLTS:
        for s in (s for s in signals if s["bank"] == bank):
            side = SIDES[bank]
            site_serial[side] = site_serial.get(side, 0) + 1
            s["site"] = "%s%d" % (side, site_serial[side])
            s["pin"] = pool[at]
            at += 1
            if s["diff"]:
                s["neg_pin"] = pool[at]
                at += 1
    unused = pool[at:]
    return used, signals, unused


def table_lines(headers, rows):
    widths = [max(len(h), *(len(r[i]) for r in rows)) if rows else len(h)
              for i, h in enumerate(headers)]
    rule = "+" + "+".join("-" * (w + 2) for w in widths) + "+"

    def fmt(cells):
        return "|" + "|".join(" %-*s " % (w, c) for w, c in zip(widths, cells)) + "|"

    return [rule, fmt(headers), rule] + [fmt(r) for r in rows] + [rule]


def ball_order(pin):
    row = pin.rstrip("0123456789")
    return (len(row), row, int(pin[len(row):]))


def write_pad(path, signals, unused):
    lines = [
        "Pad Report - Corvane Design Suite 2026.2 (build 118)",
        "Mon Nov 16 09:12:44 2026",
        "",
        "Command line:   par -f bench.p2t bench_map.udb bench.udb",
        "",
        "Loading design for application par from file bench_map.udb.",
        "Design name: bench_top",
        "NCD version: 3.3",
        "Vendor:      CORVANE",
        "PART TYPE:   " + FAMILY_PART,
        "PACKAGE:     " + PACKAGE,
        "Performance: 6",
        "Package Status:                     Final          Version 1.74.",
        "Performance Hardware Data Status:   Final          Version 43.23.",
        "",
        "Pinout by Port Name:",
    ]
    by_name = sorted(signals, key=lambda s: s["name"])
    rows = [[s["name"], "%s/%s" % (s["pin"], s["bank"]), s["buffer"], s["site"] + "A", "",
             " ".join("%s:%s" % a for a in s["attrs"])] for s in by_name]
    lines += table_lines(["Port Name", "Pin/Bank", "Buffer Type", "Site", "Dual Function",
                          "PIO Properties"], rows)
    lines += ["", "Vccio by Bank:"]
    lines += table_lines(["Bank", "Vccio"], [[b, v + "V"] for b, v in BANK_VOLTS])
    lines += ["", "Vref by Bank:"]
    lines += table_lines(["Vref", "Pin", "Bank # (Vref)"],
                         [["VREF1_%s" % b, unused[i] if i < len(unused) else "-", b]
                          for i, b in enumerate(("3", "4", "7"))])
    lines += ["", "Pinout by Pin Number:"]
    rows = []
    for s in signals:
        rows.append([s["pin"], "%s/%s" % (s["pin"], s["bank"]), s["buffer"], s["site"] + "A", "",
                     s["name"]])
        if s["diff"]:
            rows.append([s["neg_pin"], "%s/%s" % (s["neg_pin"], s["bank"]), s["buffer"],
                         s["site"] + "B", "", s["name"] + "-"])
    for pin in unused[3:]:
        rows.append([pin, "%s/7" % pin, "", "PU%s" % pin, "", "unused, PULL:DOWN"])
    rows.sort(key=lambda r: ball_order(r[0]))
    lines += table_lines(["Pin/Bank", "Buffer Type", "Site", "Dual Function", "Pin Info"],
                         [r[1:] for r in rows])
    lines += ["", "sysCONFIG Pins:"]
    lines += table_lines(["Pad Name", "sysCONFIG Pin Name", "Bank", "Persistent"],
                         [["PR40A", "DONE", "8", "NO"], ["PT5A", "PROGRAMN", "8", "NO"]])
    used_pins = sum(2 if s["diff"] else 1 for s in signals)
    lines += ["", "Dedicated sysCONFIG Pins:", "", "Device Summary:",
              "  Number of I/Os used:       %d out of %d" % (used_pins, used_pins + len(unused))]
    with open(path, "w", newline="\n") as out:
        write_lines(out, lines)


# ---------------------------------------------------------------------------
# Package model file
# ---------------------------------------------------------------------------
def write_package(path, side):
    """A package model of side x side balls, full L and C matrices."""
    names = balls(side, side)
    n = len(names)
    rows = [i // side for i in range(n)]
    cols = [i % side for i in range(n)]
    centre = (side - 1) / 2.0
    reach = math.hypot(centre, centre) or 1.0
    out = open(path, "w", newline="\n")
    out.write("[IBIS Ver]      5.0\n[File Name]     %s\n[File Rev]      1.0\n" % os.path.basename(path))
    out.write("| Synthetic package model of the benchmark: %d balls, full L and C matrices.\n" % n)
    out.write("[Define Package Model]  BENCH_%dX%d\n" % (side, side))
    out.write("[Manufacturer]          Corvane Technology\n[OEM]                   Corvane Technology\n")
    out.write("[Description]           %d-ball BGA, every ball coupled to every other\n" % n)
    out.write("[Number Of Pins]        %d\n[Pin Numbers]\n" % n)
    out.write("".join(name + "\n" for name in names))
    out.write("[Model Data]\n[Resistance Matrix]     Sparse_matrix\n")
    for i, name in enumerate(names):
        far = math.hypot(rows[i] - centre, cols[i] - centre) / reach
        out.write("[Row] %s\n%s %.4f\n" % (name, name, 0.06 + 0.18 * far))
    for keyword, self_low, self_span, mutual in (("[Inductance Matrix]", 2.0e-9, 2.5e-9, 0.45e-9),
                                                  ("[Capacitance Matrix]", 0.35e-12, 0.45e-12, -0.06e-12)):
        out.write("%s  Full_matrix\n" % keyword)
        for i, name in enumerate(names):
            far = math.hypot(rows[i] - centre, cols[i] - centre) / reach
            ri, ci = rows[i], cols[i]
            values = [self_low + self_span * far]
            values += [mutual / (1.0 + (rows[j] - ri) ** 2 + (cols[j] - ci) ** 2) for j in range(i + 1, n)]
            text = ["%.4e" % v for v in values]
            out.write("[Row] %s\n" % name)
            out.write("".join(" ".join(text[k:k + 8]) + "\n" for k in range(0, len(text), 8)))
    out.write("[End Model Data]\n[End Package Model]\n[End]\n")
    out.close()


# ---------------------------------------------------------------------------
def main():
    here = os.path.dirname(os.path.abspath(__file__))
    ap = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    ap.add_argument("outdir", nargs="?", default=os.path.join(here, "out"),
                    help="where the files go (bench/out)")
    ap.add_argument("--models", type=int, default=2000, help="models in the master (2000)")
    ap.add_argument("--size-mb", type=float, default=20.0,
                    help="size of the master in MB of 10^6 bytes (20)")
    ap.add_argument("--signals", type=int, default=None,
                    help="signals of the design (1000, or enough for the design models)")
    ap.add_argument("--design-models", type=int, default=100,
                    help="distinct models the design uses (100)")
    ap.add_argument("--diff-models", type=int, default=10,
                    help="of those, differential models, two pairs of pins each (10)")
    ap.add_argument("--package-balls", type=int, default=0,
                    help="also write the package model file beside the master, of N x N balls "
                         "(34 or more, so that the design's balls are in it; 0: none)")
    args = ap.parse_args()
    if args.signals is None:
        # Every design model needs a signal, a differential one two.
        args.signals = max(1000, args.design_models + args.diff_models)

    rng = random.Random(SEED)
    models = master_models(args.models, rng)
    used, signals, unused = make_design(models, args.signals, args.design_models,
                                        args.diff_models, rng)
    for s in signals:
        assert model_key({"io": s["buffer"].rsplit("_", 1)[0], "port": s["buffer"].rsplit("_", 1)[1],
                          "attrs": s["attrs"]}) == s["key"], s

    os.makedirs(args.outdir, exist_ok=True)
    master = os.path.join(args.outdir, MASTER_NAME)
    points, spans = write_master(master, models, args.size_mb)
    # One pass finds the design models' blocks, reading the master from its
    # top down to the last of them; then each block is read again to be
    # copied.
    scan_bytes = max(spans[k][0] for k, _ in used) + sum(spans[k][1] - spans[k][0] for k, _ in used)
    write_pad(os.path.join(args.outdir, PAD_NAME), signals, unused)
    package = os.path.join(args.outdir, PACKAGE_FILE)
    if args.package_balls:
        write_package(package, args.package_balls)
    elif os.path.exists(package):
        os.remove(package)
    with open(os.path.join(args.outdir, "expected_models.txt"), "w") as out:
        out.write("".join(k + "\n" for k, _ in sorted(used)))
    diff_signals = sum(1 for s in signals if s["diff"])
    info = [
        ("master", MASTER_NAME), ("pad", PAD_NAME),
        ("master_bytes", os.path.getsize(master)),
        ("models", len(models)), ("signals", len(signals)),
        ("design_models", len(used)), ("diff_signals", diff_signals),
        ("pin_rows", len(signals) + diff_signals),
        ("size_mb", args.size_mb), ("waveform_points", points),
        ("model_pass_bytes", scan_bytes),
        ("package_balls", args.package_balls), ("package", PACKAGE_FILE if args.package_balls else ""),
    ]
    with open(os.path.join(args.outdir, "bench_info.txt"), "w") as out:
        out.write("".join("%s=%s\n" % kv for kv in info))
    for k, v in info:
        print("%-16s %s" % (k, v))


if __name__ == "__main__":
    main()
