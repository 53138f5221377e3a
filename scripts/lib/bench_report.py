#!/usr/bin/env python3
"""Runs the benchmarks and writes what they say.

  bench_report.py report BUILD [AREA...]       tables of docs/performance.md and one picture for each area
  bench_report.py compare BUILD OTHER [AREA...] ratios of two builds, BUILD against OTHER
  bench_report.py check BUILD                  does every row name benchmarks that exist? runs none

benchmarks/report.toml says which benchmark stands in which row. Repetitions of one program are interleaved at random,
those of two builds alternate; what is shown is the median. Options: --repetitions N, --min-time SECONDS, --reuse
(read the results of the last run instead of running).
"""
import argparse
import html
import json
import os
import pathlib
import platform
import re
import statistics
import subprocess
import sys
import tomllib

TABLE = pathlib.Path("benchmarks/report.toml")
PAGE = pathlib.Path("docs/performance.md")
PICTURES = pathlib.Path("docs/images/performance")
SECONDS = {"ns": 1e-9, "us": 1e-6, "ms": 1e-3, "s": 1.0}


def run(build, part, args, repetitions):
    """The measured values of [program, filter]: {benchmark: {"time": [seconds], counter: [values]}}."""
    program, wanted = part
    out = pathlib.Path(build, "report", re.sub(r"\W+", "_", program + wanted) + ".json")
    if not args.reuse:
        out.parent.mkdir(parents=True, exist_ok=True)
        subprocess.run(
            [str(pathlib.Path(build, "benchmarks", program)), f"--benchmark_filter={wanted}",
             f"--benchmark_repetitions={repetitions}", "--benchmark_enable_random_interleaving=true", f"--benchmark_min_time={args.min_time}",
             f"--benchmark_out={out}", "--benchmark_out_format=json"],
            check=True, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    values = {}
    for line in json.loads(out.read_text(encoding="utf-8"))["benchmarks"]:
        if line["run_type"] != "iteration" or line.get("error_occurred"):
            continue
        name = line["run_name"]
        is_wall = "real_time" in name or "manual_time" in name
        entry = values.setdefault(name, {})
        entry.setdefault("time", []).append(line["real_time" if is_wall else "cpu_time"] * SECONDS[line["time_unit"]])
        for key, value in line.items():
            if isinstance(value, float) and key not in ("real_time", "cpu_time"):
                entry.setdefault(key, []).append(value)
    return values


def selected(areas, wanted):
    chosen = [area for area in areas if not wanted or area["id"] in wanted]
    if not chosen:
        sys.exit("no such area; there are: " + " ".join(area["id"] for area in areas))
    return chosen


def value_of(values, row, benchmark):
    """The median of a row's quantity, in the unit that `text` formats: seconds, or what the counter counts."""
    if benchmark not in values:
        sys.exit(f"{TABLE}: {row['what']!r} names {benchmark!r}, which did not run")
    quantity = values[benchmark]
    counter = row.get("counter", "time")
    if counter not in quantity:
        sys.exit(f"{TABLE}: {benchmark!r} has no {counter!r}")
    return statistics.median(quantity[counter]) / row.get("per", 1)


def text(value, row):
    if row.get("unit"):
        return f"{value:.3g} {row['unit']}"
    if row.get("counter") == "items_per_second":
        return f"{value / 1e6:.2f} M/s"
    for unit in ("s", "ms", "us", "ns"):
        if value >= SECONDS[unit] or unit == "ns":
            shown = value / SECONDS[unit]
            return f"{shown:.0f} {unit}" if shown >= 100 else f"{shown:.3g} {unit}"
    return ""


def measured(area, values):
    """[(what, [(who, value, text)])], ours first."""
    rows = []
    for row in area["rows"]:
        bars = []
        for who, benchmark in [("VFoundation", row["ours"])] + [tuple(peer) for peer in row["peers"]]:
            value = value_of(values, row, benchmark)
            bars.append((who, value, text(value, row)))
        rows.append((row["what"], bars))
    return rows


def markdown(rows):
    lines = ["| What | VFoundation | Peers |", "|---|---|---|"]
    for what, bars in rows:
        peers = ", ".join(f"{who} {shown}" for who, _, shown in bars[1:])
        lines.append(f"| {what} | {bars[0][2]} | {peers} |")
    return "\n".join(lines)


def picture(title, rows):
    """Horizontal bars, each row scaled to its own longest bar."""
    left, width, step, y = 250, 330, 18, 34
    parts = []
    for what, bars in rows:
        longest = max(value for _, value, _ in bars) or 1
        parts.append(f'<text class="what" x="8" y="{y + 12}">{html.escape(what)}</text>')
        y += step
        for index, (who, value, shown) in enumerate(bars):
            length = max(2.0, value / longest * width)
            kind = "ours" if index == 0 else "peer"
            parts.append(f'<text x="{left - 8}" y="{y + 12}" text-anchor="end">{html.escape(who)}</text>'
                         f'<rect class="{kind}" x="{left}" y="{y + 2}" width="{length:.1f}" height="{step - 6}"/>'
                         f'<text x="{left + length + 6:.1f}" y="{y + 12}">{html.escape(shown)}</text>')
            y += step
        y += 8
    style = ("text{font:12px sans-serif;fill:#222}.title{font-weight:bold;font-size:14px}.what{font-weight:bold}"
             ".ours{fill:#1f6fb2}.peer{fill:#9aa5b1}.page{fill:#fff}"
             "@media(prefers-color-scheme:dark){text{fill:#eee}.ours{fill:#5aa9e6}.peer{fill:#6b7785}.page{fill:#1b1e23}}")
    return (f'<svg xmlns="http://www.w3.org/2000/svg" width="700" height="{y}" role="img">'
            f"<title>{html.escape(title)}</title><style>{style}</style>"
            f'<rect class="page" width="700" height="{y}"/><text class="title" x="8" y="20">{html.escape(title)}</text>'
            + "".join(parts) + "</svg>\n")


def machine():
    cpu = re.search(r"^model name\s*:\s*(.+)$", pathlib.Path("/proc/cpuinfo").read_text(encoding="utf-8"), re.M)
    compiler = subprocess.run(["c++", "--version"], check=True, capture_output=True, text=True).stdout.splitlines()[0]
    return (f"{cpu.group(1) if cpu else platform.machine()}, {os.cpu_count()} cores, {compiler}, bench preset")


def replaced(page, mark, body):
    begin, end = f"<!-- begin {mark} -->", f"<!-- end {mark} -->"
    if begin not in page or end not in page:
        sys.exit(f"{PAGE} has no place for {mark!r}")
    return page[:page.index(begin) + len(begin)] + "\n" + body + "\n" + page[page.index(end):]


def report(args, areas):
    page = PAGE.read_text(encoding="utf-8")
    PICTURES.mkdir(parents=True, exist_ok=True)
    for area in selected(areas, args.areas):
        values = {}
        for part in area["runs"]:
            values.update(run(args.build, part, args, args.repetitions))
        rows = measured(area, values)
        page = replaced(page, area["id"], markdown(rows))
        (PICTURES / (area["id"] + ".svg")).write_text(picture(area["title"], rows), encoding="utf-8")
        print("written:", area["id"])
    PAGE.write_text(replaced(page, "machine", machine() + "."), encoding="utf-8")


def compare(args, areas):
    """Runs both builds by turns, so that what else the machine does meets both."""
    here, there = {}, {}
    parts = [part for area in selected(areas, args.areas) for part in area["runs"]]
    for part in parts:
        builds = [(args.build, here), (args.other, there)]
        if not all(pathlib.Path(build, "benchmarks", part[0]).exists() for build, _ in builds):
            print(f"only in one of the builds: {part[0]}")
            continue
        for build, values in builds * args.repetitions:
            for benchmark, quantity in run(build, part, args, 1).items():
                values.setdefault(benchmark, []).extend(quantity["time"])
    print(f"{'now':>10} {'before':>10} {'ratio':>6}")
    for benchmark in sorted(set(here) & set(there)):
        now, before = statistics.median(here[benchmark]), statistics.median(there[benchmark])
        print(f"{text(now, {}):>10} {text(before, {}):>10} {now / before:6.2f}  {benchmark}")
    for benchmark in sorted(set(here) ^ set(there)):
        print(f"only {'now' if benchmark in here else 'before'}: {benchmark}")


def check(args, areas):
    missing = 0
    for area in areas:
        names = set()
        for program, wanted in area["runs"]:
            listed = subprocess.run([str(pathlib.Path(args.build, "benchmarks", program)), "--benchmark_list_tests",
                                     f"--benchmark_filter={wanted}"], check=True, capture_output=True, text=True)
            names.update(listed.stdout.splitlines())
        for row in area["rows"]:
            for benchmark in [row["ours"]] + [peer[1] for peer in row["peers"]]:
                if benchmark not in names:
                    missing += 1
                    print(f"{TABLE}: {row['what']!r} names {benchmark!r}, which {area['id']} does not run")
        if f"<!-- begin {area['id']} -->" not in PAGE.read_text(encoding="utf-8"):
            missing += 1
            print(f"{PAGE} has no place for {area['id']!r}")
    return 1 if missing else 0


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    commands = parser.add_subparsers(dest="command", required=True)
    for command in ("report", "compare", "check"):
        sub = commands.add_parser(command)
        sub.add_argument("build")
        if command == "compare":
            sub.add_argument("other")
        sub.add_argument("areas", nargs="*")
        sub.add_argument("--repetitions", type=int, default=5)
        sub.add_argument("--min-time", type=float, default=0.2)
        sub.add_argument("--reuse", action="store_true")
    args = parser.parse_args()
    areas = tomllib.loads(TABLE.read_text(encoding="utf-8"))["area"]
    return {"report": report, "compare": compare, "check": check}[args.command](args, areas)


if __name__ == "__main__":
    sys.exit(main())
