#!/usr/bin/env python3
"""Turns one benchmark run into docs/PERFORMANCE.md, its plot and its pictures.

  report.py machine > machine.json
      what the run ran on (taken before the run, with its load)
  report.py report --bench tavbench.json --counts glcount.json --machine machine.json
                   --pictures DIR --template PERFORMANCE.md.in --out PERFORMANCE.md
                   --plot perf.png --montage perf-pictures.png

The template's prose stays as written; every {{...}} in it is filled from the run:
  {{table:NAME}}       a table (machine, take, paint, peers, growth, navigation, c3d, edits, viewer, goals)
  {{ms:BENCH}}         a wall time in milliseconds, {{us:BENCH}} in microseconds
  {{ratio:A:B}}        wall time of A over wall time of B
  {{cpuratio:A:B}}     the same for process CPU time
  {{percent:BENCH:C}}  counter C of BENCH as a percentage
  {{count:BENCH:C}}    counter C of BENCH (or its GL count: vertices, blocks, calls) as a number
"""
import argparse
import json
import os
import platform
import re
import subprocess
import sys

LIMIT_OF = {  # what each measure is divided by: the same samples read once
    "extract/host": "limit/read-take",
    "settracks/all": "limit/read-tracks",
    "range2d/mode1": "limit/read-tracks",
    "range2d/mode2": "limit/read-tracks",
    "range2d/mode1-indexed": "limit/read-tracks",
    "index/build": "limit/read-tracks",
}
PAINT_CASES = [f"{mode}/{style}/{zoom}" for style in ("points", "lines") for zoom in ("out", "in")
               for mode in ("exact", "fast")] + ["fast/runs/out", "fast/runs/in", "fast/cursor/out"]
PEERS = [("qcustomplot", "QCustomPlot"), ("qwt", "Qwt")]


def machine():
    def first(path, key, sep=":"):
        try:
            with open(path) as f:
                for line in f:
                    if line.startswith(key) and sep in line:
                        return line.split(sep, 1)[1].strip().strip('"')
        except OSError:
            pass
        return "unknown"

    def run(*cmd):
        try:
            return subprocess.run(cmd, capture_output=True, text=True, check=True).stdout.splitlines()[0]
        except (OSError, subprocess.CalledProcessError, IndexError):
            return "unknown"

    mem_kb = first("/proc/meminfo", "MemTotal").split()[0]
    return {
        "cpu": first("/proc/cpuinfo", "model name"),
        "cores": os.cpu_count(),
        "memory_gib": round(int(mem_kb) / 2**20, 1) if mem_kb.isdigit() else None,
        "os": first("/etc/os-release", "PRETTY_NAME", "="),
        "kernel": platform.release(),
        "compiler": run("c++", "--version"),
        "load_before": list(os.getloadavg()),
    }


class Run:
    """The results of one run, by name without Google Benchmark's suffixes."""

    def __init__(self, bench, counts):
        self.context = bench["context"]
        self.results = {}
        scale = {"ns": 1e-6, "us": 1e-3, "ms": 1.0, "s": 1e3}
        for b in bench["benchmarks"]:
            name = re.sub(r"(/min_time:[^/]*)?(/iterations:[0-9]+)?(/process_time)?(/real_time)?$", "", b["name"])
            entry = {"error": b.get("error_message") if b.get("error_occurred") else None,
                     "iterations": b.get("iterations", 0)}
            if not entry["error"]:
                k = scale[b["time_unit"]]
                entry.update(wall=b["real_time"] * k, cpu=b["cpu_time"] * k,
                             counters={key: v for key, v in b.items() if isinstance(v, float)
                                       and key not in ("real_time", "cpu_time")})
            self.results[name] = entry
        self.counts = {c["name"]: c for c in counts.get("counts", [])}
        self.sizes = sorted(int(n.rsplit("/", 1)[1]) for n in self.results if n.startswith("extract/host/"))

    def ok(self, name):
        r = self.results.get(name)
        return r is not None and not r["error"]

    def wall(self, name):
        return self.results[name]["wall"] if self.ok(name) else None

    def cpu(self, name):
        return self.results[name]["cpu"] if self.ok(name) else None

    def ratio(self, a, b, cpu=False):
        get = self.cpu if cpu else self.wall
        x, y = get(a), get(b)
        return x / y if x is not None and y else None


def ms(v):
    if v is None:
        return "—"
    if v >= 100:
        return f"{v:,.0f}"
    if v >= 10:
        return f"{v:.1f}"
    if v >= 1:
        return f"{v:.2f}"
    return f"{v:.3f}"


