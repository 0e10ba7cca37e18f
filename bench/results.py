#!/usr/bin/env python3
"""Results of benchmarks, for script/bench.

    bench/results.py merge FOLDER       prints one file of all results in the folder
    bench/results.py compare OLD NEW    says what became slower; ends with 1 when anything did

Where a benchmark measures a floor, the multiples of the floors are compared, so that the two runs may come from
different machines; else the processor times are.
"""
import json
import sys
from pathlib import Path

MOST_CHANGE = 1.25  # two runs of the same program differ by up to a fifth


def results(path):
    with open(path, encoding="utf-8") as file:
        text = file.read()
    return {result["name"]: result for result in json.loads(text)["benchmarks"]} if text else {}


def merge(folder):
    merged = {}
    for path in sorted(Path(folder).glob("*.json")):
        merged |= results(path)
    json.dump({"benchmarks": list(merged.values())}, sys.stdout, indent=1)


def cost(result):
    return result.get("times_floor", result["cpu_time"])


def compare(old_path, new_path):
    old, new = results(old_path), results(new_path)
    anything_slower = False
    for name in sorted(old.keys() & new.keys()):
        before, now = cost(old[name]), cost(new[name])
        allocations = [round(run[name].get("allocations", 0)) for run in (old, new)]
        slower = now > before * MOST_CHANGE or allocations[1] > allocations[0]
        if slower or now * MOST_CHANGE < before:
            anything_slower |= slower
            print(f"{'slower' if slower else 'faster'}: {name}: {before:.3g} before, {now:.3g} now, "
                  f"{allocations[0]} and {allocations[1]} allocations")
    for name in sorted(old.keys() - new.keys()):
        print(f"not measured any more: {name}")
    sys.exit(1 if anything_slower else 0)


if len(sys.argv) == 3 and sys.argv[1] == "merge":
    merge(sys.argv[2])
elif len(sys.argv) == 4 and sys.argv[1] == "compare":
    compare(*sys.argv[2:])
else:
    sys.exit(__doc__)
