#!/usr/bin/env python3
"""Curves and imports of nrv718-preset against a second way of computing them: second_way.py NRV718-PRESET

What is set and shown are words, so that no byte of a preset is known here; curves asked for are complex transfer functions.
"""
import csv
import json
import math
import os
import random
import re
import subprocess
import sys
import tempfile

FREQUENCIES = [20, 21, 22, 23, 25, 26, 28, 30, 31, 33, 36, 38, 40, 42, 45, 47, 50, 53, 57, 59, 63, 67, 71, 76, 80, 85, 90,
               95, 100, 106, 113, 119, 125, 134, 143, 151, 160, 170, 180, 190, 200, 212, 225, 237, 250, 266,
               283, 299, 315, 336, 358, 379, 400, 425, 450, 475, 500, 532, 565, 597, 630, 672, 715, 757, 800,
               850, 900, 950, 1000, 1062, 1125, 1187, 1250, 1337, 1425, 1512, 1600, 1700, 1800, 1900, 2000,
               2125, 2250, 2375, 2500, 2662, 2825, 2987, 3150, 3362, 3575, 3787, 4000, 4250, 4500, 4750, 5000,
               5325, 5650, 5975, 6300, 6725, 7150, 7575, 8000, 8500, 9000, 9500, 10000, 10625, 11250, 11875,
               12500, 13375, 14250, 15125, 16000, 17000, 18000, 19000, 20000]
SLOPES = ["Bypass", "- 6 dB/oct Bw", "-12dB/oct Bw", "-12dB/oct Lz", "-12dB/oct Bs", "-12dB/oct Cv", "-18dB/oct Bw",
          "-18dB/oct Cv", "-24dB/oct Bw", "-24dB/oct Lz", "-24dB/oct Cv"]
INPUTS = ["in-a", "in-b"]
OUTPUTS = [f"out{n}" for n in range(1, 7)]
TITLES = {"in-a": "In A", "in-b": "In B"} | {f"out{n}": f"Out {n}" for n in range(1, 7)}


def grid():
    hz = 10
    while hz <= 20000:
        if 799 < hz < 20000:
            hz = min(hz + 20, 20000)
        yield float(hz)
        hz += 1


GRID = list(grid())


def db(ratio):
    return 20 * math.log10(ratio)


def bell(gain, centre, octaves, f):
    q = (2**octaves + 1) / (2 * (2**octaves - 1))
    return gain / (1 + (q * (centre / f - f / centre)) ** 2)


def shelf(gain, c, low, order, f):
    a = 10 ** (gain / 20)
    lower, upper = (a, 1) if low else (1, a)
    if order == 1:
        over, under = c + f, c / lower + f / upper
    else:
        over = c * c + f * f + math.sqrt(2) * c * f
        under = c * c / lower + f * f / upper + math.sqrt(2) * c * f / math.sqrt(a)
    return db(over / under)


def side(slope, c, high, f):
    """As a low pass of f/c, which a high pass is with the axis turned round."""
    w = c / f if high else f / c
    if slope == "Bypass":
        return 0.0
    order = {"- 6": 1, "-12": 2, "-18": 3, "-24": 4}[slope[:3]]
    kind = slope[-2:]
    if kind == "Bw":
        return -10 * math.log10(1 + w ** (2 * order))
    if kind == "Lz":
        return -20 * math.log10(1 + w**order)
    s = 1j * w
    if kind == "Bs":
        u = s / 0.7532
        return db(abs(3 / (u * u + 3 * u + 3)))

    def pair(scale, damping):
        u = s / scale
        return 1 / (u * u + damping * u + 1)

    if order == 2:
        return db(abs(pair(0.8409, 0.7654)) / math.sqrt(2))
    if order == 3:
        return db(abs(pair(0.9159, 0.3254) / (1 + s / 0.298)))
    return db(abs(pair(0.9502, 0.1789) * pair(0.4425, 0.9276)) / math.sqrt(2))


class Tool:
    def __init__(self, program, folder):
        self.program, self.folder = program, folder

    def run(self, *arguments, outcome=0):
        ran = subprocess.run([self.program, *arguments], cwd=self.folder, capture_output=True, text=True, check=False)
        if ran.returncode != outcome:
            raise SystemExit(f"{arguments}: ends with {ran.returncode}, not {outcome}\n{ran.stdout}{ran.stderr}")
        return ran.stdout

    def write(self, name, data):
        with open(os.path.join(self.folder, name), "wb") as file:
            file.write(data)


