"""This module turns the measurements of bench/compare into medians, spreads and ratios, tables, and goals."""

import contextlib
import io
import statistics

PEERS = ("pkcs11-spy", "p11-kit")
LOGS = ("new", "old", "events")


def summary(samples):
    low, middle, high = statistics.quantiles(samples, n=4) if len(samples) > 1 else samples * 3
    return {"median": middle, "quarter": low, "three quarters": high}


def ratio(times, of, to):
    return summary([a / b for a, b in zip(times[of], times[to])])


def difference(times, of, to):
    return summary([a - b for a, b in zip(times[of], times[to])])


def summarise(commit, machine, calls, start, mask):
    """Returns what goes into the JSON file, from lists with a sample of each round."""
    return {
        "commit": commit,
        "machine": machine,
        "calls": [{
            "case": case,
            "threads": threads,
            "nanoseconds": {name: summary(samples) for name, samples in times.items()},
            "over direct": {name: difference(times, name, "direct") for name in ("counted", "off", "filtered")},
            "over floor": {name: ratio(times, name, "floor " + name) for name in LOGS},
            "of peer": {name: ratio(times, "new", name) for name in PEERS if name in times},
        } for (case, threads), times in calls.items()],
        "start microseconds": {name: summary(samples) for name, samples in start.items()},
        "mask nanoseconds": {name: summary(samples) for name, samples in mask.items()},
    }


class Goal:
    """A Goal bounds one figure; `figure` is None if it was not measured."""

    def __init__(self, text, figure, bound, unit=""):
        self.text, self.figure, self.bound, self.unit = text, figure, bound, unit

    def row(self):
        if self.figure is None:
            return [self.text, f"{self.bound:g}{self.unit}", "", "not measured"]
        verdict = "met" if self.figure <= self.bound else "missed"
        return [self.text, f"{self.bound:g}{self.unit}", f"{self.figure:.2f}{self.unit}", verdict]


def goals(results):
    lines = {(line["case"], line["threads"]): line for line in results["calls"]}

    def figure(case, threads, kind, name):
        return lines.get((case, threads), {}).get(kind, {}).get(name, {}).get("median")

    cases = dict.fromkeys(line["case"] for line in results["calls"])
    for case in cases:
        is_large = case == "EncryptUpdate"
        new, old = (1.4, 1.4) if is_large else (1.5, 1.6)
        yield Goal(f"{case}, new format, times the floor", figure(case, 1, "over floor", "new"), new)
        yield Goal(f"{case}, old format, times the floor", figure(case, 1, "over floor", "old"), old)
        yield Goal(f"{case}, events, times the floor", figure(case, 1, "over floor", "events"), 1.6)
        yield Goal(f"{case}, new format, 2 threads, times their floor", figure(case, 2, "over floor", "new"), 1.5)
        yield Goal(f"{case}, events, 2 threads, times their floor", figure(case, 2, "over floor", "events"), 1.5)
        for peer in PEERS:
            yield Goal(f"{case}, new format, times {peer}", figure(case, 1, "of peer", peer), 1)
    for case in cases:
        yield Goal(f"{case}, filtered out, over the direct call", figure(case, 1, "over direct", "filtered"), 20, " ns")
    for threads in (2, 8):
        times = lines.get(("GetSessionInfo", threads), {}).get("nanoseconds")
        more = times and times["filtered"]["median"] - times["counted"]["median"]
        yield Goal(f"GetSessionInfo, filtered out, {threads} threads, over only the shared counter", more, 20, " ns")
    start = results["start microseconds"]
    yield Goal("first call, over loading the target alone",
               (start["library"]["median"] - start["target"]["median"]) / 1000, 2, " ms")


def with_spread(figures, digits=0):
    half = (figures["three quarters"] - figures["quarter"]) / 2
    return f"{figures['median']:.{digits}f} ±{half:.{digits}f}"


def print_table(head, rows):
    widths = [max(len(row[i]) for row in [head, *rows]) for i in range(len(head))]
    for row in [head, ["-" * width for width in widths], *rows]:
        print("| " + " | ".join(cell.rjust(width) for cell, width in zip(row, widths)) + " |")
    print()


def print_call_tables(calls):
    names = list(calls[0]["nanoseconds"])
    print("Nanoseconds a call: the median of the rounds and half the distance between their quartiles.\n")
    precise = ("direct", "counted", "off", "filtered")
    print_table(["case", "threads", *names],
                [[line["case"], str(line["threads"]),
                  *(with_spread(line["nanoseconds"][name], 1 if name in precise else 0) for name in names)]
                 for line in calls])
    print("What logging costs: nanoseconds over the direct call, times the floor, share of what a peer takes.\n")
    peers = list(calls[0]["of peer"])
    print_table(["case", "threads", "off - direct", "filtered - direct", *(f"{name} / floor" for name in LOGS),
                 *("new / " + peer for peer in peers)],
                [[line["case"], str(line["threads"]),
                  *(with_spread(line["over direct"][name], 1) for name in ("off", "filtered")),
                  *(with_spread(line["over floor"][name], 2) if name in line["over floor"] else "" for name in LOGS),
                  *(with_spread(line["of peer"][peer], 2) for peer in peers)] for line in calls])
    for peer in PEERS:
        if peer not in peers:
            print(f"{peer} is not installed here and was not measured.\n")


def print_results(results):
    print(f"Commit {results['commit']}; {results['machine']}.\n")
    if results["calls"]:
        print_call_tables(results["calls"])
    print_table(["from loading to the first answer", "microseconds"],
                [[name, with_spread(figures)] for name, figures in results["start microseconds"].items()])
    print_table(["logging mask, by bytes of the file", "nanoseconds"],
                [[name, with_spread(figures, 1)] for name, figures in results["mask nanoseconds"].items()])
    print_table(["goal", "at most", "measured", ""], [goal.row() for goal in goals(results)])


BEGIN, END = "<!-- written by bench/compare --markdown: -->\n", "<!-- end -->"


def replace_section(document, results):
    """Puts the tables between the two marks of a document."""
    text = io.StringIO()
    with contextlib.redirect_stdout(text):
        print_results(results)
    before, _, rest = document.read_text().partition(BEGIN)
    _, _, after = rest.partition(END)
    document.write_text(f"{before}{BEGIN}\n{text.getvalue()}{END}{after}")


def print_comparison(old, new):
    print(f"Against commit {old['commit']}: then -> now.\n")
    earlier = {(line["case"], line["threads"]): line for line in old["calls"]}
    rows = []
    for line in new["calls"]:
        then = earlier.get((line["case"], line["threads"]))
        if then is None:
            continue
        rows.append([line["case"], str(line["threads"]),
                     f"{then['over direct']['filtered']['median']:.1f} -> "
                     f"{line['over direct']['filtered']['median']:.1f}",
                     *(f"{then['over floor'][name]['median']:.2f} -> {line['over floor'][name]['median']:.2f}"
                       for name in ("new", "old"))])
    print_table(["case", "threads", "filtered - direct", "new / floor", "old / floor"], rows)
