#!/usr/bin/env python3
"""Computes the golden sequences of scheduler_golden.inc, independently of the C++ code: straight from the published
FSRS-5 formulas in 50-digit decimal arithmetic. Run it and redirect its output to that file."""
from decimal import Decimal as D, getcontext, ROUND_HALF_UP
import itertools

getcontext().prec = 50
W = [D(x) for x in ("0.40255 1.18385 3.173 15.69105 7.1949 0.5345 1.4604 0.0046 1.54575 0.1192 1.01925 1.9395 0.11 "
                    "0.29605 2.2698 0.2315 2.9898 0.51655 0.6621").split()]
FACTOR = D(19) / D(81)


def clamp(x, low, high):
    return max(D(low), min(D(high), x))


def power(base, exponent):
    return (base.ln() * exponent).exp()


def whole(x):
    return x.quantize(D(1), rounding=ROUND_HALF_UP)


def d0(g):
    return clamp(W[4] - (W[5] * (g - 1)).exp() + 1, 1, 10)


def next_d(d, g):
    return clamp(W[7] * d0(4) + (1 - W[7]) * (d + -W[6] * (g - 3) * (10 - d) / 9), 1, 10)


def recall(t, s):
    return power(1 + FACTOR * t / max(s, D("0.01")), D("-0.5"))


def success(s, d, r, g):
    grow = W[8].exp() * (11 - d) * power(s, -W[9]) * ((W[10] * (1 - r)).exp() - 1)
    grow *= (W[15] if g == 2 else 1) * (W[16] if g == 4 else 1)
    return max(s * (1 + grow), D("0.01"))


def lapse(s, d, r):
    f = W[11] * power(d, -W[12]) * (power(s + 1, W[13]) - 1) * (W[14] * (1 - r)).exp()
    return max(min(f, s), D("0.01"))


def same_day(s, g):
    x = s * (W[17] * (g - 3 + W[18])).exp()
    x = max(x, s) if g >= 3 else min(x, s) if g == 1 else x
    return max(x, D("0.01"))


def interval(s, r):
    return clamp(whole(max(s, D("0.01")) / FACTOR * (1 / (r * r) - 1)), 1, 36500)


def fuzz(days, reps, salt):
    if days < 3:
        return days
    u = D(((reps * 0x9E3779B1 + salt) % 2**64) % 1001) / 1000
    return clamp(whole(days * (1 + (2 * u - 1) * D("0.05"))), 1, 36500)


def rate(m, g, elapsed, r, salt):
    """m: phase, s, d, reps, lapses, step; gives the new one and the seconds until due."""
    phase, s, d, reps, lapses, step = m
    reps += 1

    def days(n, s, d, lapses):
        return ("review", s, d, reps, lapses, 0), min(fuzz(n, reps, salt), D(36500)) * 86400

    def minutes(phase, step, n, s, d, lapses):
        return (phase, s, d, reps, lapses, step), D(n) * 60

    if phase == "new":
        s, d = W[g - 1], d0(g)
        return {1: lambda: minutes("learning", 0, 1, s, d, lapses), 2: lambda: minutes("learning", 0, 6, s, d, lapses),
                3: lambda: minutes("learning", 1, 10, s, d, lapses),
                4: lambda: days(max(interval(s, r), D(4)), s, d, lapses)}[g]()
    old_d, d = d, next_d(d, g)
    if phase == "learning":
        s = same_day(s, g)
        if g == 1:
            return minutes("learning", 0, 1, s, d, lapses)
        if g == 2:
            return minutes("learning", step, 6 if step == 0 else 10, s, d, lapses)
        if g == 3 and step + 1 < 2:
            return minutes("learning", step + 1, 10, s, d, lapses)
        return days(interval(s, r) if g == 3 else max(interval(s, r), D(4)), s, d, lapses)
    if phase == "relearning":
        return minutes("relearning", 0, 10, s, d, lapses) if g <= 2 else days(interval(s, r), s, d, lapses)
    t = max(D(elapsed) / 86400, D(0))
    if g == 1:
        return minutes("relearning", 0, 10, lapse(s, old_d, recall(t, s)), d, lapses + 1)
    nexts = {x: same_day(s, x) if t < 1 else success(s, old_d, recall(t, s), x) for x in (2, 3, 4)}
    i = {x: interval(nexts[x], r) for x in nexts}
    hard = min(i[2], i[3])
    good = max(i[3], hard + 1)
    easy = max(i[4], good + 1)
    return days({2: hard, 3: good, 4: easy}[g], nexts[g], d, lapses)


def main():
    print("// Made by scheduler_reference.py. Ratings, retention, salt, share of the interval waited before each rating;")
    print("// then after each rating: phase, step, lapses, seconds until due, stability, difficulty.")
    salt = 0x123456789ABCDEF
    plans = [("".join(p), D("0.9"), D(1)) for p in itertools.product("1234", repeat=3)]
    plans += [(x, D(r), D(w)) for x, r, w in (("3334443331333", "0.85", "1.3"), ("4444444444", "0.97", "1"),
              ("4444444444", "0.7", "2"), ("33123412341234", "0.9", "0.5"), ("332", "0.9", "0.01"),
              ("333", "0.9", "0.01"), ("334", "0.9", "0.01"), ("41324132", "0.8", "0.1"))]
    for ratings, r, wait in plans:
        m, due = ("new", D(0), D(0), 0, 0, 0), D(0)
        print(f'{{"{ratings}", {r}, {salt}ULL, {wait}, {{')
        for g in ratings:
            elapsed = float(due * wait)
            m, due = rate(m, int(g), elapsed, r, salt)
            print(f'    {{"{m[0]}", {m[5]}, {m[4]}, {due:.0f}, {m[1]:.17g}, {m[2]:.17g}}},')
        print("}},")


main()