def x(v):
    if v is None:
        return "—"
    return f"{v:,.0f}×" if v >= 100 else f"{v:.1f}×" if v >= 10 else f"{v:.2f}×"


def count(v):
    return "—" if v is None else f"{int(v):,}"


def frames(n):
    return f"{n // 1000:,}k" if n < 1000000 else f"{n // 1000000:,}M"


def table(header, rows):
    out = ["| " + " | ".join(header) + " |", "|" + "|".join("---" for _ in header) + "|"]
    out += ["| " + " | ".join(str(c) for c in row) + " |" for row in rows]
    return "\n".join(out)


def machine_table(run, facts):
    ctx = run.context
    rows = [
        ("CPU", f"{facts.get('cpu')}, {facts.get('cores')} cores, {ctx.get('mhz_per_cpu')} MHz"),
        ("memory", f"{facts.get('memory_gib')} GiB"),
        ("system", f"{facts.get('os')}, Linux {facts.get('kernel')}"),
        ("compiler", facts.get("compiler")),
        ("build", "Release (-O3), Google Benchmark from Debian (its library reports a "
                  f"{ctx.get('library_build_type')} build of itself)"),
        ("OpenGL", f"{ctx.get('gl_renderer')}, {ctx.get('gl_version')}, under Xvfb"),
        ("Qt / peers", f"Qt {ctx.get('qt')} ({ctx.get('qt_platform')}), QCustomPlot {ctx.get('qcustomplot')}, "
                       f"Qwt {ctx.get('qwt')}"),
        ("load average", "before the run " + ", ".join(f"{v:.1f}" for v in facts.get("load_before", [])) +
         "; as the benchmarks started " + ", ".join(f"{v:.1f}" for v in ctx.get("load_avg", []))),
        ("date", ctx.get("date")),
    ]
    return table(["", ""], rows)


def take_table(run):
    rows = []
    for n in run.sizes:
        for measure in LIMIT_OF:
            name, limit = f"{measure}/{n}", f"{LIMIT_OF[measure]}/{n}"
            rows.append((frames(n), f"`{measure}`", ms(run.wall(name)), ms(run.cpu(name)),
                         f"`{LIMIT_OF[measure]}` {ms(run.wall(limit))}",
                         x(run.ratio(name, limit)), x(run.ratio(name, limit, cpu=True))))
    return table(["frames", "measure", "wall ms", "CPU ms, all threads", "limit (wall ms)", "÷ limit, wall",
                  "÷ limit, CPU"], rows)


def paint_limit(case, n):
    return f"limit/read-window/{n}" if case.endswith("/in") else f"limit/read-tracks/{n}"


def paint_table(run):
    rows = [("—", "`paint/blank` (window, no tracks)", ms(run.wall("paint/blank")), ms(run.cpu("paint/blank")),
             "", "", "", "", "")]
    for n in run.sizes:
        for case in PAINT_CASES:
            name = f"paint/{case}/{n}"
            c = run.counts.get(name, {})
            zoom = case.rsplit("/", 1)[1]
            peers = [x(run.ratio(name, f"peer/{p}/{zoom}/{n}")) for p, _ in PEERS]
            rows.append((frames(n), f"`{case}`", ms(run.wall(name)), ms(run.cpu(name)), count(c.get("vertices")),
                         count(c.get("blocks")), x(run.ratio(name, paint_limit(case, n))), *peers))
        for style in ("points", "lines"):
            name = f"limit/gl-{style}-in/{n}"
            if name in run.results:
                rows.append((frames(n), f"`limit/gl-{style}-in` (floor)", ms(run.wall(name)), ms(run.cpu(name)),
                             count(run.results[name].get("counters", {}).get("vertices")), "1", "",
                             *[x(run.ratio(name, f"peer/{p}/in/{n}")) for p, _ in PEERS]))
    return table(["frames", "paint", "wall ms", "CPU ms, all threads", "vertices", "begin/end blocks", "÷ limit, wall",
                  "÷ QCustomPlot", "÷ Qwt"], rows)


def peers_table(run):
    rows = []
    for n in run.sizes:
        for zoom in ("out", "in"):
            ours = [f"paint/fast/{style}/{zoom}/{n}" for style in ("points", "lines")]
            for p, label in PEERS:
                name = f"peer/{p}/{zoom}/{n}"
                gaps = run.results.get(name, {}).get("counters", {}).get("gaps_shown")
                rows.append((frames(n), zoom, label, ms(run.wall(name)), ms(run.cpu(name)),
                             "yes" if gaps else "no" if gaps is not None else "—",
                             *(x(run.ratio(o, name)) for o in ours),
                             *(x(run.ratio(o, name, cpu=True)) for o in ours)))
    return table(["frames", "zoom", "peer", "wall ms", "CPU ms, all threads", "gaps shown",
                  "fast points ÷ peer, wall", "fast lines ÷ peer, wall",
                  "fast points ÷ peer, CPU", "fast lines ÷ peer, CPU"], rows)