def drawn(chance):
    """A preset by its keys."""
    values = {"master.gain": chance.randrange(-60, 61) / 5}
    for channel in INPUTS + OUTPUTS:
        values[f"{channel}.gain"] = chance.randrange(-60, 61) / 5
        for n in range(1, 11 if channel in INPUTS else 5):
            values[f"{channel}.peq{n}.gain"] = chance.randrange(-75, 76) / 5
            values[f"{channel}.peq{n}.frequency"] = chance.choice(FREQUENCIES)
            values[f"{channel}.peq{n}.bandwidth"] = chance.randrange(1, 61) / 20
        for name in ["low-shelf", "high-shelf"] if channel in INPUTS else ["shelf"]:
            values[f"{channel}.{name}.gain"] = chance.randrange(-24, 13) / 2
            values[f"{channel}.{name}.frequency"] = chance.choice(FREQUENCIES)
            values[f"{channel}.{name}.type"] = chance.choice(
                ["Bypass", "1' ord", "2' ord"] if channel in INPUTS else
                ["Bypass", "1' ord Lo", "2' ord Lo", "1' ord Hi", "2' ord Hi"])
        for name in [] if channel in INPUTS else ["hp", "lp"]:
            values[f"{channel}.{name}.frequency"] = chance.choice(FREQUENCIES)
            values[f"{channel}.{name}.slope"] = chance.choice(SLOPES)
    return values


def level(values, channel, f):
    total = values[f"{channel}.gain"] + values["master.gain"]
    for key, what in values.items():
        if not key.startswith(channel + ".") or not key.endswith((".bandwidth", ".type", ".slope")):
            continue
        place, name = key.rsplit(".", 1)
        c = values[place + ".frequency"]
        if name == "bandwidth":
            total += bell(values[place + ".gain"], c, what, f)
        elif name == "slope":
            total += side(what, c, place.endswith("hp"), f)
        elif what != "Bypass":
            low = place.endswith("low-shelf") or what.endswith("Lo")
            total += shelf(values[place + ".gain"], c, low, int(what[0]), f)
    return total


def check_curves(tool, chance):
    values = drawn(chance)
    tool.run("set", "empty.n91", *(f"{key}={value}" for key, value in values.items()), "-o", "drawn.n91")
    shown = json.loads(tool.run("show", "drawn.n91", "--json"))
    for key, value in values.items():
        assert shown[key]["value"] == value, (key, value, shown[key])
    rows = list(csv.reader(tool.run("curve", "drawn.n91", "--add", "in-b", "--csv", "-").splitlines()))
    assert [float(row[0]) for row in rows[1:]] == GRID
    for row in rows[1::7]:
        f = float(row[0])
        in_b = level({**values, "master.gain": 0.0}, "in-b", f)
        for n, channel in enumerate(INPUTS + OUTPUTS):
            expected = level(values, channel, f) + (in_b if channel in OUTPUTS else 0)
            assert abs(float(row[n + 1]) - expected) < 1e-6, (channel, f, row[n + 1], expected)


def asked(kind, hz, gain, q, f):
    s = 1j * f / hz
    a = 10 ** (gain / 40)
    if kind == "PK":
        return db(abs((s * s + s * a / q + 1) / (s * s + s / (a * q) + 1)))
    if kind in ("HS", "HP"):
        s = 1 / s
    if kind in ("LS", "HS"):
        root = math.sqrt(a) / q
        return db(abs(a * (s * s + root * s + a) / (a * s * s + root * s + 1)))
    return db(abs(1 / (s * s + s / q + 1)))


def nearest(wanted, values):
    return min(values, key=lambda value: abs(value - wanted))


def text_of(style, filters, chance):
    """Lines as other programs write them, in one of the ways in which numbers are written."""
    comma, groups = chance.choice([(False, ""), (True, ""), (False, ","), (True, ".")]) if style == "rew" else (False, "")

    def number(value, places):
        text = f"{value:,.{places}f}".replace(",", "G").replace(".", "," if comma else ".").replace("G", groups)
        return " " * chance.randrange(3) + text

    lines = ["Filter Settings file", "", "Notes: x"] if style == "rew" else ["# x", "Preamp: -3 dB"]
    for n, (kind, hz, gain, q) in enumerate(filters, 1):
        name = {"HP": "HP Q", "LP": "LP Q", "LS": "LS Q", "HS": "HS Q"}.get(kind, kind)
        if style == "eqapo":
            name = {"HP": "HPQ", "LP": "LPQ", "LS": "LSC", "HS": "HSC"}.get(kind, kind)
        gains = "" if kind in ("HP", "LP") else f" Gain {number(gain, 2)} dB"
        lines.append(f"Filter {n}: ON {name} Fc {number(hz, 1)} Hz{gains} Q {number(q, 4)}")
    text = chance.choice(["\n", "\r\n"]).join(lines)
    return len(lines) - len(filters) + 1, text.encode(chance.choice(["utf-8", "utf-8-sig", "utf-16", "cp1252"]))


