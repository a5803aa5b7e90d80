"""Draws how cost grows, as SVG. The same figures always make the same bytes."""

import matplotlib

matplotlib.use("svg")
# Text stays text, and identifiers do not depend on chance.
matplotlib.rcParams.update({"svg.fonttype": "none", "svg.hashsalt": "dialwright", "font.family": "sans-serif"})

from matplotlib import pyplot  # noqa: E402: the choices above come first

from .growth import GROWTHS  # noqa: E402


def draw(growth, one, path):
    figure, axes = pyplot.subplots(figsize=(6, 3.6), layout="constrained")
    for title, values in one["curves"].items():
        axes.plot(one["sizes"], values, marker="o", label=title, linestyle="--" if "bare" in title else "-")
    axes.set(title=growth.title, xlabel=growth.what, ylabel=growth.unit)
    axes.set_xticks(one["sizes"], [f"{size:,}" for size in one["sizes"]])
    if growth.doubling:
        axes.set_yscale("log")
    else:
        axes.set_ylim(bottom=0)
        axes.set_xlim(left=0)
    axes.grid(alpha=0.3)
    axes.legend()
    figure.savefig(path, metadata={"Date": None, "Creator": None})
    pyplot.close(figure)


def draw_growth(measured, folder):
    folder.mkdir(parents=True, exist_ok=True)
    for growth in GROWTHS:
        draw(growth, measured[growth.key], folder / f"growth-{growth.key}.svg")
