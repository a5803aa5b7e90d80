"""From the figures of all runs to the table."""

import statistics


def summary(values):
    return {"median": statistics.median(values), "lowest": min(values), "highest": max(values)} if values else None


def evaluate(row, figures):
    ours, peer = summary(figures[row.key, "ours"]), summary(figures[row.key, "peer"])
    ratio = ours["median"] / peer["median"] if peer else None
    return {"row": row.key, "title": row.title, "unit": row.unit, "ours": ours, "peer": peer, "peer_name": row.peer,
            "ratio": ratio, "goal": str(row.goal) if row.goal else None,
            "met": row.goal.is_met(ours["median"], ratio) if row.goal else None}


def show_number(value):
    return f"{value:,.0f}" if abs(value) >= 1000 else f"{value:.3g}"


def show_figure(figure):
    if figure is None:
        return "–"
    return f"{show_number(figure['median'])} ({show_number(figure['lowest'])}..{show_number(figure['highest'])})"


def print_table(results):
    table = [["figure", "unit", "ours", "against", "its figure", "ratio", "goal", "met"]]
    for result in results:
        met = {None: "–", True: "yes", False: "MISSED"}[result["met"]]
        ratio = f"{result['ratio']:.2f}" if result["ratio"] is not None else "–"
        table.append([result["title"], result["unit"], show_figure(result["ours"]), result["peer_name"] or "–",
                      show_figure(result["peer"]), ratio, result["goal"] or "–", met])
    widths = [max(len(line[column]) for line in table) for column in range(len(table[0]))]
    for number, line in enumerate(table):
        print("| " + " | ".join(cell.ljust(width) for cell, width in zip(line, widths)) + " |")
        if number == 0:
            print("|" + "|".join("-" * (width + 2) for width in widths) + "|")