def growth_table(run):
    if len(run.sizes) < 2:
        return "(one take length only)"
    lo, hi = run.sizes[0], run.sizes[-1]
    measures = ["limit/read-tracks", "extract/host", "settracks/all", "range2d/mode1"]
    measures += [f"paint/{c}" for c in PAINT_CASES] + ["limit/read-window"]
    measures += [f"peer/{p}/{z}" for p, _ in PEERS for z in ("out", "in")]
    rows = []
    for m in measures:
        steps = [x(run.ratio(f"{m}/{b}", f"{m}/{a}")) for a, b in zip(run.sizes, run.sizes[1:])]
        rows.append((f"`{m}`", *steps, x(run.ratio(f"{m}/{hi}", f"{m}/{lo}")),
                     x(run.ratio(f"{m}/{hi}", f"{m}/{lo}", cpu=True))))
    header = ["measure"] + [f"{frames(b)} ÷ {frames(a)}" for a, b in zip(run.sizes, run.sizes[1:])]
    return table(header + [f"{frames(hi)} ÷ {frames(lo)}, wall", f"{frames(hi)} ÷ {frames(lo)}, CPU"], rows)


def navigation_table(run):
    rows = []
    for name in sorted(n for n in run.results if n.startswith("aoi/")):
        limit = "limit/read-runs/" + name.rsplit("/", 1)[1]
        rows.append((f"`{name}`", f"{run.wall(name) * 1000:.2f}" if run.ok(name) else "—",
                     f"{run.wall(limit) * 1000:.2f}" if run.ok(limit) else "—", x(run.ratio(name, limit))))
    return table(["measure", "µs per call", "read the run list once, µs", "÷ limit"], rows)


def c3d_table(run):
    rows = []
    for name in sorted(n for n in run.results if n.startswith("c3d/load/")):
        limit = "limit/read-file/" + name.rsplit("/", 1)[1]
        mb = run.results[name].get("counters", {}).get("bytes", 0) / 1e6
        rows.append((f"`{name}`", f"{mb:,.0f} MB", ms(run.wall(name)), ms(run.wall(limit)),
                     x(run.ratio(name, limit)), x(run.ratio(name, limit, cpu=True))))
    return table(["measure", "file", "load, wall ms", "read the bytes, wall ms", "÷ limit, wall", "÷ limit, CPU"],
                 rows)


def edits_table(run):
    """Edits of a selection, beside one read of its samples, per sample edited."""
    rows = []
    for name in sorted(n for n in run.results if n.startswith("edit/")):
        size = name.split("/")[2]
        limit = "limit/read-selection/" + size
        if not run.ok(name) or not run.ok(limit):
            rows.append((f"`{name}`", "—", "—", "—"))
            continue
        samples = run.results[name]["counters"].get("samples", 0)
        limit_samples = run.results[limit]["counters"].get("samples", 0)
        per_sample = None
        if samples and limit_samples:
            per_sample = (run.wall(name) / samples) / (run.wall(limit) / limit_samples)
        rows.append((f"`{name}`", f"{samples:,.0f}" if samples else "—",
                     f"{run.wall(name) * 1000:,.1f}", x(per_sample)))
    return table(["measure", "samples", "µs", "÷ reading as many samples"], rows)


def verdict(value, target, below=True):
    if value is None:
        return "not measured"
    met = value <= target if below else value >= target
    return ("met" if met else "missed") + f" ({x(value)} against {'≤' if below else '≥'} {x(target)})"


def verdict_ms(value, target):
    if value is None:
        return "not measured"
    return ("met" if value <= target else "missed") + f" ({ms(value)} ms against ≤ {target:,} ms)"


def ratio_goal(run, label, a, b, target):
    return (label, verdict(run.ratio(a, b), target), verdict(run.ratio(a, b, cpu=True), target))


VIEWER_INPUTS = [("wheel", "a wheel notch"), ("click", "a click"), ("jump", "a jump to the next area"),
                 ("fit", "Home (fit all frames)")]


