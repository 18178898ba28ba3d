"""Prints ours / peer for each workload of Google Benchmark's JSON files, as a Markdown table.

A benchmark is named WORKLOAD/SUBJECT[/ARGUMENTS]; the subject "korbase" is compared with every other
subject of the same workload and arguments. Figures are medians; time per item where items are counted.
"""
import json
import sys


def nanoseconds(benchmark):
    """Median time per item (or per iteration) in nanoseconds."""
    if "items_per_second" in benchmark:
        return 1e9 / benchmark["items_per_second"]
    return benchmark["real_time"] * {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}[benchmark["time_unit"]]


def order(entry):
    """By workload, then by the numbers among the arguments."""
    workload, arguments = entry[0]
    return workload, [(int(n) if n.isdigit() else -1, n) for n in arguments.replace(":", " ").split()]


def read(path):
    try:
        with open(path, encoding="utf-8") as file:
            return json.load(file)["benchmarks"]
    except (OSError, ValueError, KeyError) as error:
        sys.exit(f"ratios.py: {path} holds no results: {error}")


def main(paths):
    ours, peers = {}, {}
    for benchmark in (benchmark for path in paths for benchmark in read(path)):
        if benchmark.get("aggregate_name") != "median":
            continue
        workload, subject, *arguments = benchmark["run_name"].split("/")
        arguments = " ".join(a for a in arguments if a not in ("real_time", "process_time"))
        arguments = benchmark.get("label") or arguments
        if subject == "korbase":
            ours[workload, arguments] = nanoseconds(benchmark)
        else:
            peers.setdefault((workload, arguments), {})[subject] = nanoseconds(benchmark)
    if not ours:
        sys.exit("ratios.py: no results")
    print("| workload | size | peer | ours, ns | peer, ns | ratio |")
    print("|---|---|---|---|---|---|")
    for (workload, arguments), time in sorted(ours.items(), key=order):
        for peer, peer_time in peers.get((workload, arguments), {"": None}).items():
            ratio = f"{peer_time:.3g} | {time / peer_time:.2g}" if peer_time else "|"
            print(f"| {workload} | {arguments} | {'`' + peer + '`' if peer else ''} | {time:.3g} | {ratio} |")


main(sys.argv[1:])
