"""From the figures of all runs to the table."""

import math
import statistics


def summary(values):
    return {"median": statistics.median(values), "lowest": min(values), "highest": max(values)} if values else None


def interval_of_median(values):
    """Where the median of such values lies in 95 of 100 cases, by their ranks; nothing is assumed of them."""
    ordered = sorted(values)
    count = len(ordered)
    outside, rank = 0.0, 0
    while 2 * (outside + math.comb(count, rank) / 2**count) <= 0.05:
        outside += math.comb(count, rank) / 2**count
        rank += 1
    first = max(rank - 1, 0)
    return [ordered[first], ordered[count - 1 - first]]


def ratios_of(ours, peer):
    """Each within its run, or pair: the machine may be twice as fast in the next one."""
    return [one / other for one, other in zip(ours, peer, strict=True)] if peer else []


def evaluate(row, figures):
    ours, peer = summary(figures[row.key, "ours"]), summary(figures[row.key, "peer"])
    ratios = ratios_of(figures[row.key, "ours"], figures[row.key, "peer"])
    ratio = summary(ratios)
    interval = interval_of_median(ratios) if row.in_pairs else None
    likely = interval[0] if interval else ratio and ratio["median"]
    met = row.goal.is_met(ours["median"], peer and peer["median"], likely) if row.goal else None
    return {"row": row.key, "title": row.title, "unit": row.unit, "ours": ours, "peer": peer, "peer_name": row.peer,
            "ratio": ratio, "interval": interval, "goal": str(row.goal) if row.goal else None, "met": met}


def show_number(value):
    return f"{value:,.0f}" if abs(value) >= 1000 else f"{value:.3g}"


def show_figure(figure):
    if figure is None:
        return "–"
    return f"{show_number(figure['median'])} ({show_number(figure['lowest'])}..{show_number(figure['highest'])})"


def show_ratio(result):
    if result["ratio"] is None:
        return "–"
    ratio, interval = result["ratio"], result["interval"]
    if interval is None:
        return f"{ratio['median']:.2f} ({ratio['lowest']:.2f}..{ratio['highest']:.2f})"
    return f"{ratio['median']:.3f} ({interval[0]:.3f}..{interval[1]:.3f})"


def print_table(results):
    table = [["figure", "unit", "ours", "against", "its figure", "ratio", "goal", "met"]]
    for result in results:
        met = {None: "–", True: "yes", False: "MISSED"}[result["met"]]
        table.append([result["title"], result["unit"], show_figure(result["ours"]), result["peer_name"] or "–",
                      show_figure(result["peer"]), show_ratio(result), result["goal"] or "–", met])
    widths = [max(len(line[column]) for line in table) for column in range(len(table[0]))]
    for number, line in enumerate(table):
        print("| " + " | ".join(cell.ljust(width) for cell, width in zip(line, widths)) + " |")
        if number == 0:
            print("|" + "|".join("-" * (width + 2) for width in widths) + "|")
