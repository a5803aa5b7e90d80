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


def ratio_of(row, ours, peer):
    """The ratio, and its interval where the row has one."""
    if not peer:
        return None, None
    if not row.in_pairs:
        return statistics.median(ours) / statistics.median(peer), None
    ratios = [one / other for one, other in zip(ours, peer, strict=True)]
    return statistics.median(ratios), interval_of_median(ratios)


def evaluate(row, figures):
    ours, peer = summary(figures[row.key, "ours"]), summary(figures[row.key, "peer"])
    ratio, interval = ratio_of(row, figures[row.key, "ours"], figures[row.key, "peer"])
    most_favourable = interval[0] if interval else ratio
    met = row.goal.is_met(ours["median"], peer and peer["median"], most_favourable) if row.goal else None
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
    if result["interval"] is None:
        return f"{result['ratio']:.2f}"
    return f"{result['ratio']:.3f} ({result['interval'][0]:.3f}..{result['interval'][1]:.3f})"


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
