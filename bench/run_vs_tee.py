#!/usr/bin/python3
"""qorin run --log against `program | tee log` on the same data: dd copies
256 MiB of 80-byte lines from a file in the page cache to its standard
output, in 64 KiB blocks or one line per write call; the screen is
/dev/null. Each pair runs back to back, REPETITIONS times. Prints wall and
CPU time (user + system of every process of the pipeline, dd included) and
the ratios tee/qorin (above 1: qorin is faster), with their median and range.

Usage: bench/run_vs_tee.py build/linux/bin/qorin [REPETITIONS] [WORKDIR]"""
import os
import resource
import statistics
import subprocess
import sys
import tempfile
import time

qorin = os.path.realpath(sys.argv[1])
repetitions = int(sys.argv[2]) if len(sys.argv) > 2 else 5
work = sys.argv[3] if len(sys.argv) > 3 else tempfile.mkdtemp()
os.makedirs(work, exist_ok=True)
data, log = os.path.join(work, "lines.txt"), os.path.join(work, "run.log")
LINES = 3355443  # 256 MiB of 80-byte lines
with open(data, "wb") as f:
    f.write((b"0" * 79 + b"\n") * LINES)


def measure(command):
    if os.path.exists(log):
        os.remove(log)
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    start = time.monotonic()
    subprocess.run(command, stdout=subprocess.DEVNULL, check=True)
    wall = time.monotonic() - start
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    size = os.path.getsize(log)
    if size not in (80 * LINES, 82 * LINES):
        sys.exit(f"{command[0]}: log of {size} bytes")
    return wall, (after.ru_utime - before.ru_utime) + (after.ru_stime - before.ru_stime)


for block in (65536, 80):
    dd = f"dd if={data} bs={block} status=none"
    ratios = {"wall": [], "cpu": []}
    for _ in range(repetitions):
        tee = measure(["sh", "-c", f"{dd} | tee {log}"])
        ours = measure([qorin, "run", "--log", log, "--"] + dd.split())
        ratios["wall"].append(tee[0] / ours[0])
        ratios["cpu"].append(tee[1] / ours[1])
        print(f"bs={block:5d}  tee wall {tee[0]:6.2f} s cpu {tee[1]:6.2f} s   "
              f"qorin wall {ours[0]:6.2f} s cpu {ours[1]:6.2f} s", flush=True)
    for kind, values in ratios.items():
        print(f"bs={block:5d}  {kind} ratio tee/qorin: median {statistics.median(values):.2f}, "
              f"range {min(values):.2f}-{max(values):.2f}", flush=True)
os.remove(data)
os.remove(log)
