#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Prints the samples that the synthesizer's tests expect.

A second synthesizer that shares no code with the first one: slow, plain, and rounded to single
precision by hand at every place where the program holds a 32-bit number.
"""

import math
import struct

RATE = 44100
SLOTS = ["row0", "row1", "row2", "row3", "row4", "space", "enter", "backspace"]
SLOT_FACTORS = [1.12, 1.07, 1.03, 1.0, 0.95, 0.7, 0.84, 0.88]
LARGE = {"space", "enter", "backspace"}

SCROLL_TICK = dict(
    body=1400, modes=[(1.0, 0.5, 0.002)], click=0.6, clickTone=4000, clavo=0, clavoCutoff=2000,
    jacket=0, bump=0, rattle=0, length=0.02, releaseGain=0.45, drive=1.2)
FULL = dict(
    body=400, modes=[(1.0, 0.8, 0.006), (80.0, 1.0, 0.004), (3.0, 0.5, 0.000001), (2.7, 0.4, 0.003)],
    click=0.5, clickTone=3000, clavo=0.7, clavoCutoff=900, jacket=0.2, bump=0.3, rattle=0.25,
    length=0.06, releaseGain=0.5, drive=1.4)


def single(x):
    return struct.unpack("<f", struct.pack("<f", x))[0]


class SplitMix64:
    def __init__(self, seed):
        self.state = seed % 2**64

    def uniform(self):
        self.state = (self.state + 0x9E3779B97F4A7C15) % 2**64
        z = self.state
        z = (z ^ z >> 30) * 0xBF58476D1CE4E5B9 % 2**64
        z = (z ^ z >> 27) * 0x94D049BB133111EB % 2**64
        return ((z ^ z >> 31) >> 11) * 2.0**-53

    def noise(self):
        return 2 * self.uniform() - 1


def add(out, index, value):
    out[index] = single(out[index] + single(value))


def noise_burst(out, random, start, tau, length, a, gain):
    y = previous = 0.0
    for i in range(min(len(out) - start, length)):
        x = math.exp(-(i / RATE) / tau) * random.noise()
        y = a * (y + x - previous)
        previous = x
        add(out, start + i, gain * y)


def partial(out, random, start, frequency, tau, length, gain):
    n = min(len(out) - start, length)
    if n < 1 or frequency >= RATE / 2:
        return
    phase = 2 * math.pi * random.uniform()
    omega = 2 * math.pi * frequency / RATE
    for i in range(n):
        t = i / RATE
        envelope = math.exp(-t / tau) * (1 - math.exp(-t / 0.0003))
        add(out, start + i, gain * math.sin(phase + omega * i) * envelope * 0.5)


def thud(out, random, start, tau, length, a, gain):
    y1 = y2 = 0.0
    for i in range(min(len(out) - start, length)):
        t = i / RATE
        y1 = a * y1 + (1 - a) * random.noise()
        y2 = a * y2 + (1 - a) * y1
        add(out, start + i, gain * math.exp(-t / tau) * (1 - math.exp(-t / 0.0004)) * y2 * 6)


def finish(out, drive, gain):
    k = single(math.tanh(drive))
    out = [single(single(math.tanh(single(s * single(drive)))) / k) for s in out]
    peak = max((abs(s) for s in out), default=0)
    if not peak > 0:
        return out
    scale = single(single(gain * 0.9) / peak)
    out = [single(s * scale) for s in out]
    fade = min(len(out), 264)
    for remaining in range(fade):
        i = len(out) - 1 - remaining
        out[i] = single(single(out[i] * remaining) / fade)
    return out


def render(p, slot, release, variant):
    large = slot in LARGE
    position = SLOTS.index(slot)
    factor = SLOT_FACTORS[position]
    random = SplitMix64(0x9E3779B97F4A7C15 + position * 1000003 + 7919 * variant
                        + (104729 if release else 0))
    pitch = 1 + (variant - 2) * 0.013 + random.noise() * 0.004
    key_pitch = pitch * factor * (1.22 if release else 1)
    out = [0.0] * int(p["length"] * (1.5 if large else 1) * (0.7 if release else 1) * RATE)
    click = p["click"] * (0.5 if release else 1)

    bumps = not release and p["bump"] > 0
    if bumps:
        noise_burst(out, random, 0, 0.0009, 317, 0.7737886202446908, p["bump"] * 0.35)
    t0 = 0.006 if bumps else 0.0006
    impact = int(t0 * RATE)
    noise_burst(out, random, impact, 0.0007, 246, math.exp(-2 * math.pi * p["clickTone"] / RATE),
                click)
    cutoff = p["clavoCutoff"] * factor * (1.5 if release else 1)
    thud(out, random, impact, 0.0154 if large else 0.011, 4753 if large else 3395,
         math.exp(-2 * math.pi * cutoff / RATE),
         p["clavo"] * (0.3 if release else 1) * (1.3 if large else 1))
    for ratio, gain, decay in p["modes"]:
        frequency = p["body"] * key_pitch * ratio * (1 + 0.01 * random.noise())
        tau = decay * (1.35 if large else 1)
        partial(out, random, impact, frequency, tau, int(tau * 7 * RATE),
                gain * (0.6 if release else 1))
    if p["jacket"] > 0:
        start = int((t0 if release else t0 + 0.009) * RATE)
        level = p["jacket"] * (0.45 if release else 1)
        noise_burst(out, random, start, 0.0005, 176, 0.6338628053060449, level)
        partial(out, random, start, 4300 * pitch, 0.004, 1234, level * 0.35)
    if large and not release:
        noise_burst(out, random, int((t0 + 0.0035) * RATE), 0.0008, 282, 0.7309232001745205,
                    click * 0.45)
        wire = int((t0 + 0.004) * RATE)
        partial(out, random, wire, 1750 * pitch, 0.018, 5556, p["rattle"])
        partial(out, random, wire, 2630 * pitch, 0.012, 3704, p["rattle"] * 0.6)
    return finish(out, p["drive"], p["releaseGain"] if release else 1.0)


def render_mouse(release, variant):
    random = SplitMix64(0x9E3779B97F4A7C15 + 6151 * variant + (15485863 if release else 0))
    pitch = 1 + (variant - 2) * 0.02 + random.noise() * 0.006
    out = [0.0] * (970 if release else 1323)
    noise_burst(out, random, 17, 0.00025, 88, 0.5266909380029031, 0.7 if release else 1.0)
    partial(out, random, 17, (6200 if release else 5400) * pitch, 0.0011, 339,
            0.35 if release else 0.45)
    second = int(((0.001 if release else 0.0013) + random.uniform() * 0.0003) * RATE)
    noise_burst(out, random, second, 0.0002, 70, 0.4904758255421935, 0.3 if release else 0.45)
    partial(out, random, 17, (2937.5 if release else 2350) * pitch, 0.0022, 679,
            0.35 if release else 0.55)
    partial(out, random, 17, (4875 if release else 3900) * pitch, 0.0012, 370, 0.25)
    if not release:
        partial(out, random, 17, 1150 * pitch, 0.003, 926, 0.22)
        thud(out, random, 17, 0.002, 617, 0.7003397929164054, 0.05)
    return finish(out, 1.1, 0.6 if release else 1.0)


def show(title, samples, indices):
    print(f"{title}: {len(samples)} samples")
    for i in indices:
        print(f"    {{{i}, {samples[i]:.9g}F}},")


if __name__ == "__main__":
    no_bump = dict(FULL, bump=0)
    tick = [26, 27, 60, 200, 617, 700]
    show("tick, variant 0", render(SCROLL_TICK, "row3", False, 0), tick)
    show("tick, variant 4", render(SCROLL_TICK, "row3", False, 4), tick)
    show("full, row0, press, variant 2", render(FULL, "row0", False, 2),
         [0, 1, 263, 264, 265, 300, 661, 662, 900, 1500, 2500, 2645])
    show("full, row4, release, variant 3", render(FULL, "row4", True, 3),
         [0, 25, 26, 27, 28, 100, 300, 800, 1500, 1800, 1851])
    show("full, space, press, variant 1", render(FULL, "space", False, 1),
         [0, 1, 264, 418, 419, 440, 441, 700, 1500, 3000, 3900, 3968])
    show("no bump, backspace, press, variant 0", render(no_bump, "backspace", False, 0),
         [25, 26, 27, 180, 181, 202, 203, 423, 424, 1000, 3000])
    show("full, enter, release, variant 4", render(FULL, "enter", True, 4),
         [26, 27, 28, 100, 300, 800, 1500, 2600])
    mouse = [17, 18, 40, 50, 60, 70, 100, 200, 500, 800]
    show("mouse, press, variant 2", render_mouse(False, 2), mouse)
    show("mouse, release, variant 0", render_mouse(True, 0), mouse)
    show("finish", finish([0.5, -0.25, 1.0, 0.125], 1.5, 0.5), range(4))
