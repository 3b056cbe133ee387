#!/usr/bin/env python3
"""Computes the companion's pictures independently of the C++ code: from the keyframes of plim.json in 40-digit decimal
arithmetic.

    plim_reference.py motions > plim_motions_golden.inc     every reaction at 1,000 moments
    plim_reference.py scenes > plim_scenes_golden.inc       reactions that are played one into the other
    plim_reference.py wave 0.62                             one picture with all of its values, to look for a fault

A golden picture is one number, its fingerprint: all of its values, each times a weight made of its name, and the weights
of its shapes, colours and effects. No two faults of one size cancel each other out in it."""
from decimal import Decimal as D, getcontext
from pathlib import Path
import json
import math
import sys

getcontext().prec = 40
SOURCE = Path(__file__).resolve().parents[2] / "src" / "companion" / "plim.json"
SPEC = json.loads(SOURCE.read_text(encoding="utf-8"), parse_float=D, parse_int=D)
NAMES = ["idle", "wave", "cur", "think", "study", "win", "fail", "sleep"]

EASES = {
    "lin": lambda u: u,
    "in": lambda u: u ** 3,
    "out": lambda u: 1 - (1 - u) ** 3,
    "back": lambda u: 1 + D("2.70158") * (u - 1) ** 3 + D("1.70158") * (u - 1) ** 2,
    "step": lambda u: D(0) if u < 1 else D(1),
}


def smooth(u):
    return 4 * u ** 3 if u < D("0.5") else 1 - (2 - 2 * u) ** 3 / 2


def value_at(track, x):
    """Walks the segments from the last to the first."""
    if not track:
        return D(0)
    for before, after in reversed(list(zip(track, track[1:]))):
        if before[0] <= x <= after[0] and before[0] < after[0]:
            way = EASES.get(after[2], smooth) if len(after) > 2 else smooth
            return before[1] + (after[1] - before[1]) * way((x - before[0]) / (after[0] - before[0]))
    return track[0][1] if x < track[0][0] else track[-1][1]


def loops(reaction):
    loop = reaction.get("loop", [])
    return len(loop) == 2 and loop[1] > loop[0]


def local(reaction, t):
    if not loops(reaction):
        return min(t, reaction["dur"])
    start, end = reaction["loop"]
    return t if t <= end else start + (t - start) % (end - start)


def picture(name, t):
    reaction = SPEC["reactions"][name]
    x = local(reaction, t)
    pose = {**SPEC["base"], **{c: value_at(track, x) for c, track in reaction.get("pose", {}).items()}}
    steps = dict(SPEC["baseSteps"])
    for part, keys in reaction.get("steps", {}).items():
        passed = [shape for at, shape in keys if at <= x]
        steps[part] = passed[-1] if passed else steps[part]
    effects = [{"type": e["type"], "body": e.get("space") == "body", "color": e.get("c"),
                "v": {**e.get("v", {}), **{n: value_at(track, x) for n, track in e.get("tracks", {}).items()}}}
               for e in reaction.get("fx", [])]
    return {"pose": pose, "steps": steps, "fx": effects}


def faded(effects, share):
    shown = [{**e, "v": {**e["v"], "a": e["v"].get("a", D(1)) * share}} for e in effects]
    return [e for e in shown if e["v"]["a"] != 0]


class Stage:
    """What a player shows."""

    def __init__(self):
        self.name, self.t, self.since, self.old = "idle", D(0), D(0), None

    def picture(self):
        new = picture(self.name, self.t)
        if self.old is None or self.since >= SPEC["blend"]:
            return new
        w = smooth(self.since / SPEC["blend"])
        pose = {c: (1 - w) * self.old["pose"][c] + w * value for c, value in new["pose"].items()}
        return {"pose": pose, "steps": self.old["steps"] if w < D("0.5") else new["steps"],
                "fx": faded(self.old["fx"], 1 - w) + faded(new["fx"], w)}

    def play(self, name):
        if name == self.name and loops(SPEC["reactions"][name]):
            return
        self.old = self.picture()
        turned = self.old["pose"]["rot"] + 180
        self.old["pose"]["rot"] = turned - 360 * math.floor(turned / 360) - 180
        self.name, self.t, self.since = name, D(0), D(0)

    def advance(self, dt):
        self.t += dt
        self.since += dt
        reaction = SPEC["reactions"][self.name]
        if not loops(reaction) and self.t >= reaction["dur"]:
            self.play("idle")


def weight(name):
    """Between 1 and 2: the first 24 bits of the name's 64-bit FNV-1a."""
    hashed = 0xCBF29CE484222325
    for byte in name.encode():
        hashed = (hashed ^ byte) * 0x100000001B3 % 2 ** 64
    return 1 + D(hashed >> 40) / 2 ** 24


def fingerprint(shown):
    total = sum(weight(f"pose {channel}") * value for channel, value in shown["pose"].items())
    total += sum(weight(f"{part} {shape}") for part, shape in shown["steps"].items())
    for i, effect in enumerate(shown["fx"]):
        total += weight(f"{i} {effect['type']} {'body' if effect['body'] else 'canvas'} {effect['color'] or ''}")
        total += sum(weight(f"{i} {name}") * value for name, value in effect["v"].items())
    return f"{total:.9f}"


def print_numbers(numbers):
    for start in range(0, len(numbers), 7):
        print("    " + ", ".join(numbers[start:start + 7]) + ",")


def print_motions():
    print("// Made by plim_reference.py: fingerprints of each reaction at 0, 1, … 999 times 13/1024 seconds.")
    for name in NAMES:
        print(f'{{"{name}", {{')
        print_numbers([fingerprint(picture(name, D(13 * i) / 1024)) for i in range(1000)])
        print("}},")


def scenes():
    """Plays and pauses; pauses in 64ths of a second, so that they add up without rounding."""
    for i, first in enumerate(NAMES):
        for j, second in enumerate(NAMES):
            yield [first, 3 + (37 * i + 23 * j) % 180, second, 1, 4, 5, 6, 3, 40]
    yield ["win", 45, "win", 5, "wave", 3, "cur", 7, "win", 10, "fail", 1, "fail", 16, 20]
    yield ["study", 9, "sleep", 8, "sleep", 9, "think", 17, "cur", 2, "study", 200, "idle", 7, "idle", 12]
    yield ["fail", 166, 1, 10, 10, "win", 127, 1, 1, 16, 1, 300, "wave", 154, 5]
    yield ["think", "wave", "cur", "win", 9, "study", "fail", 11, "idle", "sleep", 12, 6]


def print_scenes():
    print("// Made by plim_reference.py: what is done to a player, reactions and 64ths of a second that pass;")
    print("// and the fingerprint of what it shows after each of them.")
    for scene in scenes():
        stage, shown = Stage(), []
        for step in scene:
            stage.play(step) if isinstance(step, str) else stage.advance(D(step) / 64)
            shown.append(stage.picture())
        assert max(len(each["fx"]) for each in shown) <= 16  # more are not kept
        print(f'{{"{" ".join(map(str, scene))}", {{')
        print_numbers([fingerprint(each) for each in shown])
        print("}},")


def main():
    if sys.argv[1:] == ["motions"]:
        print_motions()
    elif sys.argv[1:] == ["scenes"]:
        print_scenes()
    elif len(sys.argv) == 3:
        print(json.dumps(picture(sys.argv[1], D(sys.argv[2])), indent=2, default=float))
    else:
        sys.exit(__doc__)


main()