def goals_table(run):
    rows = []
    big = [s for s in run.sizes if s >= 100000]
    for n in big:
        for style in ("points", "lines"):
            ours = f"paint/fast/{style}/out/{n}"
            rows.append(ratio_goal(run, f"fast {style} zoomed out ≤ ½ QCustomPlot, {frames(n)}", ours,
                                   f"peer/qcustomplot/out/{n}", 0.5))
            rows.append(ratio_goal(run, f"fast {style} zoomed out ≤ 3× a read of the tracks, {frames(n)}", ours,
                                   f"limit/read-tracks/{n}", 3))
        rows.append(ratio_goal(run, f"fast points zoomed in faster than QCustomPlot, {frames(n)}",
                               f"paint/fast/points/in/{n}", f"peer/qcustomplot/in/{n}", 1))
        rows.append(ratio_goal(run, f"fast lines zoomed in ≤ 2× QCustomPlot, {frames(n)}",
                               f"paint/fast/lines/in/{n}", f"peer/qcustomplot/in/{n}", 2))
    if len(run.sizes) >= 2:
        lo, hi = run.sizes[0], run.sizes[-1]
        for style in ("points", "lines"):
            m = f"paint/fast/{style}/in"
            rows.append(ratio_goal(run, f"fast {style} zoomed in, {frames(hi)} within 2× of {frames(lo)}",
                                   f"{m}/{hi}", f"{m}/{lo}", 2))
    if run.sizes:
        n = run.sizes[-1]
        rows.append(ratio_goal(run, f"cursor-only repaint zoomed out ≤ 5× the blank paint, {frames(n)}",
                               f"paint/fast/cursor/out/{n}", "paint/blank", 5))
        rows.append(ratio_goal(run, f"track extraction ≤ 2× a read of the take, {frames(n)}",
                               f"extract/host/{n}", f"limit/read-take/{n}", 2))
        rows.append(ratio_goal(run, f"`SetTracks` + `DataChange` ≤ 3× a read of the tracks, {frames(n)}",
                               f"settracks/all/{n}", f"limit/read-tracks/{n}", 3))
    for name in sorted(n for n in run.results if n.startswith("c3d/load/")):
        rows.append(ratio_goal(run, "C3D load ≤ 3× reading the file's bytes (two threads)", name,
                               "limit/read-file/" + name.rsplit("/", 1)[1], 3))
    if run.sizes:
        n = run.sizes[-1]
        for key, label in VIEWER_INPUTS:
            name = f"tavview/{key}/{n}"
            rows.append((f"tavview, {label} answered ≤ 100 ms, {frames(n)}", verdict_ms(run.wall(name), 100),
                         verdict_ms(run.cpu(name), 100)))
        rows.append(ratio_goal(run, f"tavview, showing 64 markers ≤ 2× copying their samples, {frames(n)}",
                               f"tavview/select/{n}", f"limit/copy-selection/{n}", 2))
    return table(["goal", "by wall time", "by CPU time"], rows)


def viewer_table(run):
    rows = []
    for n in run.sizes:
        for key, label in VIEWER_INPUTS + [("select", "every marker shown, from one")]:
            name = f"tavview/{key}/{n}"
            rows.append((frames(n), f"`tavview/{key}`", label, ms(run.wall(name)), ms(run.cpu(name))))
        rows.append((frames(n), "`limit/copy-selection`", "the 64 markers' samples copied into tracks",
                     ms(run.wall(f"limit/copy-selection/{n}")), ms(run.cpu(f"limit/copy-selection/{n}"))))
    return table(["frames", "measure", "input", "wall ms", "CPU ms, all threads"], rows)


def plot(run, path):
    import matplotlib
    matplotlib.use("Agg")
    import matplotlib.pyplot as plt

    fig, axes = plt.subplots(1, 2, figsize=(12, 4.8), sharey=True)
    for ax, zoom in zip(axes, ("out", "in")):
        series = [(f"paint/fast/points/{zoom}", "tavgraph fast, points", "C0", "-"),
                  (f"paint/fast/lines/{zoom}", "tavgraph fast, lines", "C0", "--"),
                  (f"paint/exact/points/{zoom}", "tavgraph exact, points", "C1", "-"),
                  (f"peer/qcustomplot/{zoom}", "QCustomPlot", "C2", "-"),
                  (f"peer/qwt/{zoom}", "Qwt", "C3", "-"),
                  ("limit/read-tracks" if zoom == "out" else "limit/read-window", "limit: read the samples once",
                   "k", ":")]
        series.insert(3, (f"paint/fast/runs/{zoom}", "tavgraph, shaded runs alone", "C5", "-."))
        if zoom == "out":
            series.insert(5, ("settracks/all", "SetTracks + DataChange", "C4", "-."))
        for bench, label, colour, style in series:
            pts = [(n, run.wall(f"{bench}/{n}")) for n in run.sizes if run.ok(f"{bench}/{n}")]
            if pts:
                ax.plot(*zip(*pts), style, color=colour, marker="o", label=label)
        ax.set_xscale("log")
        ax.set_yscale("log")
        ax.set_xlabel("take length, frames (64 markers + 8 rigid bodies)")
        ax.set_title("whole take in 1600 px" if zoom == "out" else "500 frames in 1600 px")
        ax.grid(True, which="both", alpha=0.3)
        ax.legend(fontsize=7, loc="upper left")
    axes[0].set_ylabel("wall time, ms")
    fig.suptitle("Paint time against take length (one run of ./bench.sh)")
    fig.tight_layout()
    fig.savefig(path, dpi=90)