def drawn_filters(chance, output):
    filters = []
    for _ in range(chance.randrange(1, 5 if output else 11)):
        octaves = nearest(chance.random() * 2.9 + 0.06, [n / 20 + 0.007 for n in range(1, 60)])
        filters.append(("PK", round(math.exp(chance.uniform(math.log(20), math.log(19900))), 1),
                        chance.randrange(-74, 75) / 5 + 0.07, round(1 / (2 * math.sinh(math.log(2) / 2 * octaves)), 4)))
    kinds = ["LS", "HS"]
    for kind in [chance.choice(kinds)] if output else kinds:
        filters.append((kind, round(chance.uniform(30, 15000), 1), chance.randrange(-23, 12) / 2 + 0.1, 0.7071))
    if output:
        filters += [("HP", 63.0, 0, 0.7071), ("LP", 8000.0, 0, 0.5412), ("LP", 8000.0, 0, 1.3066)]
    return filters


def played(kind, hz, gain, q, f):
    c = nearest(hz, FREQUENCIES)
    if kind == "PK":
        octaves = 2 / math.log(2) * math.asinh(1 / (2 * q))
        return bell(nearest(gain, [n / 5 for n in range(-75, 76)]), c, nearest(octaves, [n / 20 for n in range(1, 61)]), f)
    if kind in ("LS", "HS"):
        return shelf(nearest(gain, [n / 2 for n in range(-24, 13)]), c, kind == "LS", 2, f)
    if kind == "HP":
        return side("-12dB/oct Bw", c, True, f)
    return side("-24dB/oct Bw", c, False, f) / 2  # of two lines


def difference(filters, sounds):
    """The largest and the mean of what lies between the filters asked for and what sounds at a frequency."""
    points = [f for f in GRID if f >= 20]
    apart = [abs(sum(asked(*one, f) for one in filters) - sounds(f)) for f in points]
    steps = [math.log(b / a) for a, b in zip(points, points[1:])]
    mean = sum(step * (a + b) / 2 for step, a, b in zip(steps, apart, apart[1:])) / sum(steps)
    return max(apart), mean


def check_import(tool, chance, style):
    channel = chance.choice(INPUTS + OUTPUTS)
    filters = drawn_filters(chance, channel in OUTPUTS)
    first, text = text_of(style, filters, chance)
    tool.write("text.txt", text)
    told = tool.run("import", style, "text.txt", "empty.n91", "--channel", TITLES[channel], "-o", "into.n91")
    shown = json.loads(tool.run("show", "into.n91", "--json"))
    section = 0
    for n, (kind, hz, gain, q) in enumerate(filters):
        assert f"text.txt:{first + n}: " in told, told
        if kind == "PK":
            section += 1
            got = [shown[f"{channel}.peq{section}.{name}"]["value"] for name in ("gain", "frequency", "bandwidth")]
            octaves = 2 / math.log(2) * math.asinh(1 / (2 * q))
            expected = [nearest(gain, [n / 5 for n in range(-75, 76)]), nearest(hz, FREQUENCIES),
                        nearest(octaves, [n / 20 for n in range(1, 61)])]
            assert got == expected, (text, got, expected)
    largest, mean = map(float, re.search(r"kHz: largest ([0-9.e-]+) dB at [0-9.]+ Hz, mean ([0-9.e-]+) dB", told).groups())
    expected = difference(filters, lambda f: sum(played(*one, f) for one in filters))
    assert abs(largest - expected[0]) < 6e-4 and abs(mean - expected[1]) < 6e-4, (text, told, expected)
    fitted = tool.run("import", style, "text.txt", "empty.n91", "--channel", TITLES[channel], "--fit", "-o", "into.n91")
    after = [tuple(map(float, pair)) for pair in re.findall(r"largest ([0-9.e-]+) dB at [0-9.]+ Hz, mean ([0-9.e-]+)", fitted)]
    assert after[1] == (largest, mean) and after[0][0] <= largest and after[0][1] <= mean, fitted
    shown = {key: told["value"] for key, told in json.loads(tool.run("show", "into.n91", "--json")).items()}
    gains = shown[f"{channel}.gain"] + shown["master.gain"]
    expected = difference(filters, lambda f: level(shown, channel, f) - gains)
    assert abs(after[0][0] - expected[0]) < 6e-4 and abs(after[0][1] - expected[1]) < 6e-4, (text, fitted, expected)


def main():
    with tempfile.TemporaryDirectory() as folder:
        tool = Tool(os.path.abspath(sys.argv[1]), folder)
        tool.write("empty.n91", bytes(771))
        for seed in range(int(sys.argv[2]) if len(sys.argv) > 2 else 3):
            chance = random.Random(seed)
            check_curves(tool, chance)
            for style in ("rew", "eqapo"):
                check_import(tool, chance, style)
        print("both ways come to the same")


main()
