#!/usr/bin/env python3
"""Writes the recorded monitor readings (live.json) of the sample Mac: one minute of per-processor
tick counters and die temperatures, and five lid-angle feature reports per second.
Deterministic: run it again and the file comes out the same. Usage: make_live.py OUTPUT"""
import json, math, random, sys

random.seed(1116)
SECONDS, CORES, EFFICIENCY = 60, 10, 2          # M1 Pro: processors 0-1 efficiency, 2-9 performance

def overall(t):                                  # a quiet minute with a burst of work in the middle
    return 0.06 + 0.50 * math.exp(-((t - 30) / 9.0) ** 2) + 0.03 * math.sin(t / 4.0)

ticks = [[2310000 + 4000 * c, 1180000 + 2500 * c, 29870000 - 6000 * c, 0] for c in range(CORES)]
cpu, temps = [], []
for t in range(SECONDS):
    load = overall(t)
    for c in range(CORES):
        share = 0.55 if c < EFFICIENCY else 1.08
        busy = max(1, min(99, round(100 * load * share + random.uniform(-4, 4))))
        user = round(busy * 0.7)
        nice = 1 if random.random() < 0.05 else 0
        ticks[c][0] += user
        ticks[c][1] += busy - user - nice
        ticks[c][2] += 100 - busy + random.choice((0, 0, 1))
        ticks[c][3] += nice
    cpu.append([list(core) for core in ticks])
    base = 41.0 + 14.0 * load
    sample = [round(base + d + random.uniform(-0.6, 0.6), 1) for d in (0.0, 1.2, -0.8, 2.1)]
    if t in (17, 44):                            # a sensor that answered nothing: must be ignored
        sample[t % 4] = 0.0
    temps.append(sample)

angles = []                                      # (reports, angle): still for seconds, moved now and then
for length, target in ((62, 110), (55, 118), (8, None), (70, 124), (45, 121), (60, 118)):
    start = angles[-1] if angles else target
    if target is None:                           # lid being moved: a few intermediate reports
        target = 124
        angles += [round(start + (target - start) * (i + 1) / length) for i in range(length)]
    else:
        angles += [target] * length
angles = angles[:300]
lid = ["01%02x%02x" % (a & 0xFF, a >> 8) for a in angles]

with open(sys.argv[1], "w") as f:
    json.dump({"cpuTicks": cpu, "dieTemperatures": temps, "lidAngleReports": lid}, f, separators=(",", ":"))
    f.write("\n")