def montage(pictures, path):
    import matplotlib
    matplotlib.use("Agg")
    import matplotlib.image as mpimg
    import matplotlib.pyplot as plt

    rows = [("tavgraph (fast, lines)", ["tavgraph-fast-lines-out", "tavgraph-fast-lines-in", "tavgraph-gap"]),
            ("QCustomPlot", ["qcustomplot-out", "qcustomplot-in", "qcustomplot-gap"]),
            ("Qwt", ["qwt-out", "qwt-in", "qwt-gap"])]
    columns = ["whole take", "500 frames", "one marker around a gap"]
    # Large enough that one-pixel lines survive the scaling.
    fig, axes = plt.subplots(3, 3, figsize=(24, 9.6))
    for r, (label, names) in enumerate(rows):
        for c, name in enumerate(names):
            ax = axes[r][c]
            ax.set_xticks([])
            ax.set_yticks([])
            file = os.path.join(pictures, name + ".png")
            if os.path.exists(file):
                ax.imshow(mpimg.imread(file))
            if r == 0:
                ax.set_title(columns[c])
            if c == 0:
                ax.set_ylabel(label)
    fig.tight_layout()
    fig.savefig(path, dpi=80)


def fill(template, run, tables):
    def one(m):
        kind, _, arg = m.group(1).partition(":")
        if kind == "table":
            return tables[arg]
        if kind == "ms":
            return ms(run.wall(arg))
        if kind == "us":
            v = run.wall(arg)
            return "—" if v is None else f"{v * 1000:.1f}"
        if kind == "percent":
            bench, counter = arg.split(":")
            v = run.results.get(bench, {}).get("counters", {}).get(counter)
            return "—" if v is None else f"{v * 100:.1f} %"
        if kind == "count":
            bench, counter = arg.split(":")
            counted = run.counts.get(bench, {}).get(counter)
            return count(counted if counted is not None else
                         run.results.get(bench, {}).get("counters", {}).get(counter))
        if kind in ("ratio", "cpuratio"):
            a, b = arg.split(":")
            return x(run.ratio(a, b, cpu=kind == "cpuratio"))
        raise KeyError(m.group(0))

    return re.sub(r"\{\{([^}]+)\}\}", one, template)


def report(args):
    with open(args.bench) as f:
        bench = json.load(f)
    counts = {}
    if args.counts and os.path.exists(args.counts):
        with open(args.counts) as f:
            counts = json.load(f)
    facts = {}
    if args.machine and os.path.exists(args.machine):
        with open(args.machine) as f:
            facts = json.load(f)
    run = Run(bench, counts)
    failed = {n: r["error"] for n, r in run.results.items() if r["error"]}
    for n, e in failed.items():
        print(f"report.py: {n} did not run: {e}", file=sys.stderr)
    tables = {"machine": machine_table(run, facts), "take": take_table(run), "paint": paint_table(run),
              "peers": peers_table(run), "growth": growth_table(run), "navigation": navigation_table(run),
              "c3d": c3d_table(run), "edits": edits_table(run), "goals": goals_table(run),
              "viewer": viewer_table(run)}
    with open(args.template) as f:
        text = fill(f.read(), run, tables)
    with open(args.out, "w") as f:
        f.write(text)
    plot(run, args.plot)
    if args.pictures:
        montage(args.pictures, args.montage)
    return 0


def main():
    p = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    sub = p.add_subparsers(dest="command", required=True)
    sub.add_parser("machine")
    r = sub.add_parser("report")
    for opt in ("bench", "template", "out", "plot", "montage"):
        r.add_argument("--" + opt, required=True)
    for opt in ("counts", "machine", "pictures"):
        r.add_argument("--" + opt)
    args = p.parse_args()
    if args.command == "machine":
        json.dump(machine(), sys.stdout, indent=1)
        print()
        return 0
    return report(args)


if __name__ == "__main__":
    sys.exit(main())
